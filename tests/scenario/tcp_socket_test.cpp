// The TCP socket control on the simulated network: its states, its events,
// and a send that completes only when the device has taken the data.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/runtime_error.h"
#include "platform/socket_state.h"
#include "platform/tcp_socket.h"
#include "support/byte_values.h"
#include "support/network_rig.h"

namespace fc {
namespace {

using nettest::KeepingDevice;
using nettest::NetworkRig;

struct Events {
    int connects = 0;
    int sendCompletes = 0;
    int closes = 0;
    std::vector<Long> arrivals;
    std::vector<Integer> errors;
    std::vector<std::string> errorTexts;
};

struct TcpSocketTest : ::testing::Test {
    NetworkRig rig;
    TcpSocket socket{rig.pump, rig.net};
    Events events;

    void SetUp() override {
        socket.onConnect = [this] { ++events.connects; };
        socket.onSendComplete = [this] { ++events.sendCompletes; };
        socket.onClose = [this] { ++events.closes; };
        socket.onDataArrival = [this](Long total) { events.arrivals.push_back(total); };
        socket.onError = [this](Integer number, const std::string& text) {
            events.errors.push_back(number);
            events.errorTexts.push_back(text);
        };
    }

    void connectTo(const std::string& host, Long port = nettest::kScalePort) {
        socket.setRemoteHost(host);
        socket.setRemotePort(port);
        socket.connect();
    }

    bool connected() {
        return rig.pumpUntil([this] { return socket.state() != sck::kConnecting; }, 30000) &&
               socket.state() == sck::kConnected;
    }
};

TEST_F(TcpSocketTest, ConnectReturnsAtOnceInState6AndTheConnectEventBringsState7) {
    rig.addScale(1);
    connectTo(nettest::scaleIpText(1));
    EXPECT_EQ(socket.state(), sck::kConnecting);
    EXPECT_GE(socket.socketHandle(), 0);
    ASSERT_TRUE(connected());
    EXPECT_EQ(events.connects, 1);
    EXPECT_TRUE(events.errors.empty());
}

TEST_F(TcpSocketTest, ConnectOutsideState0IsError40020) {
    rig.addScale(1);
    connectTo(nettest::scaleIpText(1));
    try {
        socket.connect();
        FAIL() << "a second Connect was taken";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 40020);
        EXPECT_EQ(e.description(), "Invalid operation at current state");
    }
}

TEST_F(TcpSocketTest, ARefusedConnectionRaisesError10061AndLeavesState0) {
    rig.net.addHost(nettest::scaleIp(1), nettest::scaleMac(1));  // up, nothing listening
    connectTo(nettest::scaleIpText(1));
    EXPECT_FALSE(connected());
    EXPECT_EQ(socket.state(), sck::kClosed);
    EXPECT_EQ(socket.socketHandle(), -1);
    ASSERT_EQ(events.errors, std::vector<Integer>{10061});
    EXPECT_EQ(events.errorTexts[0], "Connection is forcefully rejected");
    rig.pumpFor(100);
    EXPECT_EQ(events.errors.size(), 1u);
    EXPECT_EQ(events.connects, 0);
}

TEST_F(TcpSocketTest, ASocketConnectsAgainAfterARefusal) {
    VirtualHost& host = rig.net.addHost(nettest::scaleIp(1), nettest::scaleMac(1));
    connectTo(nettest::scaleIpText(1));
    EXPECT_FALSE(connected());
    host.listen(nettest::kScalePort, [] { return std::make_unique<KeepingDevice>(); });
    socket.connect();
    EXPECT_TRUE(connected());
}

TEST_F(TcpSocketTest, AnAddressWithNoHostTimesOutWithError10060After21Seconds) {
    connectTo("10.77.0.99");
    Micros start = rig.pump.nowMicros();
    EXPECT_FALSE(connected());
    EXPECT_EQ(events.errors, std::vector<Integer>{10060});
    EXPECT_EQ(socket.state(), sck::kClosed);
    EXPECT_EQ(events.errorTexts[0],
              "Attempt to connect timed out without establishing a connection");
    EXPECT_GE(rig.pump.nowMicros() - start, Micros(21000) * 1000);
    EXPECT_LT(rig.pump.nowMicros() - start, Micros(21100) * 1000);
}

TEST_F(TcpSocketTest, AHostNameThatIsNotAnAddressRaisesError11001) {
    connectTo("scale-one");
    EXPECT_FALSE(connected());
    EXPECT_EQ(events.errors, std::vector<Integer>{11001});
    EXPECT_EQ(events.errorTexts[0], "Authoritative answer: Host not found");
}

TEST_F(TcpSocketTest, APortOutsideTheRangeIsRefusedWithError40018) {
    try {
        socket.setRemotePort(65536);
        FAIL() << "port 65536 was taken";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 40018);
    }
}

