// The main driver on the virtual clock: start-up, the wizard's waits, the
// serial path as far as the connect step, the end of a pass, Production
// Way, the fatal trap and FIN.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sim/echo_device.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;

const LineSettings k7E1{57600, 'E', 7, 1};
const std::string kSoundRecord = ":10000000000102030405060708090A0B0C0D0E0F78";
const std::string kEndRecord = ":00000001FF";

// A load that the (stand-in) line protocol always completes, so that the
// driver's own road around it can be watched.
void completeEveryLoad(ScenarioRig& rig, std::vector<std::string>* calls = nullptr) {
    auto note = [calls](const char* what) {
        if (calls)
            calls->push_back(what);
    };
    rig.hooks.numberedConnect = [note](Firmcast&) {
        note("connect");
        return kTrue;
    };
    rig.hooks.numberedFirstLine = [note](Firmcast&) {
        note("first line");
        return kTrue;
    };
    rig.hooks.numberedLoop = [note](Firmcast&) {
        note("loop");
        return LoopOutcome::Success;
    };
}

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
    EchoDevice device(k7E1);
    rig.serial.attach(2, device);
    rig.driveC.write("notes.txt", "this is no firmware\r\nat all\r\n");
    bool connected = false;
    rig.hooks.numberedConnect = [&](Firmcast&) {
        connected = true;
        throw ScenarioDone{};
        return kFalse;
    };
    rig.scriptSerialLoad(6, 2, "notes.txt");
    rig.run("");
    EXPECT_TRUE(connected);
    EXPECT_TRUE(rig.boxes().empty());
    EXPECT_EQ(rig.form().Texto.caption(), "Connecting with scale");
}

TEST(MainDriver, SerieNFirstLineThatIsAnySoundRecordPassesBothTests) {
    ScenarioRig rig;
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    // A data record first, not the usual type 02: the soundness test
    // rewrites the record kind, so the kind test passes too.
    rig.driveC.write("data-first.hex", kSoundRecord + "\r\n" + kEndRecord + "\r\n");
    bool connected = false;
    rig.hooks.numberedConnect = [&](Firmcast& f) {
        connected = true;
        EXPECT_EQ(f.inicio_linea, ":02");
        throw ScenarioDone{};
        return kFalse;
    };
    rig.scriptSerialLoad(1, 1, "data-first.hex");
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
    EchoDevice device;
    rig.serial.attach(1, device);
    rig.driveC.write("tr6100.s19", "S00600004844521B\r\nS9030000FC\r\n");
    std::vector<std::string> probes;
    rig.hooks.testk1 = [&](Firmcast& f) {
        probes.push_back(f.Linea.settings());
        EXPECT_EQ(f.Texto.caption(), "Connecting with TR-6100");
        return kFalse;
    };
    rig.scriptSerialLoad(5, 1, "tr6100.s19");
    rig.stopWhen([&] { return rig.form().esperando_otra != kFalse; }, "the pass ended");
    rig.run("");
    EXPECT_THAT(probes, ElementsAre("57600,N,8,1", "19200,N,8,1"));
    EXPECT_EQ(rig.form().cmbvelocidades.listIndex(), 4);
    EXPECT_THAT(rig.boxes(), ElementsAre("No answer from TR-6100, check the cable or TR-6100"));
}

TEST(MainDriver, SerieHWithoutAnswerNamesTheH7XXScale) {
    ScenarioRig rig;
    EchoDevice device;
    rig.serial.attach(1, device);
    rig.driveC.write("h.s19", "S00600004844521B\r\nS9030000FC\r\n");
    rig.hooks.testk1 = [](Firmcast&) { return kFalse; };
    rig.scriptSerialLoad(2, 1, "h.s19");
    rig.stopWhen([&] { return rig.form().esperando_otra != kFalse; }, "the pass ended");
    rig.run("");
    EXPECT_THAT(rig.boxes(), ElementsAre("No answer from H-7XX scale, check the cable or scale"));
}

