// The main driver on the virtual clock: start-up, the wizard's waits, the
// serial path as far as the connect step, the end of a pass, Production
// Way, the fatal trap and FIN.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "sim/banked_device.h"
#include "sim/echo_device.h"
#include "sim/numbered_scale.h"
#include "support/scenario_rig.h"
#include "support/wizard_steps.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;

const LineSettings k7E1{57600, 'E', 7, 1};
const std::string kSoundRecord = ":10000000000102030405060708090A0B0C0D0E0F78";
const std::string kEndRecord = ":00000001FF";

// A device that never answers and listens under each frame of `frames` in
// turn, moving on to the next once it has heard a character: it hears every
// probe of a loader that looks for the device at one speed after another,
// and tells the test of each as it hears it.
class ListenerAtEachSpeed : public SerialDevice {
  public:
    ListenerAtEachSpeed(std::vector<LineSettings> frames, std::function<void(Byte)> heard)
        : SerialDevice(frames.front()), frames_(std::move(frames)), heard_(std::move(heard)) {}

    void onReceive(Byte byte) override {
        heard_(byte);
        if (next_ < frames_.size())
            setSettings(frames_[next_++]);
    }

  private:
    std::vector<LineSettings> frames_;
    std::function<void(Byte)> heard_;
    size_t next_ = 1;
};

TEST(MainDriver, CommandLineBeginningWith2GivesLevel2) {
    ScenarioRig rig;
    rig.stopWhen([&] { return rig.form().loaded(); }, "look at the level");
    rig.run("2 and anything after");
    EXPECT_EQ(rig.form().nivel, 2);
}

TEST(MainDriver, EmptyCommandLineGivesLevel0) {
    ScenarioRig rig;
    rig.stopWhen([&] { return rig.form().loaded(); }, "look at the level");
    rig.run("");
    EXPECT_EQ(rig.form().nivel, 0);
    EXPECT_EQ(rig.form().modo_produccion, kFalse);
}

TEST(MainDriver, Level1StartsInProductionWay) {
    ScenarioRig rig;
    rig.stopWhen([&] { return rig.form().loaded(); }, "look");
    rig.run("1");
    EXPECT_EQ(rig.form().modo_produccion, kTrue);
}

TEST(MainDriver, CommandLineBeginningWith7ShowsTheParameterMessageAndEnds) {
    ScenarioRig rig;
    int status = rig.run("7");
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "The parameter is not valid.");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, 16);
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "Firmcast");
    EXPECT_NE(status, 0);
    EXPECT_FALSE(rig.form().loaded());
}

TEST(MainDriver, StartUpAppendsAToTheCaptionAndShowsStepZero) {
    ScenarioRig rig;
    rig.stopWhen([&] { return rig.form().loaded(); }, "look");
    rig.run("");
    Firmcast& f = rig.form();
    EXPECT_EQ(f.caption(), "Firmware Loader 1.22 A");
    EXPECT_TRUE(f.optBalanzas.value());
    EXPECT_TRUE(f.frBalanzas.visible());
    EXPECT_FALSE(f.frEtiquetadoras.visible());
    EXPECT_TRUE(f.Seleccion.visible());
    EXPECT_FALSE(f.cmdAtras.enabled());
    EXPECT_TRUE(f.cmdAdelante.enabled());
    EXPECT_FALSE(f.frPuerto.visible());
    EXPECT_EQ(f.cmbvelocidades.listCount(), 9);
    EXPECT_EQ(f.modelo_elegido, -1);
    EXPECT_EQ(f.paso_asistente, 0);
}

TEST(MainDriver, AFileOfExactlyOneLineIsTheEmptyFile) {
    ScenarioRig rig;
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    rig.driveC.write("one.hex", kSoundRecord + "\r\n");
    rig.scriptSerialLoad(1, 1, "one.hex");
    rig.stopWhen([&] { return rig.form().esperando_otra != kFalse; }, "the pass ended");
    rig.run("");
    EXPECT_THAT(rig.boxes(), ElementsAre("The file is empty"));
    EXPECT_FALSE(rig.form().Linea.portOpen());
    EXPECT_FALSE(rig.files.isOpen(1));
    EXPECT_TRUE(rig.form().cmdAgain.visible());
}

