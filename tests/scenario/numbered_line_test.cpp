// The numbered-line dialect end to end on the virtual clock, against the
// simulated scale: every step of its state table, every message, and the
// edge cases of frame heads, answer counts, resends and the end command.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/kernel_waits.h"
#include "platform/event_source.h"
#include "platform/kernel_objects.h"
#include "serial/line_speeds.h"
#include "serial/numbered_line.h"
#include "sim/numbered_scale.h"
#include "support/firmware_files.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;

constexpr int kSerieW = 0, kSerieN = 1, kTr8200 = 6;
const char* const kEnd = ":0000006799";

struct NumberedRig : ScenarioRig {
    NumberedScale scale;
    int status = 0;

    explicit NumberedRig(NumberedScale::Config config = {}) : scale(config) {
        serial.attach(1, scale);
    }

    // Loads `file` into model `code` at `level`, and stops when the pass has
    // ended (or the program has).
    void load(int code, const std::string& file, const std::string& level = "0") {
        driveC.write("fw.hex", file);
        scriptSerialLoad(code, 1, "fw.hex");
        stopWhen([this] { return form().esperando_otra != kFalse; }, "the pass ended");
        status = run(level);
    }
    std::vector<long> frameNumbers() const {
        std::vector<long> numbers;
        for (const auto& f : scale.frames()) numbers.push_back(f.number);
        return numbers;
    }
    long long timeOfBox(size_t i) const { return dialogs.boxes().at(i).atMs; }
};

TEST(NumberedLine, FrameHeadsHaveAtLeastFourHexDigits) {
    EXPECT_EQ(cabeceraNumerada(0), "H0000");
    EXPECT_EQ(cabeceraNumerada(1), "H0001");
    EXPECT_EQ(cabeceraNumerada(0xFF), "H00FF");
    EXPECT_EQ(cabeceraNumerada(0xFFF), "H0FFF");
    EXPECT_EQ(cabeceraNumerada(0x1000), "H1000");
    EXPECT_EQ(cabeceraNumerada(0x10000), "H10000");
}

TEST(NumberedLine, ASerieNScaleLoadsFromEndToEnd) {
    NumberedRig rig;
    rig.load(kSerieN, intelHexFile(20));
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "FIRMCAST OK");
    // H0000, then every line of the file from 1 on.
    std::vector<long> expected;
    for (long n = 0; n <= 22; ++n) expected.push_back(n);
    EXPECT_EQ(rig.frameNumbers(), expected);
    EXPECT_EQ(rig.scale.frames()[0].record, ":020000550000A9");
    EXPECT_EQ(rig.scale.frames()[1].record, hexRecord(2, 0, {0, 0}));
    EXPECT_EQ(rig.scale.flashed().size(), 20u);
    EXPECT_TRUE(rig.scale.erased());
    EXPECT_TRUE(rig.scale.endOfFileSeen());
    EXPECT_FALSE(rig.form().Linea.portOpen());
    EXPECT_FALSE(rig.files.isOpen(1));
    EXPECT_EQ(rig.form().Label2.caption(), "Line number");
    EXPECT_EQ(rig.form().Banco_actual.caption(), "21");
}

TEST(NumberedLine, TheLineGoesAtSevenBitsEvenParity) {
    NumberedRig rig;
    rig.load(kSerieN, intelHexFile(2));
    EXPECT_EQ(rig.form().lblBits.caption(), "Bits: 7");
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
}

TEST(NumberedLine, ATr8200AndASerieWLoadFromEndToEnd) {
    for (int code : {kTr8200, kSerieW, 8}) {
        NumberedRig rig;
        rig.load(code, intelHexFile(5));
        EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready")) << code;
        EXPECT_EQ(rig.scale.flashed().size(), 5u) << code;
    }
}

