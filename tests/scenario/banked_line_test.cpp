// The banked dialect end to end on the virtual clock, against the simulated
// device: every step of its state table, every message, the fall-back to
// 19200, the bank computation and the fatal outcomes of a device gone silent.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/file_table.h"
#include "serial/banked_line.h"
#include "sim/banked_device.h"
#include "support/firmware_files.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;

constexpr int kSerieH = 2, kMatrix4000 = 4, kTr6100 = 5;

struct BankedRig : ScenarioRig {
    BankedDevice device;
    int status = 0;

    explicit BankedRig(BankedDevice::Config config = {}) : device(config) {
        serial.attach(1, device);
    }

    void load(int code, const std::string& file, const std::string& level = "0") {
        driveC.write("fw.s19", file);
        scriptSerialLoad(code, 1, "fw.s19");
        stopWhen([this] { return form().esperando_otra != kFalse; }, "the pass ended");
        status = run(level);
    }
    std::vector<std::string> texts() const {
        std::vector<std::string> out;
        for (const auto& f : device.frames())
            out.push_back(f.text.size() == 1 ? "0x" + std::to_string(f.text[0])
                                             : f.text.substr(0, 10));
        return out;
    }
};

// Frames of a good load: probe, first line, erase, then the lines.
constexpr long kProbe = 0, kFirstLine = 1, kErase = 2, kFirstBody = 3;

TEST(BankedLine, TheBankOfAnSRecordIsItsAddressOver0x8000) {
    EXPECT_EQ(bancoDeLinea(s2Record(0x000000, {1})), 0);
    EXPECT_EQ(bancoDeLinea(s2Record(0x007FF0, {1})), 0);
    EXPECT_EQ(bancoDeLinea(s2Record(0x008000, {1})), 1);
    EXPECT_EQ(bancoDeLinea(s2Record(0x010000, {1})), 2);
    EXPECT_EQ(bancoDeLinea(s2Record(0x098000, {1})), 19);
}

TEST(BankedLine, ALetterAtThePosition6DigitIsATypeMismatch) {
    try {
        bancoDeLinea(s2Record(0x0A0000, {1}));
        FAIL() << "a letter was read as a bank digit";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 13);
    }
}

TEST(BankedLine, ASerieHScaleLoadsFromEndToEnd) {
    BankedRig rig;
    rig.load(kSerieH, sRecordFile(consecutive(0, 10)));
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    EXPECT_TRUE(rig.device.erased());
    EXPECT_TRUE(rig.device.ended());
    ASSERT_EQ(rig.device.frames().size(), 3u + 10u + 1u);
    EXPECT_EQ(rig.device.frames()[kProbe].text, "\x15");
    EXPECT_EQ(rig.device.frames()[kFirstLine].text, "S00600004844521B");
    EXPECT_EQ(rig.device.frames()[kErase].text, "\x17");
    EXPECT_EQ(rig.device.frames().back().text, "\x07");
    EXPECT_EQ(rig.form().Label2.caption(), "Bank number");
    EXPECT_FALSE(rig.form().Linea.portOpen());
    EXPECT_FALSE(rig.files.isOpen(1));
    EXPECT_EQ(rig.form().lblBits.caption(), "Bits: 8");
}

TEST(BankedLine, ATr6100AndAMatrix4000LoadWithTheirOwnWords) {
    struct Case {
        int code;
        const char* connected;
    };
    for (Case c :
         {Case{kTr6100, "TR-6100 connected"}, Case{kMatrix4000, "Matrix 4X00 connected"}}) {
        BankedRig rig;
        std::vector<std::string> captions;
        rig.form().Texto.addObserver([&](Control& texto) { captions.push_back(texto.caption()); });
        rig.load(c.code, sRecordFile(consecutive(0, 4)));
        EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready")) << c.code;
        EXPECT_NE(std::find(captions.begin(), captions.end(), c.connected), captions.end())
            << c.code;
    }
}

TEST(BankedLine, InAFileWithOneBankBelow0x8000TheBankCommandIsNeverSent) {
    BankedRig rig;
    rig.load(kSerieH, sRecordFile(consecutive(0x1000, 20)));
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    for (const auto& f : rig.device.frames()) EXPECT_NE(f.text, "\x05");
    EXPECT_EQ(rig.device.banksRecorded(), (std::vector<int>{20}));
}

TEST(BankedLine, TheBankCommandPrecedesTheFirstLineOfEachNewBank) {
    BankedRig rig;
    std::vector<unsigned> addresses = consecutive(0x7FE0, 4);  // 2 in bank 0, 2 in bank 1
    rig.load(kSerieH, sRecordFile(addresses));
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    const auto& frames = rig.device.frames();
    ASSERT_EQ(frames.size(), 3u + 5u + 1u);
    EXPECT_EQ(frames[kFirstBody + 2].text, "\x05");
    EXPECT_EQ(frames[kFirstBody + 3].text.substr(4, 6), "008000");
    EXPECT_EQ(rig.device.banksRecorded(), (std::vector<int>{2, 2}));
    EXPECT_EQ(rig.form().Banco_actual.caption(), "1");
}

