// The synchronisation with the visor on the serial line: "U" until the visor
// answers it alone, the erase and the blank check, each sent again on a
// timeout or a wrong answer with no box, and the operator's stop.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/intel_hex.h"
#include "support/visor_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kErase = ":0100000307F5";
constexpr const char* kBlank = ":0500000400007FFF0178";

class VisorSync : public ::testing::Test {
  protected:
    void SetUp() override {
        v.chooseFile("visor.hex", VisorRig::imageFile(0, patternBytes(3, 16)));
        v.useSerial();
    }
    // The times (ms) at which the loader took each record equal to `record`.
    std::vector<std::int64_t> timesOf(const std::string& record) {
        std::vector<std::int64_t> out;
        std::string building;
        for (const auto& h : v.serialLoader().heard()) {
            if (h.bytes == ":")
                building.clear();
            building += h.bytes;
            if (building == record)
                out.push_back(h.at / 1000);
        }
        return out;
    }

    VisorRig v;
    frmCargaMV510& s = *v.screen;
};

TEST_F(VisorSync, AVisorSwitchedOnLateIsWaitedForWithUEveryTwoSeconds) {
    v.serialLoader().switchOffFor(7'000'000);
    std::string texto;
    v.rig.script.at(5'000, "look at the screen while waiting", [&] { texto = s.Texto.caption(); });
    v.load();
    EXPECT_EQ(texto, "               Switch on the MV510");
    const auto times = VisorRig::syncTimes(v.serialLoader());
    // The line opened at the choice of RS-232 and again at the load, each
    // after its 1 s pause: "U" first goes at 2 s; the visor is off until 7 s.
    ASSERT_EQ(times.size(), 4u) << "at 2, 4 and 6 s unanswered, at 8 s answered";
    EXPECT_NEAR(times[0], 2000, 1);
    for (std::size_t i = 1; i < times.size(); ++i) EXPECT_NEAR(times[i] - times[i - 1], 2000, 1);
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
    EXPECT_THAT(v.boxes(), IsEmpty());
}

TEST_F(VisorSync, UAnsweredTwiceIsNotTakenTheWaitRunsOutAndUGoesAgain) {
    v.serialLoader().faults.doubleSync = true;
    v.load();
    const auto times = VisorRig::syncTimes(v.serialLoader());
    ASSERT_EQ(times.size(), 2u);
    EXPECT_NEAR(times[1] - times[0], 2000, 1) << "two characters never make the exact count of one";
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
}

TEST_F(VisorSync, TheAnsweredUHidesLabel2AndTheScreenSaysErasingThenVerifyingBlank) {
    std::string erasing, blank;
    bool label2Shown = true;
    VisorBootLoader& l = v.serialLoader();
    v.rig.script.when([&] { return l.erases() == 1; }, "erase heard",
                      [&] {
                          erasing = s.Texto.caption();
                          label2Shown = s.Label2.visible();
                      });
    v.rig.script.when([&] { return l.blankChecks() == 1; }, "blank check heard",
                      [&] { blank = s.Texto.caption(); });
    v.load();
    EXPECT_EQ(erasing, "Visor connected. Please Wait, erasing.");
    EXPECT_FALSE(label2Shown);
    EXPECT_EQ(blank, "Visor connected. Please Wait, verifying blank.");
}

TEST_F(VisorSync, AnEraseAnsweredWronglyWithTheRightLengthIsSentAgainWithNoBox) {
    v.serialLoader().faults.wrongAnswerAtRecord = 0;
    v.load();
    const auto& r = v.serialLoader().records();
    ASSERT_GE(r.size(), 3u);
    EXPECT_THAT(std::vector<std::string>(r.begin(), r.begin() + 3),
                ElementsAre(kErase, kErase, kBlank));
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
}

TEST_F(VisorSync, AnEraseNotAnsweredIsSentAgainAfterItsTwentySecondLimit) {
    v.serialLoader().faults.silentAtRecord = 0;
    v.load();
    const auto times = timesOf(kErase);
    ASSERT_EQ(times.size(), 2u);
    EXPECT_NEAR(times[1] - times[0], 20000, 2);
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
}

TEST_F(VisorSync, ABlankCheckAnsweredWronglyWithTheRightLengthIsSentAgainWithNoBox) {
    v.serialLoader().faults.wrongAnswerAtRecord = 1;
    v.load();
    const auto& r = v.serialLoader().records();
    ASSERT_GE(r.size(), 3u);
    EXPECT_THAT(std::vector<std::string>(r.begin(), r.begin() + 3),
                ElementsAre(kErase, kBlank, kBlank));
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
}

TEST_F(VisorSync, ABlankCheckNotAnsweredIsSentAgainAfterItsTwentySecondLimit) {
    v.serialLoader().faults.silentAtRecord = 1;
    v.load();
    const auto times = timesOf(kBlank);
    ASSERT_EQ(times.size(), 2u);
    EXPECT_NEAR(times[1] - times[0], 20000, 2);
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
}

TEST_F(VisorSync, StoppingWhileWaitingForTheVisorCancelsWithNoBox) {
    v.serialLoader().switchOffFor(600'000'000);
    v.rig.script.at(5'000, "Stop", [&] { s.CmdStop.click(); });
    v.load();
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast cancelled by user");
    EXPECT_TRUE(s.Label2.visible());
    EXPECT_FALSE(s.Barra.visible());
    EXPECT_FALSE(s.Texto.visible());
    EXPECT_FALSE(s.CmdStop.visible());
    EXPECT_FALSE(s.Linea.portOpen());
    EXPECT_TRUE(s.cmdAdelante.enabled());
    EXPECT_LT(v.rig.pump.now(), 8'000);
}

TEST_F(VisorSync, StoppingDuringTheEraseCancelsWithNoBox) {
    v.serialLoader().faults.silentAtRecord = 0;
    VisorBootLoader& l = v.serialLoader();
    v.rig.script.when([&] { return l.records().size() == 1; }, "erase heard", [] {})
        .after(3'000, "Stop", [&] { s.CmdStop.click(); });
    v.load();
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast cancelled by user");
    EXPECT_EQ(l.blankChecks(), 0);
}

}  // namespace
}  // namespace fc::test