TEST(NumberedLine, HandshakeWithAWrongFirstByteIsNotValid) {
    NumberedRig rig;
    rig.scale.faults.wrongByteAt[0] = 'X';
    rig.load(kSerieN, intelHexFile(3));
    EXPECT_THAT(
        rig.boxes(),
        ElementsAre("The answer from the scale is not valid, please check the scale version"));
    EXPECT_FALSE(rig.form().Linea.portOpen());
    EXPECT_FALSE(rig.files.isOpen(1));
}

TEST(NumberedLine, SilentSerieNAtHandshakeTimesOutAfter10Seconds) {
    NumberedRig rig;
    rig.scale.faults.silentAt[0] = true;
    rig.load(kSerieN, intelHexFile(3));
    EXPECT_THAT(rig.boxes(), ElementsAre("No answer from scale, check the cable or scale"));
    long long sent = rig.scale.frames()[0].at / 1000;
    EXPECT_NEAR(rig.timeOfBox(0) - sent, 10000, 10);
}

TEST(NumberedLine, SilentSerieWAndTr8200AtHandshakeWait65535Ms) {
    for (int code : {kSerieW, kTr8200}) {
        NumberedRig rig;
        rig.scale.faults.silentAt[0] = true;
        rig.load(code, intelHexFile(3));
        EXPECT_THAT(rig.boxes(), ElementsAre("No answer from scale, check the cable or scale"));
        EXPECT_NEAR(rig.timeOfBox(0) - rig.scale.frames()[0].at / 1000, 65535, 10) << code;
    }
}

TEST(NumberedLine, TheFirstLineWaitsThroughTheErase) {
    NumberedScale::Config config;
    config.eraseTime = 60'000'000;  // a minute: still inside the 65535 ms wait
    NumberedRig rig(config);
    rig.load(kSerieN, intelHexFile(3));
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
}

TEST(NumberedLine, SilenceAfterTheFirstLineIsNoAnswerToIt) {
    NumberedRig rig;
    rig.scale.faults.silentAt[1] = true;
    rig.load(kSerieN, intelHexFile(3));
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is not answering to the first line"));
    EXPECT_NEAR(rig.timeOfBox(0) - rig.scale.frames()[1].at / 1000, 65535, 10);
    EXPECT_FALSE(rig.files.isOpen(1));
}

TEST(NumberedLine, AWrongAnswerToTheFirstLineIsABadAnswer) {
    NumberedRig rig;
    rig.scale.faults.wrongByteAt[1] = 0x15;
    rig.load(kSerieN, intelHexFile(3));
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale gives a bad answer to the first line"));
}

TEST(NumberedLine, ARefusedLineIsSentAgainWithTheSameNumber) {
    NumberedRig rig;
    rig.scale.faults.refusals[4] = 3;
    rig.load(kSerieN, intelHexFile(6));
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    std::vector<long> numbers = rig.frameNumbers();
    EXPECT_EQ(std::count(numbers.begin(), numbers.end(), 4), 4);
    EXPECT_EQ(rig.scale.flashed().size(), 6u);
}

TEST(NumberedLine, ALineGoesOutAtMostSixTimes) {
    NumberedRig rig;
    rig.scale.faults.refusals[3] = 100;
    rig.load(kSerieN, intelHexFile(6));
    std::vector<long> numbers = rig.frameNumbers();
    EXPECT_EQ(std::count(numbers.begin(), numbers.end(), 3), 6);
    EXPECT_THAT(rig.boxes(),
                ElementsAre("The scale does not accept the line", "Error Sending Error"));
    EXPECT_EQ(rig.dialogs.boxes()[1].style, 16);
    EXPECT_EQ(rig.dialogs.boxes()[1].title, "Firmcast");
    EXPECT_FALSE(rig.form().Linea.portOpen());
    EXPECT_FALSE(rig.files.isOpen(1));
}

TEST(NumberedLine, AnUnknownAnswerIsABadAnswerShownInHex) {
    NumberedRig rig;
    rig.scale.faults.wrongByteAt[3] = 'X';
    rig.load(kSerieN, intelHexFile(6));
    EXPECT_THAT(rig.boxes(),
                ElementsAre("The scale gives a bad answer = 58", "Error Sending Error"));
}

