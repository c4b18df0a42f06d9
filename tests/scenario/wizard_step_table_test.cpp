// The table of `paso_asistente`, row by row: what each command does to the
// step from each step, and that the driver then shows the step it names.
// The two ways back to step 1 from its own Next (no port chosen, a port that
// cannot be opened) are tested with the line set-up, in
// serial_line_control_test.cpp.
#include <gtest/gtest.h>

#include "sim/echo_device.h"
#include "support/scenario_rig.h"
#include "support/wizard_steps.h"

namespace fc::test {
namespace {

const LineSettings k7E1{57600, 'E', 7, 1};
const std::string kFirmware = ":020000020000FC\r\n:00000001FF\r\n";

bool onStepZero(Firmcast* f) {
    return f->Seleccion.reachable() && f->paso_asistente == 0;
}
bool onWayStep(Firmcast* f) {
    return f->frPuerto.reachable() && f->paso_asistente == 1;
}
bool onFileStep(Firmcast* f) {
    return f->File1.reachable() && f->paso_asistente == 2;
}
bool onScaleList(Firmcast* f) {
    return f->frBalanzasEth.reachable() && f->paso_asistente == 3;
}

// A rig with a 7E1 device on COM1 and a firmware file at C:\fw.hex; a test
// that loads plugs a scale in its place. The form takes the hooks as they
// are when it is first asked for.
struct StepRig : ScenarioRig {
    EchoDevice device{k7E1};
    StepRig() {
        serial.attach(1, device);
        driveC.write("fw.hex", kFirmware);
    }
    Firmcast* f() { return &form(); }
    // Step 0 to the file step of Serie_W on Ethernet.
    void toEthernetFileStep() {
        Firmcast* form = f();
        script.when([form] { return onStepZero(form); }, "Serie_W",
                    [this] { pickModel(*this, 0); });
        script.when([form] { return onWayStep(form); }, "Ethernet, Next",
                    [this] {
                        click("optEthernet");
                        click("cmdAdelante");
                    });
    }
};

TEST(StepTable, From0NextWithARememberedModelGoesTo1) {
    StepRig rig;
    Firmcast* f = rig.f();
    rig.script.when([f] { return onStepZero(f); }, "Serie_N", [&rig] { pickModel(rig, 1); });
    rig.script.when([f] { return onWayStep(f); }, "Back", [&rig] { rig.click("cmdAtras"); });
    rig.script.when([f] { return onStepZero(f); }, "Next",
                    [&rig, f] {
                        EXPECT_FALSE(f->anyModelFlag());
                        rig.click("cmdAdelante");
                        EXPECT_EQ(f->paso_asistente, 1);
                    });
    rig.stopWhen([f] { return onWayStep(f); }, "way step");
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_EQ(f->es_serie_n, kTrue);
    EXPECT_TRUE(f->PictureVisualizar.visible());
    EXPECT_FALSE(f->Seleccion.visible());
}

TEST(StepTable, From0APictureClickGoesTo1) {
    StepRig rig;
    Firmcast* f = rig.f();
    rig.script.when([f] { return onStepZero(f); }, "TR-6100",
                    [&rig, f] {
                        pickModel(rig, 5);
                        EXPECT_EQ(f->paso_asistente, 1);
                    });
    rig.stopWhen([f] { return onWayStep(f); }, "way step");
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_EQ(f->es_tr6100, kTrue);
}

TEST(StepTable, From0NextOnSerieGStaysOn0WithTheToolStarted) {
    StepRig rig;
    int started = 0;
    rig.hooks.startProgram = [&started](const std::string&) {
        return static_cast<long>(++started);
    };
    Firmcast* f = rig.f();
    rig.script.when([f] { return onStepZero(f); }, "Serie_G", [&rig] { pickModel(rig, 3); });
    rig.script.after(10, "Next", [&rig, f] {
        rig.click("cmdAdelante");
        EXPECT_EQ(f->paso_asistente, 0);
    });
    rig.script.after(1000, "look", [] { throw ScenarioDone{}; });
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_EQ(started, 2);
    EXPECT_EQ(f->lanzado_gseries, kTrue);
    EXPECT_TRUE(onStepZero(f));
    EXPECT_FALSE(f->frPuerto.visible());
}

TEST(StepTable, From0NextOnTheVisorLeavesTheStepAsItWas) {
    StepRig rig;
    Firmcast* f = rig.f();
    OperatorScript onVisor(rig.pump);
    rig.script.when([f] { return onStepZero(f); }, "MV-510", [&rig] { pickModel(rig, 7); });
    rig.script.after(10, "Next", [&rig] { rig.click("cmdAdelante"); });
    rig.script.after(10, "look", [] { throw ScenarioDone{}; });
    auto shown = [f] { return f->visorScreen() != nullptr && f->visorScreen()->loaded(); };
    for (const char* when : {"from the picture", "from Next"}) {
        onVisor.when(shown, std::string("close the visor screen opened ") + when, [f] {
            EXPECT_EQ(f->paso_asistente, 0);
            f->visorScreen()->cmdAtras.click();  // back to the main screen
        });
    }
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_TRUE(onVisor.finished());
    EXPECT_TRUE(onStepZero(f));
}

TEST(StepTable, From1NextOnTheVisorLeavesTheStepAndRunsNoWay) {
    StepRig rig;
    Firmcast& f = rig.form();
    f.load();
    f.paso_asistente = 1;
    f.modelo_elegido = 7;
    rig.script.when([&f] { return f.visorScreen() != nullptr && f.visorScreen()->loaded(); },
                    "close it", [&f] { f.visorScreen()->cmdAtras.click(); });
    f.cmdAdelante_Click();
    EXPECT_TRUE(rig.script.finished());
    EXPECT_EQ(f.paso_asistente, 1);
    EXPECT_EQ(f.transporte_elegido, -1);
    EXPECT_FALSE(f.Linea.portOpen());
}

TEST(StepTable, From1NextGoesTo2) {
    StepRig rig;
    Firmcast* f = rig.f();
    scriptModelAndPort(rig, 1, 1);
    rig.stopWhen([f] { return onFileStep(f); }, "file step");
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_FALSE(f->frPuerto.visible());
    EXPECT_TRUE(f->frDirectorio.visible());
}

TEST(StepTable, From1BackGoesTo0AndTakesTheDisplayButtonAway) {
    StepRig rig;
    Firmcast* f = rig.f();
    rig.script.when([f] { return onStepZero(f); }, "Serie_W", [&rig] { pickModel(rig, 0); });
    rig.script.when([f] { return onWayStep(f); }, "Back",
                    [&rig, f] {
                        EXPECT_TRUE(f->cmdDisplayGrafico.reachable());
                        rig.click("cmdAtras");
                    });
    rig.stopWhen([f] { return onStepZero(f); }, "model step");
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_FALSE(f->cmdDisplayGrafico.visible());
    EXPECT_FALSE(f->cmdDisplayGrafico.enabled());
    EXPECT_FALSE(f->anyModelFlag());
    EXPECT_FALSE(f->cmdAtras.enabled());
    EXPECT_EQ(f->Picture4.backColor(), kColourHighlight);
    EXPECT_FALSE(f->frPuerto.visible());
}

TEST(StepTable, From2NextOnEthernetGoesTo3) {
    StepRig rig;
    rig.home.write("config.ini",
                   "[Balanzas]\r\nNumero=2\r\n[Direcciones]\r\ndir1=10.0.0.1\r\ndir2=10.0.0.2\r\n");
    Firmcast* f = rig.f();
    rig.toEthernetFileStep();
    rig.script.when([f] { return onFileStep(f); }, "Next",
                    [&rig, f] {
                        rig.click("cmdAdelante");
                        EXPECT_EQ(f->paso_asistente, 3);
                    });
    rig.stopWhen([f] { return onScaleList(f); }, "scale list");
    EXPECT_EQ(rig.run(""), -1);
    // The list on step 3 is the one config.ini keeps.
    EXPECT_EQ(f->Text1.text(), "2");
    EXPECT_EQ(f->lista_balanzas, (std::vector<std::string>{"10.0.0.1", "10.0.0.2"}));
    EXPECT_TRUE(f->cmdSave.reachable());
    EXPECT_FALSE(f->File1.enabled());
    EXPECT_FALSE(f->Drive1.enabled());
}

TEST(StepTable, From2NextOnRS232GoesTo4AndTheLoadStarts) {
    StepRig rig;
    AcceptingScale scale(rig);
    bool connected = false;
    Firmcast* form = rig.f();
    rig.scriptSerialLoad(1, 1, "fw.hex");
    rig.script.when([&scale] { return scale.connects() > 0; }, "the scale heard the handshake",
                    [&connected, form] {
                        connected = true;
                        EXPECT_EQ(form->paso_asistente, 4);
                        EXPECT_FALSE(form->cmdAdelante.enabled());
                        EXPECT_FALSE(form->cmdAtras.enabled());
                        EXPECT_TRUE(form->frInfoComunicacion.visible());
                        throw ScenarioDone{};
                    });
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_TRUE(connected);
}

TEST(StepTable, From2BackGoesTo1) {
    StepRig rig;
    Firmcast* f = rig.f();
    scriptModelAndPort(rig, 1, 1);
    rig.script.when([f] { return onFileStep(f); }, "Back", [&rig] { rig.click("cmdAtras"); });
    rig.stopWhen([f] { return onWayStep(f); }, "way step");
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_FALSE(f->frDirectorio.visible());
    EXPECT_EQ(f->es_serie_n, kTrue);
}

TEST(StepTable, From3NextGoesTo4AndTheEthernetLoadRuns) {
    StepRig rig;
    Firmcast* f = rig.f();
    rig.toEthernetFileStep();
    rig.script.when([f] { return onFileStep(f); }, "Next", [&rig] { rig.click("cmdAdelante"); });
    rig.script.when([f] { return onScaleList(f); }, "Next",
                    [&rig, f] {
                        rig.click("cmdAdelante");
                        EXPECT_EQ(f->paso_asistente, 4);
                    });
    rig.stopWhen([f] { return f->cmdAgain.visible(); }, "the pass ended");
    EXPECT_EQ(rig.run(""), -1);
    // The load prepared the file and gave the screen back for "Again".
    EXPECT_FALSE(f->cmdSave.enabled());
    EXPECT_TRUE(f->Text1.enabled());
    EXPECT_TRUE(f->optProduccion.visible());
    EXPECT_EQ(f->estado_balanzas.size(), f->lista_balanzas.size());
    // No file was chosen: both the preparation and the image read say so.
    EXPECT_EQ(rig.boxes(), (std::vector<std::string>{"Error en Preprocesado del fichero",
                                                     "52Bad file name or number"}));
}

TEST(StepTable, From3BackGoesTo2AndEmptiesTheModelLabel) {
    StepRig rig;
    Firmcast* f = rig.f();
    rig.toEthernetFileStep();
    rig.script.when([f] { return onFileStep(f); }, "Next", [&rig] { rig.click("cmdAdelante"); });
    rig.script.when([f] { return onScaleList(f); }, "Back",
                    [&rig, f] {
                        f->lblModelo.setCaption("Model: W123");
                        rig.click("cmdAtras");
                    });
    rig.stopWhen([f] { return onFileStep(f); }, "file step");
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_EQ(f->lblModelo.caption(), "");
    EXPECT_FALSE(f->frBalanzasEth.visible());
    EXPECT_TRUE(f->File1.enabled());
}

TEST(StepTable, From4AgainWithProductionWayTickedGoesTo3) {
    StepRig rig;
    AcceptingScale scale(rig);
    Firmcast* f = rig.f();
    rig.scriptSerialLoad(1, 1, "fw.hex");
    rig.script.when([f] { return f->cmdAgain.reachable(); }, "tick Production Way, Again",
                    [&rig, f] {
                        EXPECT_EQ(f->optProduccion.value(), 0);
                        rig.click("optProduccion");
                        rig.click("cmdAgain");
                    });
    rig.script.after(100, "look", [] { throw ScenarioDone{}; });
    EXPECT_EQ(rig.run("0"), -1);
    EXPECT_EQ(f->modo_produccion, kTrue);
    EXPECT_EQ(f->paso_asistente, 3);
    EXPECT_TRUE(f->frDirectorio.visible());
    EXPECT_FALSE(f->cmdAgain.visible());
    EXPECT_EQ(f->es_serie_n, kTrue);
}

TEST(StepTable, From4AgainWithProductionWayClearedGoesTo0) {
    StepRig rig;
    AcceptingScale scale(rig);
    Firmcast* f = rig.f();
    rig.scriptSerialLoad(1, 1, "fw.hex");
    rig.script.when([f] { return f->cmdAgain.reachable(); }, "clear Production Way, Again",
                    [&rig, f] {
                        EXPECT_EQ(f->optProduccion.value(), 1);
                        rig.click("optProduccion");
                        rig.click("cmdAgain");
                    });
    rig.stopWhen([f] { return onStepZero(f); }, "model step");
    EXPECT_EQ(rig.run("1"), -1);
    EXPECT_EQ(f->modo_produccion, kFalse);
    EXPECT_FALSE(f->anyModelFlag());
}

TEST(StepTable, BackOnSteps0And4AndNextOnAnyOtherStepDoNothing) {
    StepRig rig;
    Firmcast& f = rig.form();
    for (Integer step : {0, 4}) {
        f.paso_asistente = step;
        f.cmdAtras_Click();
        EXPECT_EQ(f.paso_asistente, step);
    }
    for (Integer step : {4, 5, -2}) {
        f.paso_asistente = step;
        f.cmdAdelante_Click();
        EXPECT_EQ(f.paso_asistente, step);
    }
    EXPECT_TRUE(rig.boxes().empty());
}

}  // namespace
}  // namespace fc::test