TEST(MainDriver, ASuccessfulLoadSaysTheScaleIsReadyAndWaitsForAgain) {
    ScenarioRig rig;
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kSoundRecord + "\r\n" + kEndRecord + "\r\n");
    std::vector<std::string> calls;
    completeEveryLoad(rig, &calls);
    rig.scriptSerialLoad(1, 1, "fw.hex");
    rig.stopWhen([&] { return rig.form().esperando_otra != kFalse; }, "the pass ended");
    rig.run("");
    Firmcast& f = rig.form();
    EXPECT_THAT(calls, ElementsAre("connect", "first line", "loop"));
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
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kEndRecord + "\r\n");
    std::vector<std::string> calls;
    completeEveryLoad(rig, &calls);
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
    EXPECT_THAT(calls,
                ElementsAre("connect", "first line", "loop", "connect", "first line", "loop"));
    EXPECT_EQ(rig.dialogs.texts(),
              (std::vector<std::string>{"The scale is ready", "The scale is ready"}));
}

TEST(MainDriver, InProductionWayBackFromTheStep3WaitLeadsToTheFileStep) {
    ScenarioRig rig;
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kEndRecord + "\r\n");
    completeEveryLoad(rig);
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
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kEndRecord + "\r\n");
    completeEveryLoad(rig);
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
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kEndRecord + "\r\n");
    completeEveryLoad(rig);
    // The sender of the last record failed without its clean-up.
    rig.hooks.numberedLoop = [](Firmcast&) { return LoopOutcome::EndOfPass; };
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
        rig.hooks.frmCargaMV510 = [](Firmcast&) {};
        Firmcast* f = &rig.form();
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
    }
}

TEST(MainDriver, FinDuringTheEraseEndsTheProgramWithTheDeviceStillErasing) {
    ScenarioRig rig;
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kEndRecord + "\r\n");
    rig.hooks.numberedConnect = [](Firmcast&) { return kTrue; };
    size_t heardBeforeErase = 0;
    rig.hooks.numberedFirstLine = [&](Firmcast& f) {
        // The erase: the device says nothing for a long time.
        f.Linea.output("H0001" + f.linea_fichero);
        heardBeforeErase = f.Linea.outBufferCount();
        while (true) f.services().pump.doEvents();
        return kTrue;
    };
    rig.scriptSerialLoad(1, 1, "fw.hex");
    Firmcast* f = &rig.form();
    rig.script.when(
        [f] { return f->Texto.caption() == "Scale connected. Please Wait, erasing FLASH ROM"; },
        "wait a while", [] {});
    rig.script.after(3000, "Exit", [&] { rig.click("FIN"); });
    int status = rig.run("");
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(rig.boxes().empty());
    EXPECT_FALSE(rig.form().Linea.portOpen());
    EXPECT_FALSE(rig.files.isOpen(1));
    EXPECT_FALSE(rig.form().Tiempo1.enabled());
    // Nothing more than the first line went to the device.
    EXPECT_EQ(device.heard().size(), heardBeforeErase);
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
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    rig.driveC.write("fw.hex", ":020000020000FC\r\n" + kEndRecord + "\r\n");
    rig.hooks.numberedConnect = [](Firmcast&) { return kTrue; };
    std::vector<int> shown;
    rig.hooks.numberedFirstLine = [&](Firmcast& f) {
        long long until = f.services().pump.now() + 600 * 13 + 10;
        while (f.services().pump.now() < until) {
            int visible = 0;
            for (int n = 1; n <= 12; ++n) {
                if (f.dibujo(n).visible())
                    visible = visible ? -1 : n;
            }
            if (visible != 0 && (shown.empty() || shown.back() != visible))
                shown.push_back(visible);
            f.services().pump.doEvents();
        }
        throw ScenarioDone{};
        return kTrue;
    };
    rig.scriptSerialLoad(1, 1, "fw.hex");
    rig.run("");
    EXPECT_EQ(shown, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 1}));
}

}  // namespace
}  // namespace fc::test