TEST_F(TcpSocketTest, SendDataWhileNotConnectedIsError40006) {
    try {
        socket.sendData("x");
        FAIL() << "a send on a closed socket was taken";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 40006);
        EXPECT_EQ(e.description(),
                  "Wrong protocol or connection state for the requested transaction or request");
    }
}

TEST_F(TcpSocketTest, EveryByteValueReachesTheDeviceAndComesBackUnchanged) {
    rig.addScale(1);
    connectTo(nettest::scaleIpText(1));
    ASSERT_TRUE(connected());
    socket.sendData(allByteValues());
    ASSERT_TRUE(rig.pumpUntil([&] { return rig.lastDevice->received.size() == 256; }, 1000));
    EXPECT_EQ(rig.lastDevice->received, allByteValues());
    rig.lastDevice->send(allByteValues());
    ASSERT_TRUE(rig.pumpUntil([&] { return socket.bytesReceived() == 256; }, 1000));
    EXPECT_EQ(socket.getData(), allByteValues());
}

TEST_F(TcpSocketTest, DataArrivalTellsTheBytesWaitingAndGetDataTakesThemAll) {
    rig.addScale(1);
    connectTo(nettest::scaleIpText(1));
    ASSERT_TRUE(connected());
    rig.lastDevice->send("\x03");
    ASSERT_TRUE(rig.pumpUntil([&] { return !events.arrivals.empty(); }, 1000));
    EXPECT_EQ(events.arrivals, std::vector<Long>{1});
    rig.lastDevice->send("\x05xx");
    ASSERT_TRUE(rig.pumpUntil([&] { return events.arrivals.size() == 2; }, 1000));
    EXPECT_EQ(events.arrivals[1], 4);
    EXPECT_EQ(socket.getData(), std::string("\x03\x05xx"));
    EXPECT_EQ(socket.getData(), "");
    rig.pumpFor(10);
    EXPECT_EQ(events.arrivals.size(), 2u);
}

TEST_F(TcpSocketTest, EventsRunOnlyWhenTheProgramYields) {
    rig.addScale(1);
    connectTo(nettest::scaleIpText(1));
    ASSERT_TRUE(connected());
    rig.lastDevice->send("\x0a");
    rig.pump.sleep(50);
    EXPECT_TRUE(events.arrivals.empty());
    rig.pump.doEvents();
    EXPECT_EQ(events.arrivals.size(), 1u);
}

TEST_F(TcpSocketTest, SendCompleteWaitsForASlowDeviceToTakeTheData) {
    rig.addScale(1, [](KeepingDevice& d) {
        d.receiveBuffer = 2048;
        d.readBytesPerSecond = 10240;  // 10 KB a second
    });
    connectTo(nettest::scaleIpText(1));
    ASSERT_TRUE(connected());
    const std::string message(1029 * 10, 'D');
    Micros sent = rig.pump.nowMicros();
    socket.sendData(message);
    size_t readAtComplete = 0;
    socket.onSendComplete = [&] {
        ++events.sendCompletes;
        readAtComplete = rig.lastDevice->received.size();
    };
    ASSERT_TRUE(rig.pumpUntil([&] { return events.sendCompletes > 0; }, 5000));
    // Everything but what the device's buffer holds has been read by then.
    EXPECT_GE(readAtComplete + 2048, message.size());
    // At 10 KB a second, the reading alone takes most of a second.
    EXPECT_GT(rig.pump.nowMicros() - sent, Micros(700) * 1000);
    rig.pumpFor(1000);
    EXPECT_EQ(rig.lastDevice->received, message);
    EXPECT_EQ(events.sendCompletes, 1);
}

