// The boot-ROM load of a Serie_G scale against a simulated MSC1210 ROM on the
// virtual wire at 19200,N,8,1: the image, the handshake, the registers, the
// erase by range, the records and the end, with every outcome's box.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "control/firmware_panels.h"
#include "serial/msc1210_loader.h"
#include "sim/msc1210_rom.h"
#include "support/intel_hex.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kReady = "The scale is ready";
constexpr const char* kNoAnswer = "No answer from the scale, check the cable";
constexpr const char* kWrong = "The anwer from the scale is wrong";
constexpr const char* kMistake = "There was a mistake at the end of transmision";

// The main screen with its line open on COM1 to the ROM, a firmware file on
// C:, and the first line read as the driver reads it; then carga_F.
class BootRom : public ::testing::Test {
  protected:
    void SetUp() override { rig.serial.attach(1, rom); }

    // Chooses the range as the range controls do.
    void range(Byte banco, Long limite, bool desdeCero) {
        Firmcast& f = rig.form();
        f.rango_banco = banco;
        f.limite_rango = limite;
        f.hacer_f = toFlag(desdeCero);
    }

    void load(const std::vector<std::string>& lines, Integer nivel = 0) {
        Firmcast& f = rig.form();
        std::string path = rig.driveC.write("g.hex", hexFile(lines));
        f.nivel = nivel;
        f.fichero_firmware = path;
        f.linea_fichero = lines.empty() ? "" : lines.front();
        f.Linea.setCommPort(1);
        f.Linea.setSettings("19200,N,8,1");
        f.Linea.setPortOpen(true);
        LinePanel line = f.linePanel();
        ReaderPanel reader = readerPanel(f);
        Msc1210Panel panel{line,          reader,        f.linea_envio,  f.respuesta_msc,
                           f.intento_msc, f.rango_banco, f.limite_rango, f.hacer_f,
                           f.nivel};
        started = rig.pump.now();
        carga_F(panel);
        ended = rig.pump.now();
    }

    std::vector<std::string> boxes() { return rig.boxes(); }
    const ShownBox& lastBox() { return rig.dialogs.boxes().back(); }

    ScenarioRig rig;
    Msc1210Rom rom;
    std::int64_t started = 0, ended = 0;
};

std::vector<std::string> twoRecords() {
    return {intelRecord(0x0000, 0, patternBytes(1, 16)),
            intelRecord(0x0100, 0, patternBytes(2, 16)), ":00000001FF"};
}

TEST_F(BootRom, AWholeLoadEndsWithTheReadyBoxAndTheImageInFlash) {
    range(0xFE, 0x7FFF, true);
    load(twoRecords());
    EXPECT_THAT(boxes(), ElementsAre(kReady));
    EXPECT_EQ(lastBox().title, "The Scale is ready");
    EXPECT_EQ(lastBox().style, mb::kInformation);
    auto expect = patternBytes(1, 16);
    for (int i = 0; i < 16; ++i) EXPECT_EQ(rom.flash()[i], expect[i]) << i;
    auto second = patternBytes(2, 16);
    for (int i = 0; i < 16; ++i) EXPECT_EQ(rom.flash()[0x100 + i], second[i]) << i;
    EXPECT_EQ(rom.flash()[0x200], 0xFF);
    EXPECT_TRUE(rom.endSeen());
    // The timing registers of the scale's clock.
    EXPECT_EQ(rom.registers().at(0xFB), 0x0A);
    EXPECT_EQ(rom.registers().at(0xFC), 0x32);
    EXPECT_EQ(rom.registers().at(0xFD), 0x2B);
    Firmcast& f = rig.form();
    EXPECT_FALSE(f.Barra.visible());
    EXPECT_FALSE(f.Texto.visible());
    EXPECT_TRUE(f.Linea.dtrEnable());
}

