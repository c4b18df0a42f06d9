// TCP connections on the simulated network: connecting, refusal and time-out,
// the device's receive buffer and pace against the acknowledgements the
// program sees, both directions of bytes, and the ends of a connection.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/socket_errors.h"
#include "sim/device/tcp_device.h"
#include "virtual/virtual_host.h"
#include "virtual/virtual_network.h"
#include "virtual/virtual_pump.h"
#include "support/byte_values.h"

namespace fc {
namespace {

const Ipv4 kScaleIp{192, 168, 1, 50};
const VirtualNetwork::Mac kScaleMac{0x00, 0x0A, 0x35, 0x01, 0x02, 0x03};
constexpr int kPort = 9100;

// A device that keeps what it read and when, and speaks when told.
class RecordingDevice : public TcpDevice {
  public:
    using TcpDevice::closeConnection;
    using TcpDevice::resetConnection;
    using TcpDevice::send;

    void onReceive(const std::string& bytes) override {
        heard += bytes;
        reads.push_back(static_cast<long>(bytes.size()));
        readTimes.push_back(now());
    }
    void onProgramClosed() override { programClosedAt = now(); }

    std::string heard;
    std::vector<long> reads;
    std::vector<Micros> readTimes;
    Micros programClosedAt = -1;
};

class VirtualNetworkTcp : public ::testing::Test {
  protected:
    // Listens on kPort; every device made is set up by `setUp` and kept.
    void listen(std::function<void(RecordingDevice&)> setUp = {}) {
        scale.listen(kPort, [this, setUp] {
            auto device = std::make_unique<RecordingDevice>();
            if (setUp)
                setUp(*device);
            devices.push_back(device.get());
            return device;
        });
    }
    std::unique_ptr<TcpTransport> connect(const Ipv4& ip = kScaleIp, int port = kPort) {
        auto transport = net.newTcpTransport();
        EXPECT_EQ(transport->startConnect(ip, port), 0);
        return transport;
    }
    // A connection that is up, with the clock at the moment it came up.
    std::unique_ptr<TcpTransport> connected() {
        auto transport = connect();
        passMicros(net.roundTrip);
        EXPECT_TRUE(transport->status().connected);
        return transport;
    }
    void passMicros(Micros us) { pump.advanceTo(pump.nowMicros() + us); }
    RecordingDevice& device() { return *devices.at(0); }