TEST(MainDriver, AZeroLengthFileEndsInTheFatalTrap) {
    ScenarioRig rig;
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    rig.driveC.write("empty.hex", "");
    rig.scriptSerialLoad(1, 1, "empty.hex");
    int status = rig.run("");
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "62Input past end of file");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, 16);
    EXPECT_EQ(status, 3);
    EXPECT_FALSE(rig.form().Linea.portOpen());
    EXPECT_FALSE(rig.files.isOpen(1));
}

TEST(MainDriver, Tr8200AcceptsAnyFileAsFarAsTheFirstLineGoes) {
    ScenarioRig rig;
    AcceptingScale scale(rig, 2);
    rig.driveC.write("notes.txt", "this is no firmware\r\nat all\r\n");
    bool connected = false;
    rig.scriptSerialLoad(6, 2, "notes.txt");
    rig.script.when([&scale] { return scale.connects() > 0; }, "the scale heard the handshake",
                    [&connected] {
                        connected = true;
                        throw ScenarioDone{};
                    });
    rig.run("");
    EXPECT_TRUE(connected);
    EXPECT_TRUE(rig.boxes().empty());
    EXPECT_EQ(rig.form().Texto.caption(), "Connecting with scale");
}

TEST(MainDriver, SerieNFirstLineThatIsAnySoundRecordPassesBothTests) {
    ScenarioRig rig;
    AcceptingScale scale(rig);
    // A data record first, not the usual type 02: the soundness test
    // rewrites the record kind, so the kind test passes too.
    rig.driveC.write("data-first.hex", kSoundRecord + "\r\n" + kEndRecord + "\r\n");
    bool connected = false;
    rig.scriptSerialLoad(1, 1, "data-first.hex");
    Firmcast* f = &rig.form();
    rig.script.when([&scale] { return scale.connects() > 0; }, "the scale heard the handshake",
                    [&connected, f] {
                        connected = true;
                        EXPECT_EQ(f->inicio_linea, ":02");
                        throw ScenarioDone{};
                    });
    rig.run("");
    EXPECT_TRUE(connected);
    EXPECT_TRUE(rig.boxes().empty());
}

TEST(MainDriver, SerieNFirstLineThatIsNotSoundIsRefusedForThisBoard) {
    ScenarioRig rig;
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    rig.driveC.write("short.hex", ":0400000001\r\n" + kEndRecord + "\r\n");
    rig.scriptSerialLoad(1, 1, "short.hex");
    rig.stopWhen([&] { return rig.form().esperando_otra != kFalse; }, "the pass ended");
    rig.run("");
    EXPECT_THAT(rig.boxes(), ElementsAre("This is not a Flash program file for this Board"));
}

TEST(MainDriver, BankedModelWithoutS00FirstLineIsNotAFlashProgramFile) {
    ScenarioRig rig;
    EchoDevice device;
    rig.serial.attach(1, device);
    rig.driveC.write("scale.hex", kSoundRecord + "\r\n" + kEndRecord + "\r\n");
    rig.scriptSerialLoad(2, 1, "scale.hex");
    rig.stopWhen([&] { return rig.form().esperando_otra != kFalse; }, "the pass ended");
    rig.run("");
    EXPECT_THAT(rig.boxes(), ElementsAre("This is not a Flash program file"));
    EXPECT_FALSE(rig.files.isOpen(1));
}