TEST_F(BootRom, TheBannerTestNeedsAllFourteenCharactersAndATimeOutBringsANewPulse) {
    rom.faults.bannerInstead = "MSC1210 Ve";  // 12 characters with the "\r\n"
    range(0xFE, 0x7FFF, true);
    rig.script.after(25'000, "the ROM's full banner from now on",
                     [this] { rom.faults.bannerInstead.clear(); });
    load(twoRecords());
    EXPECT_EQ(rom.resets(), 4) << "three short answers, each a 10 s time-out, then the banner";
    EXPECT_GE(ended - started, 30'000);
    EXPECT_THAT(boxes(), ElementsAre(kReady));
}

TEST_F(BootRom, ALongerBannerPassesWhenPositions3To14AreRight) {
    rom.faults.bannerInstead = "MSC1210 Ver:9.99 and a good deal more\r\n>";
    range(0xFE, 0x7FFF, true);
    load(twoRecords());
    EXPECT_EQ(rom.resets(), 1);
    EXPECT_THAT(boxes(), ElementsAre(kReady));
}

TEST_F(BootRom, TwentyOneSilentTriesEndWithNoAnswer) {
    rom.faults.silentResets = 1000;
    range(0xFE, 0x7FFF, true);
    load(twoRecords());
    EXPECT_EQ(rom.resets(), 21);
    EXPECT_THAT(boxes(), ElementsAre(kNoAnswer));
    EXPECT_EQ(lastBox().style, mb::kOkOnly);
    EXPECT_FALSE(rig.form().Barra.visible());
    EXPECT_FALSE(rig.form().Texto.visible());
    EXPECT_THAT(rom.commands(), IsEmpty());
}

TEST_F(BootRom, AFailedRegisterWriteEndsWithNoAnswer) {
    rom.faults.registerWritesFail = true;
    range(0xFE, 0x7FFF, true);
    load(twoRecords());
    EXPECT_THAT(rom.commands(), ElementsAre("RWFB0A"));
    EXPECT_THAT(boxes(), ElementsAre(kNoAnswer));
    EXPECT_TRUE(rom.recordAddresses().empty());
}

TEST_F(BootRom, ADotFollowedByAnythingPassesARecord) {
    rom.faults.answerEarly = ".ok";
    range(0xFE, 0x7FFF, true);
    Firmcast* f = &rig.form();
    bool sawMore = false;
    rig.script.when([f] { return f->respuesta_msc == ".ok"; }, "an answer of a dot and more",
                    [&sawMore] { sawMore = true; });
    load(twoRecords());
    EXPECT_TRUE(sawMore);
    EXPECT_THAT(boxes(), ElementsAre(kReady));
    EXPECT_EQ(rom.recordAddresses().size(), 0x800u);
}

TEST_F(BootRom, AnyOtherFirstCharacterEndsTheLoadWithTheWrongAnswerBox) {
    rom.faults.wrongAnswerAtRecord = 5;
    rom.faults.wrongAnswer = 'x';
    range(0xFE, 0x7FFF, true);
    load(twoRecords());
    EXPECT_THAT(boxes(), ElementsAre(kWrong));
    EXPECT_EQ(lastBox().style, mb::kCritical);
    EXPECT_EQ(rom.recordAddresses().size(), 6u) << "no retry: the sixth record was the last";
    EXPECT_FALSE(rom.endSeen());
}

TEST_F(BootRom, ASilentRecordEndsTheLoadAfterItsTenSeconds) {
    rom.faults.silentAtRecord = 3;
    range(0xFE, 0x7FFF, true);
    load(twoRecords());
    EXPECT_THAT(boxes(), ElementsAre(kWrong));
    EXPECT_GE(ended - started, 10'000);
}

TEST_F(BootRom, AWrongAnswerToTheEndRecordIsTheMistakeAtTheEnd) {
    rom.faults.wrongEndAnswer = true;
    range(0xFE, 0x7FFF, true);
    load(twoRecords());
    EXPECT_THAT(boxes(), ElementsAre(kMistake));
    EXPECT_EQ(lastBox().style, mb::kCritical);
    EXPECT_FALSE(rig.form().Barra.visible());
    EXPECT_TRUE(rig.form().Linea.dtrEnable());
}

TEST_F(BootRom, ABadChecksumInTheFileEndsAtOnceWithTheReadersBoxAndTheBarStays) {
    std::string bad = intelRecord(0x0100, 0, patternBytes(2, 16));
    bad[bad.size() - 1] = bad[bad.size() - 1] == '0' ? '1' : '0';
    range(0xFE, 0x7FFF, true);
    load({intelRecord(0, 0, patternBytes(1, 16)), bad, ":00000001FF"});
    EXPECT_THAT(boxes(), ElementsAre("Corrupted file, bad checksum"));
    EXPECT_TRUE(rig.form().Barra.visible());
    EXPECT_EQ(rom.resets(), 0);
}

TEST_F(BootRom, TheLastLineOfTheFileIsNeverStored) {
    // No end record: the last data line is dropped without a word.
    range(0xFE, 0x7FFF, true);
    load(
        {intelRecord(0x0000, 0, patternBytes(1, 16)), intelRecord(0x0040, 0, patternBytes(3, 16))});
    EXPECT_THAT(boxes(), ElementsAre(kReady));
    EXPECT_EQ(rom.flash()[0x0000], patternBytes(1, 16)[0]);
    EXPECT_EQ(rom.flash()[0x0040], 0xFF);
}

TEST_F(BootRom, HacerFWithF7ErasesByPagesFrom0) {
    range(0xF7, 0x7C00, true);
    load(twoRecords());
    EXPECT_EQ(rom.chipErases(), 0);
    ASSERT_EQ(rom.erasedPages().size(), 248u);
    EXPECT_EQ(rom.erasedPages().front(), 0);
    EXPECT_EQ(rom.erasedPages().back(), 247 * 128);
    EXPECT_EQ(rom.recordAddresses().front(), 0);
    EXPECT_EQ(rom.recordAddresses().back(), 0x7BF0);
    EXPECT_EQ(rom.commands()[3], "CP0000");
    EXPECT_EQ(rom.commands()[3 + 247], "CP7B80");
}

TEST_F(BootRom, FEErasesTheWholeChip) {
    range(0xFE, 0x7FFF, true);
    load(twoRecords());
    EXPECT_EQ(rom.chipErases(), 1);
    EXPECT_THAT(rom.erasedPages(), IsEmpty());
}

TEST_F(BootRom, AtLevel3EveryRangeErasesTheWholeChip) {
    range(0xEA, 0x7600, false);
    load(twoRecords(), 3);
    EXPECT_EQ(rom.chipErases(), 1);
    EXPECT_THAT(rom.erasedPages(), IsEmpty());
    EXPECT_EQ(rom.recordAddresses().front(), 0) << "level 3 loads from address 0";
    EXPECT_EQ(rom.hcr1(), 0xE3);
}

TEST_F(BootRom, WithLimit7FFFTheLastRecordStartsAt7FF0AndEndsAt7FFF) {
    range(0xFE, 0x7FFF, true);
    load(twoRecords());
    EXPECT_EQ(rom.recordAddresses().back(), 0x7FF0);
    EXPECT_EQ(rom.recordAddresses().size(), 0x800u);
    EXPECT_EQ(rig.form().Barra.value(), rig.form().Barra.max());
}

TEST_F(BootRom, ALoadFrom0x80LeavesTheFirst128BytesAndSendsNoConfigurationRecord) {
    range(0xEA, 0x7600, false);
    load(twoRecords(), 0);
    ASSERT_EQ(rom.erasedPages().size(), 235u);
    EXPECT_EQ(rom.erasedPages().front(), 0x80);
    EXPECT_EQ(rom.recordAddresses().front(), 0x80);
    EXPECT_EQ(rom.recordAddresses().back(), 0x75F0);
    EXPECT_EQ(rom.hcr1(), -1);
    EXPECT_EQ(rom.hcr0(), -1);
    // The first record of the file lies below 0x80: the scale keeps its own.
    EXPECT_EQ(rom.flash()[0x00], 0xFF);
    EXPECT_THAT(boxes(), ElementsAre(kReady));
}

TEST_F(BootRom, TheConfigurationRecordFollowsALoadFromAddress0) {
    range(0xEB, 0x7600, true);
    load(twoRecords());
    EXPECT_EQ(rom.hcr1(), 0xE3);
    EXPECT_EQ(rom.hcr0(), 0xBE);
}

TEST_F(BootRom, AFileWithoutRecordsSendsAnImageOfFFOverTheRange) {
    range(0xEB, 0x7600, true);
    load({":00000001FF"});
    EXPECT_EQ(rom.recordAddresses().size(), 0x760u);
    for (long a = 0; a < 0x7600; ++a) ASSERT_EQ(rom.flash()[a], 0xFF) << a;
    EXPECT_THAT(boxes(), ElementsAre(kReady));
}

}  // namespace
}  // namespace fc::test