TEST(NumberedLine, ABadAnswerOfOneDigitIsShownWithoutALeadingZero) {
    NumberedRig rig;
    rig.scale.faults.wrongByteAt[3] = 0x07;
    rig.load(kSerieN, intelHexFile(6));
    EXPECT_THAT(rig.boxes(),
                ElementsAre("The scale gives a bad answer = 7", "Error Sending Error"));
}

TEST(NumberedLine, SilenceOnABodyLineIsNoAnswerAfter14Seconds) {
    NumberedRig rig;
    rig.scale.faults.silentAt[5] = true;
    rig.load(kSerieN, intelHexFile(8));
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale does not answer", "Error Sending Error"));
    long long sent = 0;
    for (const auto& f : rig.scale.frames()) {
        if (f.number == 5)
            sent = f.at / 1000;
    }
    EXPECT_NEAR(rig.timeOfBox(0) - sent, 14000, 10);
}

TEST(NumberedLine, AFileEndingOnAnotherRecordIsNotAValidEnd) {
    NumberedRig rig;
    std::string file = intelHexFile(3);
    file = file.substr(0, file.rfind(":00000001FF"));  // no end record
    rig.load(kSerieN, file);
    // The last send succeeded, so only the end-of-file message shows.
    EXPECT_THAT(rig.boxes(), ElementsAre("The end of file is not valid"));
    EXPECT_FALSE(rig.files.isOpen(1));
    EXPECT_FALSE(rig.form().Linea.portOpen());
}

TEST(NumberedLine, AFileOfTwoLinesWithoutEndShowsBothBoxesAfterAFailedSend) {
    NumberedRig rig;
    // An earlier send failed: linea_ok keeps that across passes.
    rig.form().linea_ok = kFalse;
    rig.load(kSerieN,
             hexRecord(2, 0, {0, 0}) + "\r\n" + hexRecord(0, 0, std::vector<int>(16, 1)) + "\r\n");
    EXPECT_THAT(rig.boxes(), ElementsAre("The end of file is not valid", "Error Sending Error"));
}

TEST(NumberedLine, ARecordOfType01BeforeTheEndIsSentLikeAnyOther) {
    NumberedRig rig;
    std::string file = hexRecord(2, 0, {0, 0}) + "\r\n" + hexRecord(1, 0, {}) + "\r\n" +
                       hexRecord(0, 0, std::vector<int>(16, 2)) + "\r\n" + hexRecord(1, 0, {}) +
                       "\r\n";
    rig.load(kSerieN, file);
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    EXPECT_EQ(rig.frameNumbers(), (std::vector<long>{0, 1, 2, 3, 4}));
}

TEST(NumberedLine, ABadAnswerOnTheLastRecordLeavesPortAndFileOpen) {
    NumberedRig rig;
    rig.scale.faults.wrongByteAt[5] = 'Z';  // the end-of-file record of 3 data lines
    rig.load(kSerieN, intelHexFile(3));
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale gives a bad answer = 5A"));
    EXPECT_TRUE(rig.form().Linea.portOpen());
    EXPECT_TRUE(rig.files.isOpen(1));
    EXPECT_EQ(rig.form().linea_ok, kFalse);
}

TEST(NumberedLine, SerieWAtLevel0Or3NeverGetsTheEndCommand) {
    for (const char* level : {"0", "3"}) {
        NumberedRig rig;
        rig.load(kSerieW, intelHexFile(3), level);
        EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
        for (const auto& f : rig.scale.frames()) EXPECT_NE(f.record, kEnd) << level;
    }
}

TEST(NumberedLine, SerieNNeverGetsTheEndCommand) {
    NumberedRig rig;
    rig.load(kSerieN, intelHexFile(3), "2");
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    for (const auto& f : rig.scale.frames()) EXPECT_NE(f.record, kEnd);
}