TEST(MainDriver, Tr6100ConnectsWithItsOwnWordsAndFallsBackTo19200) {
    ScenarioRig rig;
    Firmcast* f = &rig.form();
    std::vector<std::string> probes;
    // A TR-6100 that never answers, listening at 57600 and then at 19200.
    ListenerAtEachSpeed device({LineSettings{57600, 'N', 8, 1}, LineSettings{19200, 'N', 8, 1}},
                               [&probes, f](Byte byte) {
                                   EXPECT_EQ(byte, 0x15);
                                   probes.push_back(f->Linea.settings());
                                   EXPECT_EQ(f->Texto.caption(), "Connecting with TR-6100");
                               });
    rig.serial.attach(1, device);
    rig.driveC.write("tr6100.s19", "S00600004844521B\r\nS9030000FC\r\n");
    rig.scriptSerialLoad(5, 1, "tr6100.s19");
    rig.stopWhen([&] { return rig.form().esperando_otra != kFalse; }, "the pass ended");
    rig.run("");
    EXPECT_THAT(probes, ElementsAre("57600,N,8,1", "19200,N,8,1"));
    EXPECT_EQ(rig.form().cmbvelocidades.listIndex(), 4);
    EXPECT_THAT(rig.boxes(), ElementsAre("No answer from TR-6100, check the cable or TR-6100"));
}

TEST(MainDriver, SerieHWithoutAnswerNamesTheH7XXScale) {
    ScenarioRig rig;
    BankedDevice device;
    rig.serial.attach(1, device).setSilent(true);
    rig.driveC.write("h.s19", "S00600004844521B\r\nS9030000FC\r\n");
    rig.scriptSerialLoad(2, 1, "h.s19");
    rig.stopWhen([&] { return rig.form().esperando_otra != kFalse; }, "the pass ended");
    rig.run("");
    EXPECT_THAT(rig.boxes(), ElementsAre("No answer from H-7XX scale, check the cable or scale"));
}

TEST(MainDriver, ASuccessfulLoadSaysTheScaleIsReadyAndWaitsForAgain) {
    ScenarioRig rig;
    AcceptingScale scale(rig);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kSoundRecord + "\r\n" + kEndRecord + "\r\n");
    rig.scriptSerialLoad(1, 1, "fw.hex");
    rig.stopWhen([&] { return rig.form().esperando_otra != kFalse; }, "the pass ended");
    rig.run("");
    Firmcast& f = rig.form();
    EXPECT_THAT(scale.steps(), ElementsAre("connect", "first line", "loop"));
    EXPECT_EQ(scale.loads(), 1);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "The scale is ready");
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "FIRMCAST OK");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, 64);
    EXPECT_EQ(f.Barra.value(), f.Barra.max());
    EXPECT_EQ(f.Barra.max(), static_cast<Long>(17 + 45 + 13));
    EXPECT_TRUE(f.cmdAgain.visible());
    EXPECT_TRUE(f.optProduccion.visible());
    EXPECT_EQ(f.optProduccion.value(), 0);
    EXPECT_EQ(f.paso_asistente, 0);
    EXPECT_FALSE(f.Linea.portOpen());
    EXPECT_EQ(f.mousePointer(), 1);
}

TEST(MainDriver, InProductionWayAgainStopsInTheStep3WaitAndNextLoadsTheSameFile) {
    ScenarioRig rig;
    AcceptingScale scale(rig);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kEndRecord + "\r\n");
    rig.scriptSerialLoad(1, 1, "fw.hex");
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->cmdAgain.reachable(); }, "Again",
                    [&] { rig.click("cmdAgain"); });
    rig.script.after(500, "look at the screen", [f] {
        EXPECT_EQ(f->paso_asistente, 3);
        EXPECT_TRUE(f->frDirectorio.visible());
        EXPECT_FALSE(f->frInfoComunicacion.visible());
    });
    rig.script.after(10, "Next", [&] { rig.click("cmdAdelante"); });
    rig.stopWhen([f] { return f->esperando_otra != kFalse; }, "the second pass ended");
    rig.run("1");
    EXPECT_THAT(scale.steps(),
                ElementsAre("connect", "first line", "loop", "connect", "first line", "loop"));
    EXPECT_EQ(scale.loads(), 2);
    EXPECT_EQ(rig.dialogs.texts(),
              (std::vector<std::string>{"The scale is ready", "The scale is ready"}));
}

