// The load after the synchronisation, on the serial line: where programming
// stops, the verify by dump with its commands and its three tries a block,
// the Boot Status Byte, and each failure with its box and its Label2.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/dialogs.h"
#include "support/intel_hex.h"
#include "support/visor_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kBadAnswer = "Bad answer from the visor";
constexpr const char* kNotLoaded = "ERROR. Visor not loaded.";

// A one-block image: erase and blank check are records 0 and 1, the block
// record 2, the dumps 3 to 514, the byte's write 515 and its read 516.
constexpr long kWriteBsb = 515;
constexpr long kReadBsb = 516;

class VisorProgram : public ::testing::Test {
  protected:
    void SetUp() override { v.useSerial(); }
    void loadImage(long address, const std::vector<int>& bytes) {
        v.chooseFile("visor.hex", VisorRig::imageFile(address, bytes));
        v.load();
    }
    void loadSmall() { loadImage(0, patternBytes(4, 16)); }
    std::vector<long> programmed() { return v.serialLoader().programmed(); }
    std::vector<std::string> dumpCommands() {
        auto all = VisorRig::recordsOfType(v.serialLoader(), 4);
        all.erase(all.begin());  // the blank check
        return all;
    }
    // The failed load's common end: progress hidden, the line closed.
    void expectClosedUp() {
        EXPECT_FALSE(s.Barra.visible());
        EXPECT_FALSE(s.Texto.visible());
        EXPECT_FALSE(s.Linea.portOpen());
        EXPECT_NE(s.Label2.caption(), "Firmcast OK");
        EXPECT_TRUE(s.cmdAdelante.enabled());
    }
    void expectStopBox(const std::string& text) {
        EXPECT_THAT(v.boxes(), ElementsAre(text));
        ASSERT_FALSE(v.rig.dialogs.boxes().empty());
        EXPECT_EQ(v.rig.dialogs.boxes().back().style, mb::kCritical);
    }

    VisorRig v;
    frmCargaMV510& s = *v.screen;
};

TEST_F(VisorProgram, AnAllBlankImageProgramsOneBlockAndVerifiesAll512) {
    loadImage(0, std::vector<int>(32, 0xFF));
    EXPECT_EQ(s.fin_programa, 0x12);
    EXPECT_THAT(programmed(), ElementsAre(0));
    EXPECT_EQ(v.serialLoader().dumped().size(), 512u);
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
}

TEST_F(VisorProgram, ALastProgramByteAt0x1000Programs33Blocks) {
    loadImage(0x1000, {0x5A});
    EXPECT_EQ(s.fin_programa, 0x1012);
    const auto blocks = programmed();
    ASSERT_EQ(blocks.size(), 33u);
    EXPECT_EQ(blocks.front(), 0);
    EXPECT_EQ(blocks.back(), 0x1000);
    EXPECT_EQ(v.serialLoader().flash()[0x1000], 0x5A);
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
}

TEST_F(VisorProgram, TheMarginAddsABlockOfBlankBytesAfterALastByteAt0x1070) {
    loadImage(0x1070, {0x5A});
    EXPECT_EQ(s.fin_programa, 0x1082);
    const auto blocks = programmed();
    ASSERT_EQ(blocks.size(), 34u);
    EXPECT_EQ(blocks.back(), 0x1080);
    const auto data = VisorRig::recordsOfType(v.serialLoader(), 0);
    EXPECT_EQ(data.back(), intelRecord(0x1080, 0, std::vector<int>(128, 0xFF)));
}

TEST_F(VisorProgram, BlocksOfBlankBytesBelowTheEndAreProgrammedLikeAnyOther) {
    loadImage(0x0200, {0x11});
    EXPECT_THAT(programmed(), ElementsAre(0, 0x80, 0x100, 0x180, 0x200));
}

TEST_F(VisorProgram, AProgramReachingTheTopOfTheImageEndsThroughTheErrorHandlerWithNoBox) {
    loadImage(0xFFF0, {0x22});
    EXPECT_EQ(s.fin_programa, 0x10002);
    EXPECT_EQ(programmed().size(), 512u) << "every block up to 0xFF80, then 0x10000 overflows";
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Please Wait, programming");
    expectClosedUp();
}