TEST(NumberedLine, SerieWAtLevel2GetsTheEndCommandWithTheNextNumber) {
    NumberedRig rig;
    rig.load(kSerieW, intelHexFile(3), "2");
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    ASSERT_EQ(rig.scale.frames().back().record, kEnd);
    EXPECT_EQ(rig.scale.frames().back().number, 6);
}

TEST(NumberedLine, SilenceAfterTheEndCommandIsASuccessAndTheScaleKeepsItsMac) {
    NumberedScale::Config config;
    config.answersEndCommand = false;
    NumberedRig rig(config);
    bool asked = false;
    rig.hooks.DameMACAddress = [&](Firmcast&) {
        asked = true;
        return std::string("0011223344AA");
    };
    rig.load(kSerieW, intelHexFile(3), "1");
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    EXPECT_FALSE(asked);
    EXPECT_EQ(rig.scale.mac(), "");
}

TEST(NumberedLine, AScaleThatAsksForAMacGetsOneAndIsRecorded) {
    NumberedScale::Config config;
    config.wantsMac = true;
    NumberedRig rig(config);
    std::vector<std::string> events;
    long long macAt = 0, recordAt = 0;
    rig.hooks.DameMACAddress = [&](Firmcast& f) {
        events.push_back("mac");
        macAt = f.services().pump.now();
        return std::string("0011223344AA");
    };
    rig.hooks.frmDatosBalanza = [&](Firmcast& f) {
        events.push_back("record " + f.mac_actual);
        recordAt = f.services().pump.now();
    };
    rig.load(kSerieW, intelHexFile(3), "1");
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    EXPECT_THAT(events, ElementsAre("mac", "record 0011223344AA"));
    // The 6 s pause, then the MAC record on the line and its answer.
    EXPECT_GE(recordAt - macAt, 6000);
    EXPECT_LT(recordAt - macAt, 6500);
    EXPECT_EQ(rig.scale.mac(), "0011223344AA");
    const auto& last = rig.scale.frames().back();
    EXPECT_EQ(last.record, hexRecord(0x68, 0, {0x00, 0x11, 0x22, 0x33, 0x44, 0xAA}));
    EXPECT_EQ(last.number, 6);  // the same number as the end command
    EXPECT_TRUE(recordChecksumIsRight(last.record));
}

// The display driver's side: signals the resource event by its name at the
// moment it is given, while the program sleeps.
class DriverSignal : public EventSource {
  public:
    DriverSignal(Pump& pump, KernelObjects& kernel) : pump_(pump), kernel_(kernel) {
        handle_ = kernel_.createEvent(false, false, kEventoRecursos);
        pump_.add(*this);
    }
    ~DriverSignal() override {
        pump_.remove(*this);
        kernel_.closeHandle(handle_);
    }
    void signalAt(Micros when) { at_ = when; }
    Micros nextDue() const override { return at_; }
    void runDue(Micros) override {
        kernel_.setEvent(handle_);
        at_ = kNever;
    }
    bool runsWhileAsleep() const override { return true; }

  private:
    Pump& pump_;
    KernelObjects& kernel_;
    Handle handle_ = 0;
    Micros at_ = kNever;
};

TEST(NumberedLine, TheDisplayDriversEventCutsThePauseAfterTheMacRequestShort) {
    NumberedScale::Config config;
    config.wantsMac = true;
    NumberedRig rig(config);
    DriverSignal driver(rig.pump, rig.kernel);
    long long macAt = 0, recordAt = 0;
    rig.hooks.DameMACAddress = [&](Firmcast& f) {
        macAt = f.services().pump.now();
        driver.signalAt(f.services().pump.nowMicros() + 500 * 1000);
        return std::string("0011223344AA");
    };
    rig.hooks.frmDatosBalanza = [&](Firmcast& f) { recordAt = f.services().pump.now(); };
    rig.load(kSerieW, intelHexFile(3), "1");
    ASSERT_GT(recordAt, 0);
    EXPECT_GE(recordAt - macAt, 500);
    EXPECT_LT(recordAt - macAt, 1000);
    EXPECT_EQ(rig.scale.mac(), "0011223344AA");
}

