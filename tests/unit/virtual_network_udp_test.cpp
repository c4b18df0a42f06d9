// UDP on the simulated network: the PC's ports, datagrams to the hosts'
// ports and back, and what is lost.
#include <gtest/gtest.h>

#include <vector>

#include "platform/socket_errors.h"
#include "virtual/virtual_host.h"
#include "virtual/virtual_network.h"
#include "virtual/virtual_pump.h"

namespace fc {
namespace {

const Ipv4 kScaleIp{192, 168, 1, 50};
const VirtualNetwork::Mac kScaleMac{0x00, 0x0A, 0x35, 0x01, 0x02, 0x03};

class VirtualNetworkUdp : public ::testing::Test {
  protected:
    void passMicros(Micros us) { pump.advanceTo(pump.nowMicros() + us); }
    // The scale keeps what reaches its port 7000, and when.
    void takeOn7000() {
        scale.onUdp(7000, [this](const Datagram& d) {
            heard.push_back(d);
            heardAt.push_back(pump.nowMicros());
        });
    }

    VirtualPump pump;
    VirtualNetwork net{pump};
    VirtualHost& scale = net.addHost(kScaleIp, kScaleMac);
    std::vector<Datagram> heard;
    std::vector<Micros> heardAt;
};

TEST_F(VirtualNetworkUdp, APortBoundTwiceIs10048) {
    auto first = net.newUdpTransport();
    auto second = net.newUdpTransport();
    EXPECT_EQ(first->bind(5000), 0);
    EXPECT_EQ(second->bind(5000), sck::kAddressInUse);
    EXPECT_EQ(first->localPort(), 5000);
    EXPECT_GT(first->handle(), 0);
    first->close();
    EXPECT_EQ(second->bind(5000), 0);
}

TEST_F(VirtualNetworkUdp, PortZeroTakesAFreePort) {
    auto first = net.newUdpTransport();
    auto second = net.newUdpTransport();
    EXPECT_EQ(first->bind(0), 0);
    EXPECT_EQ(second->bind(0), 0);
    EXPECT_GT(first->localPort(), 0);
    EXPECT_NE(first->localPort(), second->localPort());
}

TEST_F(VirtualNetworkUdp, ADatagramReachesTheHostsPortHalfARoundTripLater) {
    takeOn7000();
    auto udp = net.newUdpTransport();
    ASSERT_EQ(udp->bind(5000), 0);
    EXPECT_EQ(udp->sendTo(kScaleIp, 7000, "ping"), 0);
    passMicros(net.roundTrip);
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0].bytes, "ping");
    EXPECT_EQ(heard[0].from, net.address);
    EXPECT_EQ(heard[0].fromPort, 5000);
    EXPECT_EQ(heardAt[0], net.roundTrip / 2);
}

TEST_F(VirtualNetworkUdp, SendingUnboundTakesAFreePortFirst) {
    takeOn7000();
    auto udp = net.newUdpTransport();
    EXPECT_EQ(udp->sendTo(kScaleIp, 7000, "x"), 0);
    EXPECT_GT(udp->localPort(), 0);
    passMicros(net.roundTrip);
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0].fromPort, udp->localPort());
}

TEST_F(VirtualNetworkUdp, DatagramsToNoHostNoPortOrAHostThatIsOffAreLost) {
    takeOn7000();
    auto udp = net.newUdpTransport();
    EXPECT_EQ(udp->sendTo(Ipv4{192, 168, 1, 99}, 7000, "a"), 0);
    EXPECT_EQ(udp->sendTo(kScaleIp, 7001, "b"), 0);
    scale.setUp(false);
    EXPECT_EQ(udp->sendTo(kScaleIp, 7000, "c"), 0);
    passMicros(net.roundTrip);
    EXPECT_TRUE(heard.empty());
}

TEST_F(VirtualNetworkUdp, SendingToAHostThatIsUpTeachesTheAddressTable) {
    auto udp = net.newUdpTransport();
    udp->sendTo(kScaleIp, 7000, "x");
    ASSERT_EQ(net.table().size(), 1u);
    EXPECT_EQ(net.table()[0].ip, kScaleIp);
    EXPECT_EQ(net.table()[0].physical[5], 0x03);
}

TEST_F(VirtualNetworkUdp, AHostsDatagramReachesTheBoundPort) {
    auto udp = net.newUdpTransport();
    ASSERT_EQ(udp->bind(5000), 0);
    scale.sendUdp(7000, 5000, "answer");
    Datagram d;
    passMicros(net.roundTrip / 2 - 1);
    EXPECT_FALSE(udp->receive(d));
    passMicros(1);
    ASSERT_TRUE(udp->receive(d));
    EXPECT_EQ(d.from, kScaleIp);
    EXPECT_EQ(d.fromPort, 7000);
    EXPECT_EQ(d.bytes, "answer");
    EXPECT_FALSE(udp->receive(d));
}

TEST_F(VirtualNetworkUdp, AHostsDatagramToAPortNoOneHoldsIsLost) {
    auto udp = net.newUdpTransport();
    ASSERT_EQ(udp->bind(5000), 0);
    scale.sendUdp(7000, 5001, "x");
    scale.setUp(false);
    scale.sendUdp(7000, 5000, "y");
    passMicros(net.roundTrip);
    Datagram d;
    EXPECT_FALSE(udp->receive(d));
}

TEST_F(VirtualNetworkUdp, AHostCanAnswerFromItsHandler) {
    scale.onUdp(7000,
                [this](const Datagram& d) { scale.sendUdp(7000, d.fromPort, "re:" + d.bytes); });
    auto udp = net.newUdpTransport();
    ASSERT_EQ(udp->bind(5000), 0);
    udp->sendTo(kScaleIp, 7000, "hello");
    passMicros(net.roundTrip);
    Datagram d;
    ASSERT_TRUE(udp->receive(d));
    EXPECT_EQ(d.bytes, "re:hello");
    EXPECT_EQ(pump.nowMicros(), net.roundTrip);
}

}  // namespace
}  // namespace fc