    VirtualPump pump;
    VirtualNetwork net{pump};
    VirtualHost& scale = net.addHost(kScaleIp, kScaleMac);
    std::vector<RecordingDevice*> devices;
};

TEST_F(VirtualNetworkTcp, AListeningHostIsConnectedAfterOneRoundTrip) {
    listen();
    auto transport = connect();
    EXPECT_TRUE(transport->status().connecting);
    passMicros(net.roundTrip - 1);
    EXPECT_TRUE(transport->status().connecting);
    EXPECT_FALSE(transport->status().connected);
    ASSERT_EQ(devices.size(), 1u);  // the device has its connection half-way
    passMicros(1);
    EXPECT_FALSE(transport->status().connecting);
    EXPECT_TRUE(transport->status().connected);
    EXPECT_EQ(transport->status().error, 0);
}

TEST_F(VirtualNetworkTcp, TheRoundTripIsSettable) {
    net.roundTrip = 3000;
    listen();
    auto transport = connect();
    passMicros(2999);
    EXPECT_FALSE(transport->status().connected);
    passMicros(1);
    EXPECT_TRUE(transport->status().connected);
}

TEST_F(VirtualNetworkTcp, TheProgramsWaitReachesTheConnection) {
    listen();
    auto transport = connect();
    while (!transport->status().connected) pump.doEvents();
    EXPECT_EQ(pump.nowMicros(), net.roundTrip);
}

TEST_F(VirtualNetworkTcp, AHostThatDoesNotListenRefusesAfterOneRoundTrip) {
    auto transport = connect();
    passMicros(net.roundTrip - 1);
    EXPECT_TRUE(transport->status().connecting);
    passMicros(1);
    EXPECT_FALSE(transport->status().connecting);
    EXPECT_FALSE(transport->status().connected);
    EXPECT_EQ(transport->status().error, sck::kConnectionRefused);
}

TEST_F(VirtualNetworkTcp, APortNoLongerListenedOnIsRefused) {
    listen();
    scale.stopListening(kPort);
    auto transport = connect();
    passMicros(net.roundTrip);
    EXPECT_EQ(transport->status().error, sck::kConnectionRefused);
    EXPECT_TRUE(devices.empty());
}

TEST_F(VirtualNetworkTcp, NoSuchHostTimesOutAfter21Seconds) {
    auto transport = connect(Ipv4{192, 168, 1, 99});
    passMicros(21'000'000 - 1);
    EXPECT_TRUE(transport->status().connecting);
    EXPECT_EQ(transport->status().error, 0);
    passMicros(1);
    EXPECT_FALSE(transport->status().connecting);
    EXPECT_EQ(transport->status().error, sck::kTimedOut);
}

TEST_F(VirtualNetworkTcp, AHostSwitchedOffTimesOutAndIsNotLearnt) {
    listen();
    scale.setUp(false);
    auto transport = connect();
    passMicros(20'000'000);
    EXPECT_TRUE(transport->status().connecting);
    passMicros(1'000'000);
    EXPECT_EQ(transport->status().error, sck::kTimedOut);
    EXPECT_TRUE(devices.empty());
    EXPECT_TRUE(net.table().empty());
}

TEST_F(VirtualNetworkTcp, ConnectingToAHostThatIsUpTeachesTheAddressTable) {
    auto transport = connect();
    ASSERT_EQ(net.table().size(), 1u);
    const NeighbourRow& row = net.table()[0];
    EXPECT_EQ(row.ip, kScaleIp);
    EXPECT_EQ(row.interfaceIndex, 2u);
    EXPECT_EQ(row.physicalLength, 6u);
    EXPECT_EQ(row.type, kNeighbourDynamic);
    EXPECT_TRUE(std::equal(kScaleMac.begin(), kScaleMac.end(), row.physical.begin()));
}

TEST_F(VirtualNetworkTcp, HandlesAreSmallPositiveAndOnePerTransport) {
    auto first = net.newTcpTransport();
    auto second = net.newTcpTransport();
    EXPECT_EQ(first->handle(), -1);
    first->startConnect(kScaleIp, kPort);
    second->startConnect(kScaleIp, kPort);
    EXPECT_GT(first->handle(), 0);
    EXPECT_GT(second->handle(), 0);
    EXPECT_NE(first->handle(), second->handle());
    first->close();
    EXPECT_EQ(first->handle(), -1);
}

TEST_F(VirtualNetworkTcp, SentBytesAreAcknowledgedHalfARoundTripAfterEnteringTheBuffer) {
    listen();
    auto transport = connected();
    transport->send(std::string(1029, 'x'));
    EXPECT_EQ(transport->unacknowledged(), 1029);
    passMicros(net.roundTrip / 2 - 1);
    EXPECT_EQ(transport->unacknowledged(), 1029);
    passMicros(1);
    EXPECT_EQ(transport->unacknowledged(), 0);
    EXPECT_EQ(device().heard, std::string(1029, 'x'));
}

TEST_F(VirtualNetworkTcp, AMessageLargerThanTheBufferGoesInAsTheDeviceReads) {
    listen([](RecordingDevice& d) { d.receiveBuffer = 1000; });
    auto transport = connected();
    transport->send(std::string(2500, 'y'));
    EXPECT_EQ(transport->unacknowledged(), 2500);
    passMicros(net.roundTrip / 2);
    EXPECT_EQ(transport->unacknowledged(), 0);
    EXPECT_EQ(device().reads, (std::vector<long>{1000, 1000, 500}));
}

TEST_F(VirtualNetworkTcp, ADeviceThatStopsReadingLeavesBytesUnacknowledgedForEver) {
    listen([](RecordingDevice& d) { d.reading = false; });
    auto transport = connected();
    transport->send(std::string(5000, 'z'));
    passMicros(60'000'000);
    EXPECT_EQ(transport->unacknowledged(), 5000 - 2048);
    EXPECT_TRUE(device().heard.empty());
    // Reading again opens the window.
    device().reading = true;
    passMicros(net.roundTrip);
    EXPECT_EQ(transport->unacknowledged(), 0);
    EXPECT_EQ(device().heard.size(), 5000u);
}

TEST_F(VirtualNetworkTcp, ASlowDeviceReadsAtItsPace) {
    listen([](RecordingDevice& d) { d.readBytesPerSecond = 1000; });
    auto transport = connected();
    transport->send(std::string(10000, 'p'));
    passMicros(1'000'000);
    long afterOneSecond = static_cast<long>(device().heard.size());
    EXPECT_GE(afterOneSecond, 1000);
    EXPECT_LE(afterOneSecond, 1010);  // the bucket: 10 ms of the pace
    EXPECT_GT(transport->unacknowledged(), 0);
    passMicros(4'000'000);
    long afterFive = static_cast<long>(device().heard.size());
    EXPECT_GE(afterFive, 5000);
    EXPECT_LE(afterFive, 5010);
    passMicros(6'000'000);
    EXPECT_EQ(device().heard.size(), 10000u);
    EXPECT_EQ(transport->unacknowledged(), 0);
}

TEST_F(VirtualNetworkTcp, WhatTheDeviceSendsArrivesHalfARoundTripLater) {
    listen();
    auto transport = connected();
    device().send("ready");
    passMicros(net.roundTrip / 2 - 1);
    EXPECT_EQ(transport->available(), 0);
    passMicros(1);
    EXPECT_EQ(transport->available(), 5);
    EXPECT_EQ(transport->receive(), "ready");
    EXPECT_EQ(transport->available(), 0);
}

TEST_F(VirtualNetworkTcp, EveryByteValuePassesBothWays) {
    listen();
    auto transport = connected();
    transport->send(allByteValues());
    device().send(allByteValues());
    passMicros(net.roundTrip);
    EXPECT_EQ(device().heard, allByteValues());
    EXPECT_EQ(transport->receive(), allByteValues());
}

TEST_F(VirtualNetworkTcp, ADeviceThatClosesIsSeenAsThePeerClosing) {
    listen();
    auto transport = connected();
    device().send("bye");
    device().closeConnection();
    passMicros(net.roundTrip / 2 - 1);
    EXPECT_FALSE(transport->status().peerClosed);
    passMicros(1);
    EXPECT_TRUE(transport->status().peerClosed);
    EXPECT_EQ(transport->status().error, 0);
    EXPECT_EQ(transport->receive(), "bye");
}

TEST_F(VirtualNetworkTcp, BytesSentToADeviceThatClosedAreAnsweredWithAReset) {
    listen();
    auto transport = connected();
    device().closeConnection();
    passMicros(net.roundTrip);
    transport->send("more");
    passMicros(net.roundTrip - 1);
    EXPECT_EQ(transport->status().error, 0);
    passMicros(1);
    EXPECT_EQ(transport->status().error, sck::kConnectionReset);
    EXPECT_GT(transport->unacknowledged(), 0);
    EXPECT_TRUE(device().heard.empty());
}

TEST_F(VirtualNetworkTcp, ADeviceResetBreaksTheConnectionWith10054) {
    listen([](RecordingDevice& d) { d.reading = false; });
    auto transport = connected();
    transport->send(std::string(3000, 'r'));
    device().resetConnection();
    passMicros(net.roundTrip / 2);
    EXPECT_EQ(transport->status().error, sck::kConnectionReset);
    EXPECT_FALSE(transport->status().connected);
    // What never reached the device was never acknowledged.
    EXPECT_EQ(transport->unacknowledged(), 3000 - 2048);
}

TEST_F(VirtualNetworkTcp, TheProgramsCloseReachesTheDeviceHalfARoundTripLater) {
    listen();
    auto transport = connected();
    Micros closedAt = pump.nowMicros();
    transport->close();
    EXPECT_FALSE(transport->status().connected);
    passMicros(net.roundTrip);
    EXPECT_EQ(device().programClosedAt, closedAt + net.roundTrip / 2);
}

TEST_F(VirtualNetworkTcp, AHostSwitchedOffMidWayNeverAcknowledgesAgain) {
    listen();
    auto transport = connected();
    transport->send(std::string(100, 'a'));
    passMicros(net.roundTrip);
    EXPECT_EQ(transport->unacknowledged(), 0);
    scale.setUp(false);
    transport->send(std::string(100, 'b'));
    device().send("lost");
    passMicros(60'000'000);
    EXPECT_EQ(transport->unacknowledged(), 100);
    EXPECT_EQ(transport->available(), 0);
    EXPECT_EQ(transport->status().error, 0);  // no reset from a host that is off
    EXPECT_EQ(device().heard, std::string(100, 'a'));
    // Switched on again, it has forgotten the connection.
    scale.setUp(true);
    passMicros(60'000'000);
    EXPECT_EQ(transport->unacknowledged(), 100);
}

TEST_F(VirtualNetworkTcp, EachConnectionGetsADeviceOfItsOwn) {
    listen();
    auto first = connected();
    auto second = connected();
    ASSERT_EQ(devices.size(), 2u);
    first->send("one");
    second->send("two");
    passMicros(net.roundTrip);
    EXPECT_EQ(devices[0]->heard, "one");
    EXPECT_EQ(devices[1]->heard, "two");
    EXPECT_EQ(scale.devices(), (std::vector<TcpDevice*>{devices[0], devices[1]}));
}

}  // namespace
}  // namespace fc