TEST(NumberedLine, NoMacLeftEndsWithoutTheSuccessBox) {
    NumberedScale::Config config;
    config.wantsMac = true;
    NumberedRig rig(config);
    rig.hooks.DameMACAddress = [](Firmcast&) { return std::string(); };
    rig.load(kSerieW, intelHexFile(3), "2");
    EXPECT_THAT(rig.boxes(), ElementsAre("There is no more MACs available"));
    EXPECT_FALSE(rig.files.isOpen(1));
    EXPECT_FALSE(rig.form().Linea.portOpen());
}

TEST(NumberedLine, ARefusedMacRecordEndsThePassWithTheSendersMessage) {
    NumberedScale::Config config;
    config.wantsMac = true;
    NumberedRig rig(config);
    rig.hooks.DameMACAddress = [](Firmcast&) { return std::string("0011223344AA"); };
    rig.scale.faults.wrongByteAt[6] = 0x06;  // the end command taken, without a MAC request
    rig.load(kSerieW, intelHexFile(3), "2");
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
}

// A device that answers each frame with the bytes a test gives, whatever it is.
class ScriptedDevice : public SerialDevice {
  public:
    explicit ScriptedDevice(std::string answer)
        : SerialDevice(LineSettings{57600, 'E', 7, 1}), answer_(std::move(answer)) {}
    void onReceive(Byte) override {
        if (!armed_)
            return;
        armed_ = false;
        after(500, [this] { send(answer_); });
    }
    void arm() { armed_ = true; }

  private:
    std::string answer_;
    bool armed_ = false;
};

struct SenderRig : ScenarioRig {
    ScriptedDevice device;
    explicit SenderRig(const std::string& answer) : device(answer) {
        serial.attach(1, device);
        Firmcast& f = form();
        f.load();
        CargaComboVelocidades(f.cmbvelocidades);
        f.raiseModelFlag(kSerieN);
        f.puerto_com = 1;
        f.lanza_linea();
    }
    Flag send(const std::string& line) {
        form().linea_fichero = line;
        device.arm();
        LinePanel panel = form().linePanel();
        return EnviaLineaNumerada(panel);
    }
};

TEST(NumberedLine, ANonDataRecordWithOneAnswerByteCostsTheFull14SecondsAndIsJudgedByIt) {
    SenderRig rig("\x06");
    long long start = rig.pump.now();
    EXPECT_EQ(rig.send(hexRecord(2, 0, {0, 0})), kTrue);
    EXPECT_GE(rig.pump.now() - start, 14000);
    EXPECT_LT(rig.pump.now() - start, 14100);
    EXPECT_TRUE(rig.boxes().empty());
}

TEST(NumberedLine, ADataRecordWithThreeAnswerBytesLeavesAtOnceAndOnlyTheFirstIsJudged) {
    SenderRig rig(std::string("\x06\x15X"));
    long long start = rig.pump.now();
    EXPECT_EQ(rig.send(hexRecord(0, 0, std::vector<int>(16, 3))), kTrue);
    EXPECT_LT(rig.pump.now() - start, 600);
    EXPECT_TRUE(rig.boxes().empty());
}

// Wraps the simulated ports and writes down what the program does to them.
class SpyingOpener : public SerialPortOpener {
  public:
    explicit SpyingOpener(SerialPortOpener& inner) : inner_(inner) {}
    std::vector<std::string> calls;

    std::unique_ptr<SerialPort> open(int commPort) override {
        return std::make_unique<Port>(inner_.open(commPort), calls);
    }