TEST(BankedLine, Banks16To19CompareAs0To3SoEveryLineFirstRecordsTheBank) {
    BankedRig rig;
    rig.load(kSerieH, sRecordFile(consecutive(0x080000, 3)));  // bank 16
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    int bankCommands = 0;
    for (const auto& f : rig.device.frames()) bankCommands += f.text == "\x05";
    EXPECT_EQ(bankCommands, 3);
    EXPECT_EQ(rig.form().Banco_actual.caption(), "16");
}

TEST(BankedLine, AClosingS90InTheMiddleIsSentAsAnOrdinaryLineOfItsBank) {
    BankedRig rig;
    std::string file = "S00600004844521B\r\n" + s2Record(0, std::vector<int>(16, 1)) +
                       "\r\nS9030000FC\r\n" + s2Record(0x10, std::vector<int>(16, 2)) +
                       "\r\nS804000000FB\r\n";
    rig.load(kSerieH, file);
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    const auto& frames = rig.device.frames();
    ASSERT_GE(frames.size(), 6u);
    EXPECT_EQ(frames[kFirstBody + 1].text, "S9030000FC");
    // "S9030000FC": position 6 is "0", position 7 is "0": bank 0, no bank command.
    for (const auto& f : frames) EXPECT_NE(f.text, "\x05");
}

TEST(BankedLine, ALetterAsBankDigitEndsTheProgramByTheFatalTrap) {
    BankedRig rig;
    rig.load(kSerieH, sRecordFile({0x000000, 0x0A0000}));
    EXPECT_EQ(rig.status, 3);
    ASSERT_FALSE(rig.boxes().empty());
    EXPECT_EQ(rig.boxes().back(), "13Type mismatch");
    EXPECT_FALSE(rig.files.isOpen(1));
    EXPECT_FALSE(rig.form().Linea.portOpen());
}

TEST(BankedLine, NoAnswerToTheProbeFallsBackTo19200) {
    BankedDevice::Config config;
    config.settings = LineSettings{19200, 'N', 8, 1};
    BankedRig rig(config);
    rig.load(kSerieH, sRecordFile(consecutive(0, 3)));
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    EXPECT_EQ(rig.form().cmbvelocidades.listIndex(), 4);
}

TEST(BankedLine, AWrongAnswerToTheFirstProbeFallsBackTo19200Too) {
    BankedRig rig;
    rig.device.faults.wrongByteAt[0] = 'x';
    rig.load(kSerieH, sRecordFile(consecutive(0, 3)));
    EXPECT_THAT(rig.boxes(), ElementsAre("No answer from H-7XX scale, check the cable or scale"));
    // It probed twice, the second time at 19200, where this device hears nothing.
    EXPECT_EQ(rig.device.frames().size(), 1u);
}

TEST(BankedLine, NoAnswerAtEitherSpeedNamesTheDevice) {
    struct Case {
        int code;
        const char* text;
    };
    for (Case c : {Case{kSerieH, "No answer from H-7XX scale, check the cable or scale"},
                   Case{kMatrix4000, "No answer from H-7XX scale, check the cable or scale"},
                   Case{kTr6100, "No answer from TR-6100, check the cable or TR-6100"}}) {
        BankedRig rig;
        rig.serial.wire(1).setSilent(true);
        rig.load(c.code, sRecordFile(consecutive(0, 3)));
        EXPECT_THAT(rig.boxes(), ElementsAre(c.text)) << c.code;
        EXPECT_FALSE(rig.files.isOpen(1));
    }
}

TEST(BankedLine, EveryFailureOfTheFirstLineAndTheEraseHasItsWords) {
    struct Case {
        long frame;
        bool silent;
        const char* text;
    };
    for (Case c :
         {Case{kFirstLine, true, "The scale answer to the first line it was not O.K."},
          Case{kFirstLine, false, "THe scale do not accept the first line"},
          Case{kErase, true, "The scale is in a infinite loop erasing the FLASH ROM"},
          Case{kErase, false, "The clear FLASH ROM command was not valid for the scale"}}) {
        BankedRig rig;
        if (c.silent) {
            rig.device.faults.silentAt[c.frame] = true;
        } else {
            rig.device.faults.wrongByteAt[c.frame] = 'x';
        }
        rig.load(kSerieH, sRecordFile(consecutive(0, 3)));
        EXPECT_THAT(rig.boxes(), ElementsAre(c.text));
        EXPECT_FALSE(rig.files.isOpen(1));
        EXPECT_FALSE(rig.form().Linea.portOpen());
        EXPECT_EQ(rig.status, -1);
    }
}

