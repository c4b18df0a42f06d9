// The visor's dialogue over UDP through a bridge to its serial line: "U"
// every 2 s until the visor answers, more bytes than expected passing the
// wait, a lost datagram, a dump answer in pieces, and the stop that closes
// both sockets.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/socket_state.h"
#include "support/intel_hex.h"
#include "support/visor_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class VisorUdp : public ::testing::Test {
  protected:
    void SetUp() override {
        v.chooseFile("visor.hex", VisorRig::imageFile(0, patternBytes(8, 16)));
        v.useUdp();
    }
    std::vector<std::string> dumpCommands() {
        auto all = VisorRig::recordsOfType(v.udpLoader(), 4);
        all.erase(all.begin());
        return all;
    }

    VisorRig v;
    frmCargaMV510& s = *v.screen;
};

TEST_F(VisorUdp, UIsRepeatedEveryTwoSecondsUntilTheVisorAnswers) {
    v.udpLoader().switchOffFor(5'000'000);
    v.load();
    const auto times = VisorRig::syncTimes(v.udpLoader());
    ASSERT_EQ(times.size(), 4u) << "at 0, 2 and 4 s unanswered, at 6 s answered";
    for (std::size_t i = 1; i < times.size(); ++i) EXPECT_NEAR(times[i] - times[i - 1], 2000, 1);
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
}

TEST_F(VisorUdp, MoreBytesThanExpectedPassTheWaitAndTheExactComparisonSendsUAgainAtOnce) {
    v.udpLoader().faults.doubleSync = true;
    v.load();
    const auto times = VisorRig::syncTimes(v.udpLoader());
    ASSERT_EQ(times.size(), 2u);
    EXPECT_LT(times[1] - times[0], 10) << "no wait for the time limit, unlike the serial line";
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
}

TEST_F(VisorUdp, ALostDumpAnswerAsksForTheSameBlockAgainAfterTwentySeconds) {
    // Answer datagrams: "U" 0, erase echo and answer 1-2, blank check 3-4,
    // the block 5-6, the first dump's echo 7 and its lines 8.
    v.bridge->faults.loseDatagram = 8;
    v.load();
    const auto dumps = dumpCommands();
    ASSERT_GE(dumps.size(), 3u);
    EXPECT_EQ(dumps[0], dumps[1]);
    EXPECT_NE(dumps[1], dumps[2]);
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
}

TEST_F(VisorUdp, ALostAnswerWhileProgrammingIsATimeout) {
    v.bridge->faults.loseDatagram = 6;
    v.load();
    EXPECT_THAT(v.boxes(), ElementsAre("Timeout. No answer from the visor"));
    EXPECT_EQ(s.Label2.caption(), "ERROR. Visor not loaded.");
    EXPECT_FALSE(s.Barra.visible());
}

TEST_F(VisorUdp, ADumpAnswerSplitOverSeveralDatagramsIsJoinedInOrder) {
    v.bridge->faults.splitDump = 5;
    v.load();
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
    EXPECT_GT(v.bridge->datagramsSent(), 512 * 6);
}

TEST_F(VisorUdp, AWrongByteInADumpIsCaughtOverUdpToo) {
    v.udpLoader().faults.wrongDumpByteAt = 0x4000;
    v.load();
    EXPECT_THAT(v.boxes(), ElementsAre("Bad answer from the visor"));
    EXPECT_EQ(s.Label2.caption(), "Please Wait, verifying.");
}

TEST_F(VisorUdp, AnAnswerSlowerThanTheTenSecondLimitFailsTheProgramming) {
    v.udpLoader().faults.slowAnswer = 11'000'000;
    v.load();
    EXPECT_THAT(v.boxes(), ElementsAre("Timeout. No answer from the visor"));
}

TEST_F(VisorUdp, StoppingClosesBothSocketsAndCancelsWithNoBox) {
    VisorBootLoader& l = v.udpLoader();
    v.rig.script.when([&] { return l.dumped().size() == 4; }, "Stop", [&] { s.CmdStop.click(); });
    v.load();
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast cancelled by user");
    EXPECT_EQ(s.Winsock_recepcion->state(), sck::kClosed);
    EXPECT_EQ(s.Winsock_Envio->state(), sck::kClosed);
    EXPECT_LT(l.dumped().size(), 6u);
}

TEST_F(VisorUdp, StoppingWhileWaitingForTheVisorCancelsTheSynchronisation) {
    v.udpLoader().switchOffFor(600'000'000);
    v.rig.script.at(5'000, "Stop", [&] { s.CmdStop.click(); });
    v.load();
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast cancelled by user");
    EXPECT_LT(v.rig.pump.now(), 8'000);
}

}  // namespace
}  // namespace fc::test