  private:
    struct Port : SerialPort {
        Port(std::unique_ptr<SerialPort> inner, std::vector<std::string>& calls)
            : inner(std::move(inner)), calls(calls) {}
        void apply(const LineSettings& s) override { inner->apply(s); }
        void setDtr(bool on) override { inner->setDtr(on); }
        void write(const std::string& bytes) override {
            calls.push_back("write " + bytes.substr(0, 5));
            inner->write(bytes);
        }
        int outputPending() override { return inner->outputPending(); }
        int inputAvailable() override { return inner->inputAvailable(); }
        std::string read() override { return inner->read(); }
        void discardInput() override {
            calls.push_back("discard");
            inner->discardInput();
        }
        std::unique_ptr<SerialPort> inner;
        std::vector<std::string>& calls;
    };
    SerialPortOpener& inner_;
};

TEST(NumberedLine, AfterARefusalTheReceiveBufferIsEmptiedBeforeTheResendOfTheSameNumber) {
    ScenarioRig rig;
    NumberedScale scale;
    rig.serial.attach(1, scale);
    scale.faults.refusals[3] = 1;
    SpyingOpener spy(rig.serial);
    Firmcast form(rig.servicesWith(spy));
    rig.driveC.write("fw.hex", intelHexFile(4));
    Firmcast* f = &form;
    rig.script.when([f] { return f->Seleccion.reachable(); }, "Serie_N",
                    [f] { operatorClick(*f, "Picture3"); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "COM1",
                    [f] {
                        operatorClick(*f, "optrs232");
                        operatorClick(*f, "Option1");
                        operatorClick(*f, "cmdAdelante");
                    });
    rig.script.when([f] { return f->File1.reachable(); }, "file",
                    [f] {
                        operatorSelectText(*f, "File1", "fw.hex");
                        operatorClick(*f, "cmdAdelante");
                    });
    rig.script.when([f] { return f->esperando_otra != kFalse; }, "done",
                    [] { throw ScenarioDone{}; });
    try {
        form.Form_Load("");
    } catch (const ScenarioDone&) {
    }
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    auto first = std::find(spy.calls.begin(), spy.calls.end(), "write H0003");
    ASSERT_NE(first, spy.calls.end());
    auto second = std::find(first + 1, spy.calls.end(), "write H0003");
    ASSERT_NE(second, spy.calls.end()) << "the refused line was not sent again with its number";
    EXPECT_EQ(*(second - 1), "discard");
}

TEST(NumberedLine, FinDuringTheEraseLeavesTheScaleErasing) {
    NumberedScale::Config config;
    config.eraseTime = 30'000'000;
    NumberedRig rig(config);
    rig.driveC.write("fw.hex", intelHexFile(3));
    rig.scriptSerialLoad(kSerieN, 1, "fw.hex");
    Firmcast* f = &rig.form();
    rig.script.when(
        [f] { return f->Texto.caption() == "Scale connected. Please Wait, erasing FLASH ROM"; },
        "see the erase", [] {});
    rig.script.after(5000, "Exit", [&] { rig.click("FIN"); });
    EXPECT_EQ(rig.run(""), 0);
    EXPECT_TRUE(rig.boxes().empty());
    EXPECT_EQ(rig.scale.frames().size(), 2u);  // the handshake and the first line, nothing after
    EXPECT_FALSE(rig.form().Linea.portOpen());
}

TEST(NumberedLine, ADeviceThatOnlyAnswersAt19200IsSilentAt57600) {
    NumberedScale::Config config;
    config.settings = LineSettings{19200, 'E', 7, 1};
    NumberedRig rig(config);
    rig.load(kSerieN, intelHexFile(3));
    EXPECT_THAT(rig.boxes(), ElementsAre("No answer from scale, check the cable or scale"));
    EXPECT_TRUE(rig.scale.frames().empty());
}

TEST(NumberedLine, ASlowLineStillLoads) {
    NumberedRig rig;
    rig.serial.wire(1).setSlowFactor(4.0);
    rig.load(kSerieN, intelHexFile(10));
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
}

TEST(NumberedLine, ALineDroppedMidLoadIsNoAnswer) {
    NumberedRig rig;
    rig.scale.faults.closeAt = 6;
    rig.load(kSerieN, intelHexFile(10));
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale does not answer", "Error Sending Error"));
}

}  // namespace
}  // namespace fc::test