TEST(MainDriver, InProductionWayBackFromTheStep3WaitLeadsToTheFileStep) {
    ScenarioRig rig;
    AcceptingScale scale(rig);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kEndRecord + "\r\n");
    rig.scriptSerialLoad(1, 1, "fw.hex");
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->cmdAgain.reachable(); }, "Again",
                    [&] { rig.click("cmdAgain"); });
    rig.script.after(100, "Back", [&] { rig.click("cmdAtras"); });
    rig.stopWhen([f] { return f->paso_asistente == 2 && f->File1.reachable(); },
                 "on the file step");
    EXPECT_EQ(rig.run("1"), -1);
    EXPECT_TRUE(rig.form().frDirectorio.visible());
}

TEST(MainDriver, WithoutProductionWayAgainShowsTheLastModelWithAllFlagsClear) {
    ScenarioRig rig;
    AcceptingScale scale(rig);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kEndRecord + "\r\n");
    rig.scriptSerialLoad(1, 1, "fw.hex");
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->cmdAgain.reachable(); }, "Again",
                    [&] { rig.click("cmdAgain"); });
    rig.script.after(100, "look at step 0", [f] {
        EXPECT_EQ(f->paso_asistente, 0);
        EXPECT_FALSE(f->anyModelFlag());
        EXPECT_EQ(f->Picture3.backColor(), kColourHighlight);
        EXPECT_EQ(f->Picture4.backColor(), kColourWhite);
        EXPECT_TRUE(f->Seleccion.visible());
    });
    rig.script.after(10, "Next", [&] { rig.click("cmdAdelante"); });
    rig.stopWhen([f] { return f->paso_asistente == 1; }, "on the way step");
    rig.run("");
    EXPECT_EQ(rig.form().es_serie_n, kTrue);
    EXPECT_EQ(rig.form().modelo_elegido, 1);
}

TEST(MainDriver, AFailedLastRecordLeavesFileOneOpenAndTheNextPassEndsInTheFatalTrap) {
    ScenarioRig rig;
    NumberedScale scale;
    rig.serial.attach(1, scale);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kEndRecord + "\r\n");
    // The scale gives a bad answer to the last record (frame 2): its sender
    // fails without its clean-up.
    scale.faults.wrongByteAt[2] = 'X';
    rig.scriptSerialLoad(1, 1, "fw.hex");
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->cmdAgain.reachable(); }, "Again, in Production Way",
                    [&] {
                        EXPECT_TRUE(rig.files.isOpen(1));
                        EXPECT_TRUE(f->Linea.portOpen());
                        rig.click("cmdAgain");
                    });
    rig.script.after(100, "Next", [&] { rig.click("cmdAdelante"); });
    int status = rig.run("1");
    EXPECT_EQ(status, 3);
    ASSERT_FALSE(rig.boxes().empty());
    EXPECT_EQ(rig.boxes().back(), "55File already open");
}

TEST(MainDriver, NoModelPictureRaisesSerieGOrMv510) {
    for (int code = 0; code <= 8; ++code) {
        ScenarioRig rig;
        rig.hooks.startProgram = [](const std::string&) { return 1L; };
        Firmcast* f = &rig.form();
        // The visor's picture opens its screen modally, while the click is
        // still in its handler: a script of its own closes it.
        OperatorScript onVisor(rig.pump);
        if (code == 7) {
            onVisor.when([f] { return f->visorScreen() != nullptr && f->visorScreen()->loaded(); },
                         "back from the visor screen", [f] { f->visorScreen()->cmdAtras.click(); });
        }
        rig.script.when([f] { return f->Seleccion.reachable(); }, "pick",
                        [&, code] {
                            if (code <= 3)
                                rig.click("optBalanzas");
                            if (code == 4 || code == 5 || code == 6 || code == 8)
                                rig.click("optEtiquetadoras");
                            if (code == 7)
                                rig.click("optVisores");
                            rig.click(f->pictureOf(code).name());
                            EXPECT_EQ(f->es_serie_g, kFalse) << "code " << code;
                            EXPECT_EQ(f->es_mv510, kFalse) << "code " << code;
                            throw ScenarioDone{};
                        });
        rig.run("");
        EXPECT_TRUE(onVisor.finished()) << "code " << code;
    }
}

