// The loader's TCP socket control against a simulated scale in its own
// namespace: the options on the real socket, and SendComplete paced by the
// scale's reading.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "bed_fixture.h"
#include "ethernet/socket_close.h"
#include "loader_world.h"
#include "platform/socket_state.h"
#include "platform/tcp_socket.h"
#include "support/first_line_process.h"
#include "support/pump_until.h"

namespace fc::netbed {
namespace {

constexpr int kScalePort = 3000;
constexpr int kMessage = 1029;
// A guard against a hang, not a measure of speed.
constexpr int kPatienceMs = 10'000;

int intOption(int fd, int level, int option) {
    int value = -1;
    socklen_t size = sizeof value;
    getsockopt(fd, level, option, &value, &size);
    return value;
}

class SocketOnBed : public BedTest {
  protected:
    LoaderWorld world;
    TcpSocket socket{world.pump, world.network};
    int sendCompletes = 0;

    // Connects as the loader does: options right after Connect, then the
    // wait for State 7.
    bool connectTo(const BedScale& scale) {
        socket.onSendComplete = [this] { ++sendCompletes; };
        socket.setRemoteHost(text(scale.ip));
        socket.setRemotePort(kScalePort);
        socket.connect();
        AplicaOpcionesSocket(world.m, socket);
        pumpUntil(
            world.pump, [this] { return socket.state() != sck::kConnecting; }, kPatienceMs);
        return socket.state() == sck::kConnected;
    }

    // Sends one message and waits for its SendComplete.
    bool sendOne(int patienceMs) {
        int before = sendCompletes;
        socket.sendData(std::string(kMessage, '\x30'));
        return pumpUntil(
            world.pump, [&] { return sendCompletes > before; }, patienceMs);
    }
};

TEST_F(SocketOnBed, TheLoadersOptionsAreSetOnTheRealSocket) {
    FirstLineProcess sim(simInScale(bed.scales[0], kScalePort, {}));
    ASSERT_EQ(sim.firstLine(), "listening on 3000");
    ASSERT_TRUE(connectTo(bed.scales[0]));
    int fd = static_cast<int>(socket.socketHandle());
    int plain = ::socket(AF_INET, SOCK_STREAM, 0);
    ASSERT_GE(plain, 0);
    // Linux rounds a buffer of 0 up to its minimum, far below its default.
    EXPECT_LT(intOption(fd, SOL_SOCKET, SO_SNDBUF), intOption(plain, SOL_SOCKET, SO_SNDBUF));
    EXPECT_LT(intOption(fd, SOL_SOCKET, SO_RCVBUF), intOption(plain, SOL_SOCKET, SO_RCVBUF));
    EXPECT_EQ(intOption(fd, IPPROTO_TCP, TCP_NODELAY), 1);
    EXPECT_EQ(intOption(plain, IPPROTO_TCP, TCP_NODELAY), 0);
    ::close(plain);
}

TEST_F(SocketOnBed, SendCompleteFollowsAScaleThatReadsSlowly) {
    const int rate = 20000;  // bytes a second
    FirstLineProcess sim(
        simInScale(bed.scales[1], kScalePort, {"--read-rate", std::to_string(rate)}));
    ASSERT_EQ(sim.firstLine(), "listening on 3000");
    ASSERT_TRUE(connectTo(bed.scales[1]));
    const int messages = 40;
    Micros start = world.pump.nowMicros();
    for (int i = 0; i < messages; ++i) ASSERT_TRUE(sendOne(kPatienceMs)) << "message " << i;
    Micros took = world.pump.nowMicros() - start;
    // Only what the two small buffers hold can be complete before the scale
    // has read it; the rest comes at the scale's pace.
    const long buffered = 16 * 1024;
    Micros paced = Micros(messages * kMessage - buffered) * 1'000'000 / rate;
    EXPECT_GE(took, paced) << "the sends completed faster than the scale reads";
    EXPECT_EQ(sendCompletes, messages);
}

TEST_F(SocketOnBed, SendCompleteNeverComesWhenTheScaleStopsReading) {
    FirstLineProcess sim(simInScale(bed.scales[2], kScalePort, {"--stop-reading-after", "2058"}));
    ASSERT_EQ(sim.firstLine(), "listening on 3000");
    ASSERT_TRUE(connectTo(bed.scales[2]));
    int completed = 0;
    while (completed < 40 && sendOne(500)) ++completed;
    EXPECT_LT(completed, 40) << "every send completed though the scale stopped reading";
    EXPECT_GE(completed, 2) << "the first two messages were read";
    // It stays incomplete, and the connection stays up.
    int before = sendCompletes;
    pumpUntil(
        world.pump, [] { return false; }, 1000);
    EXPECT_EQ(sendCompletes, before);
    EXPECT_EQ(socket.state(), sck::kConnected);
}

TEST_F(SocketOnBed, CerrarSocketClosesTheConnectionToAScale) {
    FirstLineProcess sim(simInScale(bed.scales[0], kScalePort, {}));
    ASSERT_EQ(sim.firstLine(), "listening on 3000");
    ASSERT_TRUE(connectTo(bed.scales[0]));
    ASSERT_TRUE(sendOne(kPatienceMs));
    CerrarSocket(world.m, socket);
    EXPECT_EQ(socket.state(), sck::kClosed);
    EXPECT_FALSE(world.TimerClose.enabled());
    // The scale takes a new connection afterwards.
    EXPECT_TRUE(connectTo(bed.scales[0]));
}

}  // namespace
}  // namespace fc::netbed