TEST_F(VisorProgram, AWrongAnswerWhileProgrammingStopsWithBadAnswerAndLeavesLabel2) {
    v.serialLoader().faults.wrongAnswerAtRecord = 2;
    loadSmall();
    expectStopBox(kBadAnswer);
    EXPECT_EQ(s.Label2.caption(), "Please Wait, programming");
    expectClosedUp();
    EXPECT_TRUE(v.serialLoader().dumped().empty());
}

TEST_F(VisorProgram, NoAnswerWhileProgrammingStopsAfterTenSecondsWithTimeout) {
    v.serialLoader().faults.silentAtRecord = 2;
    loadSmall();
    expectStopBox("Timeout. No answer from the visor");
    EXPECT_EQ(s.Label2.caption(), kNotLoaded);
    expectClosedUp();
    const std::int64_t sent = v.serialLoader().heard().back().at / 1000;
    EXPECT_GE(v.rig.pump.now() - sent, 10'000);
}

TEST_F(VisorProgram, ADumpCommandEndsAt7FOrFFByTheLowByteOfItsBlock) {
    loadSmall();
    const auto dumps = dumpCommands();
    ASSERT_EQ(dumps.size(), 512u);
    EXPECT_EQ(dumps[0], ":050000040000007F0078");
    EXPECT_EQ(dumps[1], ":05000004008000FF0078");
    EXPECT_EQ(dumps[2], ":050000040100017F0076");
    EXPECT_EQ(dumps[511], ":05000004FF80FFFF007A");
}

TEST_F(VisorProgram, AWrongByteInADumpStopsTheVerifyWithBadAnswer) {
    v.serialLoader().faults.wrongDumpByteAt = 0x0123;
    loadSmall();
    expectStopBox(kBadAnswer);
    EXPECT_EQ(s.Label2.caption(), "Please Wait, verifying.");
    EXPECT_EQ(dumpCommands().size(), 3u) << "blocks 0x0000, 0x0080, and 0x0100 differs";
    expectClosedUp();
}

TEST_F(VisorProgram, AWrongByteBeyondTheProgramIsCaughtTooForAllOf64KBAreRead) {
    v.serialLoader().faults.wrongDumpByteAt = 0xFFFF;
    loadSmall();
    expectStopBox(kBadAnswer);
    EXPECT_EQ(dumpCommands().size(), 512u);
}

TEST_F(VisorProgram, ATimeoutOnAVerifyBlockAsksForTheSameBlockAgain) {
    v.serialLoader().faults.silentDumps = {0, 1};
    loadSmall();
    const auto dumps = dumpCommands();
    ASSERT_GE(dumps.size(), 4u);
    EXPECT_EQ(dumps[0], dumps[1]);
    EXPECT_EQ(dumps[1], dumps[2]);
    EXPECT_NE(dumps[2], dumps[3]);
    EXPECT_EQ(dumps.size(), 514u);
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
}

TEST_F(VisorProgram, AGoodAnswerAfterATimeoutStartsTheTriesAgain) {
    // Two timeouts on block 0, a good answer, two timeouts on block 1: four
    // in all, never three in a row.
    v.serialLoader().faults.silentDumps = {0, 1, 3, 4};
    loadSmall();
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
    EXPECT_EQ(dumpCommands().size(), 516u);
}

TEST_F(VisorProgram, ThreeTimeoutsInARowOnOneBlockStopTheVerify) {
    v.serialLoader().faults.silentDumps = {5, 6, 7};
    loadSmall();
    expectStopBox("Timeout: No answer from the visor.");
    EXPECT_EQ(s.Label2.caption(), kNotLoaded);
    const auto dumps = dumpCommands();
    ASSERT_EQ(dumps.size(), 8u);
    EXPECT_EQ(dumps[5], ":05000004028002FF0074");
    EXPECT_EQ(dumps[7], dumps[5]);
    expectClosedUp();
}

TEST_F(VisorProgram, TheBootStatusByteIsWrittenAndReadBackAsTheLastRecords) {
    std::vector<std::string> label2;
    s.Label2.addObserver([&](Control& c) {
        if (label2.empty() || label2.back() != c.caption())
            label2.push_back(c.caption());
    });
    loadSmall();
    const auto& r = v.serialLoader().records();
    ASSERT_EQ(r.size(), 517u);
    EXPECT_EQ(r[kWriteBsb], ":03000003060000F4");
    EXPECT_EQ(r[kReadBsb], ":020000050701F1");
    EXPECT_EQ(v.serialLoader().bootStatusByte(), 0);
    EXPECT_THAT(label2, ElementsAre("Switch on the scale", "Loading file in memory",
                                    "File is in memory", "Please Wait, programming",
                                    "Please Wait, verifying.", "Please Wait, configuring.",
                                    "Please Wait, verifying the configuration.", "Visor loaded OK.",
                                    "Firmcast OK"));
}

TEST_F(VisorProgram, AWrongAnswerWritingTheBootStatusByteStopsWithItsBox) {
    v.serialLoader().faults.wrongAnswerAtRecord = kWriteBsb;
    loadSmall();
    expectStopBox("There was a mistake programming the Boot Status Byte (BSB)");
    EXPECT_EQ(s.Label2.caption(), "Please Wait, configuring.");
    expectClosedUp();
}

TEST_F(VisorProgram, NoAnswerWritingTheBootStatusByteStopsWithItsTimeout) {
    v.serialLoader().faults.silentAtRecord = kWriteBsb;
    loadSmall();
    expectStopBox("Timeout. No answer programming the Boot Status Byte (BSB)");
    EXPECT_EQ(s.Label2.caption(), kNotLoaded);
    expectClosedUp();
}

TEST_F(VisorProgram, AByteThatReadsBackOtherThan00StopsWithItsBox) {
    v.serialLoader().faults.bsbStuck = true;
    loadSmall();
    expectStopBox("There was a mistake verifying the Boot Status Byte (BSB)");
    EXPECT_EQ(s.Label2.caption(), "Please Wait, verifying the configuration.");
    expectClosedUp();
}

TEST_F(VisorProgram, NoAnswerReadingTheBootStatusByteStopsWithItsTimeout) {
    v.serialLoader().faults.silentAtRecord = kReadBsb;
    loadSmall();
    expectStopBox("Timeout. No answer verifying the Boot Status Byte (BSB)");
    EXPECT_EQ(s.Label2.caption(), kNotLoaded);
    expectClosedUp();
}

TEST_F(VisorProgram, TheByteReadBackIsJudgedBeforeItsLineFeedWhenCharactersComeOneByOne) {
    // The wait for the byte's answer ends one character short of it: with
    // no receive FIFO, the program takes the answer before its line feed.
    v.wire->setReceiveFifo(0);
    loadSmall();
    expectStopBox("There was a mistake verifying the Boot Status Byte (BSB)");
    EXPECT_EQ(v.serialLoader().bootStatusByte(), 0) << "the visor itself was loaded";
}

TEST_F(VisorProgram, StoppingWhileProgrammingCancelsWithNoBox) {
    VisorBootLoader& l = v.serialLoader();
    v.rig.script.when([&] { return l.programmed().size() == 3; }, "stop",
                      [&] { s.CmdStop.click(); });
    loadImage(0, patternBytes(9, 1024));
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast cancelled by user");
    expectClosedUp();
    EXPECT_LT(l.programmed().size(), 8u);
}

TEST_F(VisorProgram, StoppingWhileVerifyingCancelsWithNoBox) {
    VisorBootLoader& l = v.serialLoader();
    v.rig.script.when([&] { return l.dumped().size() == 10; }, "stop", [&] { s.CmdStop.click(); });
    loadSmall();
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast cancelled by user");
    expectClosedUp();
    EXPECT_LT(l.dumped().size(), 12u);
}

TEST_F(VisorProgram, StoppingWhileConfiguringCancelsWithNoBox) {
    VisorBootLoader& l = v.serialLoader();
    l.faults.silentAtRecord = kWriteBsb;
    v.rig.script.when([&] { return l.records().size() == kWriteBsb + 1; }, "stop",
                      [&] { s.CmdStop.click(); });
    loadSmall();
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast cancelled by user");
    expectClosedUp();
}

}  // namespace
}  // namespace fc::test
