// The UDP socket control on the simulated network: binding, datagrams both
// ways, one DataArrival for each datagram.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/runtime_error.h"
#include "platform/socket_state.h"
#include "platform/udp_socket.h"
#include "support/network_rig.h"

namespace fc {
namespace {

using nettest::NetworkRig;

constexpr int kVisorPort = 3000;
constexpr int kReplyPort = 3001;

struct UdpSocketTest : ::testing::Test {
    NetworkRig rig;
    UdpSocket sender{rig.pump, rig.net};
    UdpSocket receiver{rig.pump, rig.net};
    std::vector<Datagram> atVisor;
    std::vector<Long> arrivals;

    void SetUp() override {
        VirtualHost& visor = rig.net.addHost(nettest::scaleIp(1), nettest::scaleMac(1));
        visor.onUdp(kVisorPort, [this](const Datagram& d) { atVisor.push_back(d); });
        receiver.onDataArrival = [this](Long total) { arrivals.push_back(total); };
    }

    VirtualHost& visor() { return *rig.net.host(nettest::scaleIp(1)); }

    int errorOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const RuntimeError& e) {
            return e.number();
        }
        return 0;
    }
};

TEST_F(UdpSocketTest, StateIs0UntilBoundAnd1After) {
    EXPECT_EQ(receiver.state(), sck::kClosed);
    receiver.bind(kReplyPort);
    EXPECT_EQ(receiver.state(), sck::kOpen);
    EXPECT_EQ(receiver.localPort(), kReplyPort);
    receiver.close();
    EXPECT_EQ(receiver.state(), sck::kClosed);
}

TEST_F(UdpSocketTest, BindingTwiceIsError40020) {
    receiver.bind(kReplyPort);
    EXPECT_EQ(errorOf([&] { receiver.bind(kReplyPort); }), 40020);
}

TEST_F(UdpSocketTest, APortInUseIsError10048) {
    receiver.bind(kReplyPort);
    UdpSocket other(rig.pump, rig.net);
    EXPECT_EQ(errorOf([&] { other.bind(kReplyPort); }), 10048);
    EXPECT_EQ(other.state(), sck::kClosed);
}

TEST_F(UdpSocketTest, TheFirstSendBindsTheSocket) {
    sender.setRemoteHost(nettest::scaleIpText(1));
    sender.setRemotePort(kVisorPort);
    sender.sendData("U");
    EXPECT_EQ(sender.state(), sck::kOpen);
    rig.pumpFor(5);
    ASSERT_EQ(atVisor.size(), 1u);
    EXPECT_EQ(atVisor[0].bytes, "U");
    EXPECT_EQ(atVisor[0].fromPort, sender.localPort());
}

TEST_F(UdpSocketTest, AHostThatIsNotAnAddressIsError11001) {
    sender.setRemoteHost("visor");
    sender.setRemotePort(kVisorPort);
    EXPECT_EQ(errorOf([&] { sender.sendData("U"); }), 11001);
}

TEST_F(UdpSocketTest, EachDatagramRaisesOneDataArrivalAndGetDataTakesThemInOrder) {
    receiver.bind(kReplyPort);
    std::string all;
    for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
    visor().sendUdp(kVisorPort, kReplyPort, all.substr(0, 100));
    visor().sendUdp(kVisorPort, kReplyPort, all.substr(100));
    ASSERT_TRUE(rig.pumpUntil([&] { return arrivals.size() == 2; }, 100));
    EXPECT_EQ(arrivals, (std::vector<Long>{100, 156}));
    std::string first = receiver.getData();
    std::string second = receiver.getData();
    EXPECT_EQ(first + second, all);
    EXPECT_EQ(receiver.getData(), "");
}

TEST_F(UdpSocketTest, AClosedSocketRaisesNoMoreEvents) {
    receiver.bind(kReplyPort);
    receiver.close();
    visor().sendUdp(kVisorPort, kReplyPort, "late");
    rig.pumpFor(10);
    EXPECT_TRUE(arrivals.empty());
}

}  // namespace
}  // namespace fc
