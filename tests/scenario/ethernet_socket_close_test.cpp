// The options set on the loader's socket, and its close with a wait.
#include <gtest/gtest.h>

#include <vector>

#include "ethernet/network_module.h"
#include "ethernet/socket_close.h"
#include "platform/socket_state.h"
#include "platform/tcp_socket.h"
#include "virtual/virtual_network.h"
#include "platform/window_timer.h"
#include "support/network_rig.h"
#include "unit/common_fixture.h"

namespace fc {
namespace {

using commontest::CommonRig;
using nettest::KeepingDevice;

struct SocketCloseTest : ::testing::Test {
    CommonRig common;
    VirtualNetwork net{common.pump};
    WindowTimer TimerClose{common.pump, "TimerClose"};
    NetworkModule m{common.c, net, TimerClose};
    TcpSocket socket{common.pump, net};
    KeepingDevice* device = nullptr;

    void SetUp() override {
        TimerClose.onTimer = [this] { TimerClose.setEnabled(false); };
        VirtualHost& scale = net.addHost(nettest::scaleIp(1), nettest::scaleMac(1));
        scale.listen(nettest::kScalePort, [this] {
            auto d = std::make_unique<KeepingDevice>();
            device = d.get();
            return d;
        });
    }

    void connect() {
        socket.setRemoteHost(nettest::scaleIpText(1));
        socket.setRemotePort(nettest::kScalePort);
        socket.connect();
        AplicaOpcionesSocket(m, socket);
        while (socket.state() == sck::kConnecting) common.pump.doEvents();
    }
};

TEST_F(SocketCloseTest, TheOptionsGoOnTheHandleBeforeTheConnectionIsUpInTheirOrder) {
    socket.setRemoteHost(nettest::scaleIpText(1));
    socket.setRemotePort(nettest::kScalePort);
    socket.connect();
    int handle = socket.socketHandle();
    AplicaOpcionesSocket(m, socket);
    EXPECT_EQ(socket.state(), sck::kConnecting);
    std::vector<VirtualNetwork::OptionCall> expected = {
        {handle, 0xFFFF, 0x1002, 0},  // no receive buffer
        {handle, 0xFFFF, 0x1001, 0},  // no send buffer
        {handle, 6, 1, 1},            // no coalescing
    };
    EXPECT_EQ(net.optionCalls(), expected);
}

TEST_F(SocketCloseTest, RefusedOptionsAreIgnored) {
    net.refuseOptions(true);
    connect();
    EXPECT_EQ(socket.state(), sck::kConnected);
    EXPECT_EQ(net.optionCalls().size(), 3u);
}

TEST_F(SocketCloseTest, CerrarSocketPausesWithoutEventsThenClosesWithDefaultLinger) {
    connect();
    std::vector<Micros> arrivals;
    socket.onDataArrival = [&](Long) { arrivals.push_back(common.pump.nowMicros()); };
    device->send("\x0a");  // arrives during the pause
    Micros start = common.pump.nowMicros();
    int handle = socket.socketHandle();
    CerrarSocket(m, socket);
    EXPECT_TRUE(arrivals.empty())
        << "an event ran during the pause, or the closed socket raised one";
    EXPECT_GE(common.pump.nowMicros() - start, Micros(100) * 1000);
    ASSERT_EQ(net.optionCalls().size(), 4u);
    EXPECT_TRUE((net.optionCalls()[3] == VirtualNetwork::OptionCall{handle, 0xFFFF, -129, 0}));
    EXPECT_EQ(socket.state(), sck::kClosed);
    EXPECT_EQ(TimerClose.interval(), 500);
    EXPECT_FALSE(TimerClose.enabled());
    common.pump.doEvents();
    EXPECT_TRUE(device->programClosed);
}

TEST_F(SocketCloseTest, CerrarSocketOnASocketNeverOpenedEndsQuietly) {
    CerrarSocket(m, socket);
    EXPECT_EQ(socket.state(), sck::kClosed);
    EXPECT_FALSE(TimerClose.enabled());
    EXPECT_TRUE(common.dialogs.boxes().empty());
}

TEST_F(SocketCloseTest, CerrarSocketAfterARefusalEndsQuietly) {
    net.host(nettest::scaleIp(1))->stopListening(nettest::kScalePort);
    socket.setRemoteHost(nettest::scaleIpText(1));
    socket.setRemotePort(nettest::kScalePort);
    socket.connect();
    while (socket.state() == sck::kConnecting) common.pump.doEvents();
    ASSERT_EQ(socket.state(), sck::kClosed);
    CerrarSocket(m, socket);
    EXPECT_EQ(socket.state(), sck::kClosed);
    EXPECT_TRUE(common.dialogs.boxes().empty());
}

}  // namespace
}  // namespace fc