TEST(BankedLine, TheEraseWaitIs65535Ms) {
    BankedRig rig;
    rig.device.faults.silentAt[kErase] = true;
    rig.load(kSerieH, sRecordFile(consecutive(0, 3)));
    long long sent = rig.device.frames()[kErase].at / 1000;
    EXPECT_NEAR(rig.dialogs.boxes()[0].atMs - sent, 65535, 10);
}

TEST(BankedLine, ARefusedLineEndsThePassWithItsWords) {
    BankedRig rig;
    rig.device.faults.wrongByteAt[kFirstBody + 1] = 'x';
    rig.load(kSerieH, sRecordFile(consecutive(0, 4)));
    EXPECT_THAT(rig.boxes(), ElementsAre("La balanza no ha respondido a la l\xC3\xADnea"));
    EXPECT_FALSE(rig.form().Linea.portOpen());
    EXPECT_FALSE(rig.files.isOpen(1));
}

TEST(BankedLine, ASilentLineEndsTheProgramByTheFatalTrapAfterItsWords) {
    BankedRig rig;
    rig.device.faults.silentAt[kFirstBody + 1] = true;
    rig.load(kSerieH, sRecordFile(consecutive(0, 4)));
    EXPECT_EQ(rig.status, 3);
    EXPECT_THAT(rig.boxes(), ElementsAre("La balanza, no respondio al mensaje",
                                         "8018Operation valid only when the port is open"));
}

TEST(BankedLine, ABankCommandAnsweredWronglyEndsThePass) {
    BankedRig rig;
    rig.device.faults.wrongByteAt[kFirstBody + 2] = 'x';
    rig.load(kSerieH, sRecordFile(consecutive(0x7FE0, 4)));
    EXPECT_THAT(rig.boxes(),
                ElementsAre("La balanza no ha respondido correctamente al grabado del banco"));
    EXPECT_FALSE(rig.form().Linea.portOpen());
}

TEST(BankedLine, ASilentBankCommandEndsTheProgramByTheFatalTrap) {
    BankedRig rig;
    rig.device.faults.silentAt[kFirstBody + 2] = true;
    rig.load(kSerieH, sRecordFile(consecutive(0x7FE0, 4)));
    EXPECT_EQ(rig.status, 3);
    EXPECT_THAT(rig.boxes(), ElementsAre("La balanza, no respondio a la grabaci\xC3\xB3n del banco",
                                         "8018Operation valid only when the port is open"));
}

TEST(BankedLine, AWrongAnswerToTheEndOfLoadEndsThePass) {
    BankedRig rig;
    rig.device.faults.wrongByteAt[kFirstBody + 3] = 'x';
    rig.load(kSerieH, sRecordFile(consecutive(0, 3)));
    EXPECT_THAT(rig.boxes(), ElementsAre("La balanza no ha respondido al comando FIN DE FIRMCAST"));
}

TEST(BankedLine, SilenceAfterTheEndOfLoadEndsTheProgramByTheFatalTrap) {
    BankedRig rig;
    rig.device.faults.silentAt[kFirstBody + 3] = true;
    rig.load(kSerieH, sRecordFile(consecutive(0, 3)));
    EXPECT_EQ(rig.status, 3);
    EXPECT_THAT(rig.boxes(), ElementsAre("La balanza, admitio el comando FIN DE FIRMCAST",
                                         "8018Operation valid only when the port is open"));
}

TEST(BankedLine, AFileEndingOnAnotherRecordIsNotAValidEnd) {
    BankedRig rig;
    std::string file = sRecordFile(consecutive(0, 3));
    file = file.substr(0, file.rfind("S804"));
    rig.load(kSerieH, file);
    EXPECT_THAT(rig.boxes(), ElementsAre("The end of file is not valid"));
    EXPECT_FALSE(rig.files.isOpen(1));
    EXPECT_FALSE(rig.form().Linea.portOpen());
}

TEST(BankedLine, TheClosingRecordIsNotSent) {
    BankedRig rig;
    std::string file = sRecordFile(consecutive(0, 2));
    rig.load(kSerieH, file);
    for (const auto& f : rig.device.frames()) EXPECT_NE(f.text.substr(0, 2), "S8");
}

TEST(BankedLine, InProductionWayTheNextPassStartsAgainAt57600) {
    BankedDevice::Config config;
    config.settings = LineSettings{19200, 'N', 8, 1};
    BankedRig rig(config);
    rig.driveC.write("fw.s19", sRecordFile(consecutive(0, 2)));
    rig.scriptSerialLoad(kSerieH, 1, "fw.s19");
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->cmdAgain.reachable(); }, "Again",
                    [&] { rig.click("cmdAgain"); });
    rig.script.after(100, "look", [f] {
        EXPECT_EQ(f->cmbvelocidades.listIndex(), 1);
        throw ScenarioDone{};
    });
    rig.run("1");
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
}

}  // namespace
}  // namespace fc::test
