// The scale's Ethernet boot loader that takes whatever it is sent, on the
// simulated network: what it keeps and counts, its pace, and its faults, as
// the program's end of the connection sees them.
#include <gtest/gtest.h>

#include <sstream>

#include "platform/socket_errors.h"
#include "virtual/virtual_host.h"
#include "virtual/virtual_network.h"
#include "virtual/virtual_pump.h"
#include "sim/sink_scale.h"

namespace fc {
namespace {

const Ipv4 kScaleIp{192, 168, 1, 50};
constexpr int kPort = 9100;

class SinkScaleTest : public ::testing::Test {
  protected:
    SinkScaleTest() {
        host.listen(kPort, [this] {
            auto sink = std::make_unique<SinkScale>();
            sink->faults = faults;
            sink->readBytesPerSecond = pace;
            sink->keepLimit = keepLimit;
            sink->switchOff = [this] { host.setUp(false); };
            sinks.push_back(sink.get());
            return sink;
        });
    }
    void connect() {
        transport = net.newTcpTransport();
        transport->startConnect(kScaleIp, kPort);
        passMicros(net.roundTrip);
        ASSERT_TRUE(transport->status().connected);
    }
    void passMicros(Micros us) { pump.advanceTo(pump.nowMicros() + us); }
    SinkScale& sink() { return *sinks.at(0); }

    VirtualPump pump;
    VirtualNetwork net{pump};
    VirtualHost& host = net.addHost(kScaleIp, {0, 1, 2, 3, 4, 5});
    SinkScale::Faults faults;
    double pace = 0;
    long keepLimit = 64L << 20;
    std::vector<SinkScale*> sinks;
    std::unique_ptr<TcpTransport> transport;
};

std::string message(char fill) {
    return std::string(1029, fill);
}

TEST_F(SinkScaleTest, TakesEverythingAndKeepsIt) {
    connect();
    transport->send(message('a'));
    transport->send(message('b'));
    passMicros(net.roundTrip);
    EXPECT_EQ(transport->unacknowledged(), 0);
    EXPECT_EQ(sink().received(), 2058);
    EXPECT_EQ(sink().kept(), message('a') + message('b'));
    EXPECT_EQ(sink().connections(), 1);
}

TEST_F(SinkScaleTest, KeepsUpToItsLimitAndCountsOn) {
    keepLimit = 100;
    connect();
    transport->send(message('a'));
    passMicros(net.roundTrip);
    EXPECT_EQ(sink().received(), 1029);
    EXPECT_EQ(sink().kept(), std::string(100, 'a'));
}

TEST_F(SinkScaleTest, StopsReadingAfterExactlyNBytesAndTheSenderWaitsForEver) {
    faults.stopReadingAfter = 1500;
    connect();
    for (char c : {'a', 'b', 'c', 'd', 'e'}) transport->send(message(c));
    passMicros(600'000'000);
    EXPECT_EQ(sink().received(), 1500);
    EXPECT_FALSE(sink().reading);
    // Its buffer is full and the rest waits unacknowledged.
    EXPECT_EQ(transport->unacknowledged(), 5 * 1029 - 1500 - 2048);
}

TEST_F(SinkScaleTest, ClosesAfterExactlyNBytes) {
    faults.closeAfter = 2058;
    connect();
    transport->send(message('a'));
    transport->send(message('b'));
    passMicros(net.roundTrip);
    EXPECT_EQ(sink().received(), 2058);
    EXPECT_TRUE(transport->status().peerClosed);
    EXPECT_EQ(transport->status().error, 0);
}

TEST_F(SinkScaleTest, ResetsAfterExactlyNBytes) {
    faults.resetAfter = 1029;
    connect();
    transport->send(message('a') + message('b'));
    passMicros(net.roundTrip);
    EXPECT_EQ(sink().received(), 1029);
    EXPECT_EQ(transport->status().error, sck::kConnectionReset);
    EXPECT_FALSE(transport->status().connected);
}

TEST_F(SinkScaleTest, SwitchesItsHostOffAfterNBytes) {
    faults.switchOffAfter = 1029;
    connect();
    transport->send(message('a'));
    passMicros(net.roundTrip);
    EXPECT_EQ(transport->unacknowledged(), 0);
    EXPECT_FALSE(host.up());
    transport->send(message('b'));
    passMicros(60'000'000);
    EXPECT_EQ(transport->unacknowledged(), 1029);
    EXPECT_EQ(transport->status().error, 0);
    bool answered = true;
    net.echo(kScaleIp, 1000, answered);
    EXPECT_FALSE(answered);
}

TEST_F(SinkScaleTest, ASlowScaleHoldsTheSenderBack) {
    pace = 2000;
    connect();
    for (int i = 0; i < 10; ++i) transport->send(message('s'));
    passMicros(1'000'000);
    EXPECT_GE(sink().received(), 2000);
    EXPECT_LE(sink().received(), 2020);
    EXPECT_GT(transport->unacknowledged(), 10 * 1029 - 2020 - 2048 - 1);
    passMicros(5'000'000);
    EXPECT_EQ(sink().received(), 10 * 1029);
    EXPECT_EQ(transport->unacknowledged(), 0);
}

TEST_F(SinkScaleTest, KnowsWhenTheProgramCloses) {
    connect();
    EXPECT_FALSE(sink().programClosed());
    transport->close();
    passMicros(net.roundTrip);
    EXPECT_TRUE(sink().programClosed());
}

TEST_F(SinkScaleTest, ItsLogSaysWhatHappenedAndTheCounts) {
    faults.closeAfter = 1500;
    connect();
    transport->send(message('a') + message('b'));
    passMicros(net.roundTrip);
    std::ostringstream log;
    size_t logged = logNewSinkEvents(sink(), 0, log);
    EXPECT_EQ(logged, sink().events().size());
    EXPECT_EQ(log.str(),
              "0 ms connected total 0\n"
              "0 ms read 1500 total 1500\n"
              "0 ms closed total 1500\n");
    std::ostringstream more;
    EXPECT_EQ(logNewSinkEvents(sink(), logged, more), logged);
    EXPECT_EQ(more.str(), "");
}

}  // namespace
}  // namespace fc