TEST_F(TcpSocketTest, SendCompleteNeverComesForADeviceThatStopsReading) {
    rig.addScale(1, [](KeepingDevice& d) { d.reading = false; });
    connectTo(nettest::scaleIpText(1));
    ASSERT_TRUE(connected());
    // More than the device's buffer holds: the rest waits for room.
    socket.sendData(std::string(1029 * 4, 'D'));
    rig.pumpFor(10000);
    EXPECT_EQ(events.sendCompletes, 0);
    EXPECT_EQ(socket.state(), sck::kConnected);
    rig.lastDevice->reading = true;
    EXPECT_TRUE(rig.pumpUntil([&] { return events.sendCompletes == 1; }, 1000));
}

TEST_F(TcpSocketTest, SendCompleteNeverComesFromAHostSwitchedOffMidway) {
    VirtualHost& host = rig.addScale(1);
    connectTo(nettest::scaleIpText(1));
    ASSERT_TRUE(connected());
    host.setUp(false);
    socket.sendData(std::string(1029, 'D'));
    rig.pumpFor(5000);
    EXPECT_EQ(events.sendCompletes, 0);
    EXPECT_EQ(socket.state(), sck::kConnected);
}

TEST_F(TcpSocketTest, APeerThatClosesRaisesCloseAndLeavesState0WithItsLastBytesReadable) {
    rig.addScale(1);
    connectTo(nettest::scaleIpText(1));
    ASSERT_TRUE(connected());
    rig.lastDevice->send("bye");
    rig.lastDevice->closeConnection();
    ASSERT_TRUE(rig.pumpUntil([&] { return events.closes == 1; }, 1000));
    EXPECT_EQ(socket.state(), sck::kClosed);
    EXPECT_EQ(events.arrivals, std::vector<Long>{3});
    EXPECT_EQ(socket.getData(), "bye");
    EXPECT_TRUE(events.errors.empty());
}

TEST_F(TcpSocketTest, APeerResetRaisesError10054AndLeavesState0) {
    rig.addScale(1);
    connectTo(nettest::scaleIpText(1));
    ASSERT_TRUE(connected());
    rig.lastDevice->resetConnection();
    ASSERT_TRUE(rig.pumpUntil([&] { return !events.errors.empty(); }, 1000));
    EXPECT_EQ(events.errors, std::vector<Integer>{10054});
    EXPECT_EQ(socket.state(), sck::kClosed);
}

TEST_F(TcpSocketTest, SendDataAfterTheConnectionWasLostIsError40006) {
    rig.addScale(1);
    connectTo(nettest::scaleIpText(1));
    ASSERT_TRUE(connected());
    rig.lastDevice->resetConnection();
    ASSERT_TRUE(rig.pumpUntil([&] { return socket.state() == sck::kClosed; }, 1000));
    try {
        socket.sendData("x");
        FAIL() << "a send on a lost connection was taken";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 40006);
    }
}

TEST_F(TcpSocketTest, CloseTellsTheDeviceAndEndsTheEvents) {
    rig.addScale(1);
    connectTo(nettest::scaleIpText(1));
    ASSERT_TRUE(connected());
    KeepingDevice* device = rig.lastDevice;
    socket.close();
    rig.pumpFor(10);
    EXPECT_TRUE(device->programClosed);
    EXPECT_EQ(socket.state(), sck::kClosed);
    EXPECT_EQ(socket.socketHandle(), -1);
}

}  // namespace
}  // namespace fc