TEST(MainDriver, FinDuringTheEraseEndsTheProgramWithTheDeviceStillErasing) {
    ScenarioRig rig;
    // The erase: the scale says nothing for eight seconds.
    AcceptingScale scale(rig);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kEndRecord + "\r\n");
    size_t heardBeforeErase = 0;
    rig.scriptSerialLoad(1, 1, "fw.hex");
    rig.script.when([&scale] { return scale.device.erased(); }, "the scale erases; wait a while",
                    [&] { heardBeforeErase = scale.device.frames().size(); });
    rig.script.after(3000, "Exit", [&] { rig.click("FIN"); });
    int status = rig.run("");
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(rig.boxes().empty());
    EXPECT_FALSE(rig.form().Linea.portOpen());
    EXPECT_FALSE(rig.files.isOpen(1));
    EXPECT_FALSE(rig.form().Tiempo1.enabled());
    // Nothing more than the first line went to the device, and it had
    // answered nothing but the handshake.
    EXPECT_EQ(heardBeforeErase, 2u);
    EXPECT_EQ(scale.device.frames().size(), heardBeforeErase);
    EXPECT_EQ(scale.device.answerTimes().size(), 1u);
}

TEST(MainDriver, FinEndsTheProgramFromTheModelStep) {
    ScenarioRig rig;
    rig.script.at(5000, "Exit", [&] { rig.click("FIN"); });
    EXPECT_EQ(rig.run(""), 0);
    EXPECT_EQ(rig.pump.now(), 5000);
}

TEST(MainDriver, ClosingTheWindowEndsTheProgramWithTheArrowPointer) {
    ScenarioRig rig;
    rig.script.at(100, "close the window", [&] { rig.form().unload(); });
    EXPECT_EQ(rig.run(""), 0);
    EXPECT_EQ(rig.form().mousePointer(), 1);
}

TEST(MainDriver, TheAnimationCyclesThroughTwelvePicturesWhileLoading) {
    ScenarioRig rig;
    // The whole watch falls inside the erase of the first line.
    NumberedScale::Config config;
    config.eraseTime = 20'000'000;
    AcceptingScale scale(rig, 1, config);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kEndRecord + "\r\n");
    Firmcast* f = &rig.form();
    std::vector<int> shown;
    bool watching = false;
    auto look = [f, &shown, &watching] {
        if (!watching)
            return;
        int visible = 0;
        for (int n = 1; n <= 12; ++n) {
            if (f->dibujo(n).visible())
                visible = visible ? -1 : n;
        }
        if (visible != 0 && (shown.empty() || shown.back() != visible))
            shown.push_back(visible);
    };
    for (int n = 1; n <= 12; ++n) f->dibujo(n).addObserver([look](Control&) { look(); });
    rig.scriptSerialLoad(1, 1, "fw.hex");
    rig.script.when(
        [f] { return f->Texto.caption() == "Scale connected. Please Wait, erasing FLASH ROM"; },
        "watch the pictures from the first line on",
        [&watching, look] {
            watching = true;
            look();
        });
    rig.script.after(600 * 13 + 10, "enough", [] { throw ScenarioDone{}; });
    rig.run("");
    EXPECT_EQ(shown, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 1}));
}

}  // namespace
}  // namespace fc::test
