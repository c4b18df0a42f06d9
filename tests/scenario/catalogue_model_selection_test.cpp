// Choosing a model on step 0: the picture clicks with their highlight, the
// group buttons, EligeModelo at the head of each cycle, the Serie_G tool and
// the visor's screen, and the way and port buttons of step 1.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "control/catalogue.h"
#include "support/scenario_rig.h"
#include "support/wizard_steps.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;

const std::string kFirmware = ":020000020000FC\r\n:00000001FF\r\n";

bool onStepZero(Firmcast* f) {
    return f->Seleccion.reachable() && f->paso_asistente == 0;
}

// Loads `code` once over COM1, where a scale takes the load, without
// Production Way, and presses Again.
void passThenAgain(ScenarioRig& rig, int code) {
    rig.driveC.write("fw.hex", kFirmware);
    rig.scriptSerialLoad(code, 1, "fw.hex");
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->cmdAgain.reachable(); }, "Again",
                    [&rig] { rig.click("cmdAgain"); });
}

void stopOnStepZero(ScenarioRig& rig) {
    Firmcast* f = &rig.form();
    rig.stopWhen([f] { return onStepZero(f); }, "back on the model step");
}

TEST(ModelSelection, APictureClickChoosesALoadableModelAndMovesToTheWayStep) {
    for (int code : {0, 1, 2, 4, 5, 6, 8}) {
        ScenarioRig rig;
        Firmcast* f = &rig.form();
        rig.script.when([f] { return onStepZero(f); }, "pick",
                        [&rig, code] { pickModel(rig, code); });
        rig.stopWhen([f] { return f->frPuerto.reachable(); }, "way step");
        rig.run("");
        const PictureBox& chosen = f->pictureOf(code);
        EXPECT_EQ(f->modelo_elegido, code);
        EXPECT_EQ(f->paso_asistente, 1);
        EXPECT_EQ(f->es_serie_w, toFlag(code == 0));
        EXPECT_EQ(f->es_serie_n, toFlag(code == 1));
        EXPECT_EQ(f->es_serie_h, toFlag(code == 2));
        EXPECT_EQ(f->es_matrix4000, toFlag(code == 4));
        EXPECT_EQ(f->es_tr6100, toFlag(code == 5));
        EXPECT_EQ(f->es_tr8200, toFlag(code == 6 || code == 8));
        EXPECT_EQ(chosen.backColor(), kColourHighlight);
        EXPECT_FALSE(f->frOption.visible());
        EXPECT_FALSE(f->frBalanzas.visible());
        EXPECT_FALSE(f->frEtiquetadoras.visible());
        EXPECT_FALSE(f->frVisores.visible());
        EXPECT_TRUE(f->PictureVisualizar.visible());
        EXPECT_EQ(f->PictureVisualizar.picture(), chosen.picture());
        EXPECT_EQ(f->PictureVisualizar.width(), chosen.width());
        EXPECT_EQ(f->PictureVisualizar.height(), chosen.height());
        EXPECT_EQ(f->PictureVisualizar.backColor(), kColourHighlight);
        EXPECT_FALSE(f->frComParameters.visible());
        EXPECT_FALSE(f->frComParameters.enabled());
        EXPECT_EQ(f->cmdDisplayGrafico.visible(), code == 0) << "code " << code;
        EXPECT_EQ(f->cmdDisplayGrafico.enabled(), code == 0) << "code " << code;
    }
}

TEST(ModelSelection, APictureClickResetsAllNinePicturesPicture9Included) {
    ScenarioRig rig;
    Firmcast* f = &rig.form();
    rig.script.when([f] { return onStepZero(f); }, "pick code 8", [&rig] { pickModel(rig, 8); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "Back",
                    [&rig] { rig.click("cmdAtras"); });
    rig.script.when([f] { return onStepZero(f); }, "pick code 1",
                    [&rig, f] {
                        EXPECT_EQ(f->Picture9.backColor(), kColourHighlight);
                        pickModel(rig, 1);
                    });
    rig.stopWhen([f] { return f->frPuerto.reachable(); }, "way step");
    rig.run("");
    for (int code = 0; code < kCatalogueSize; ++code) {
        EXPECT_EQ(f->pictureOf(code).backColor(), code == 1 ? kColourHighlight : kColourWhite)
            << code;
    }
}

TEST(ModelSelection, RS232OnlyModelsRememberRS232AndTheOthersLeaveTheWay) {
    for (int code : {0, 1, 2, 4, 5, 6, 8}) {
        ScenarioRig rig;
        Firmcast* f = &rig.form();
        rig.script.when([f] { return onStepZero(f); }, "pick",
                        [&rig, f, code] {
                            f->transporte_elegido = 0;  // Ethernet was used last
                            pickModel(rig, code);
                        });
        rig.stopWhen([f] { return f->frPuerto.reachable(); }, "way step");
        rig.run("");
        bool rs232Only = code == 1 || code == 2 || code == 4 || code == 5;
        EXPECT_EQ(f->transporte_elegido, rs232Only ? 1 : 0) << "code " << code;
    }
}

TEST(ModelSelection, GroupButtonsShowTheirFrameOfPictures) {
    ScenarioRig rig;
    Firmcast* f = &rig.form();
    rig.script.when([f] { return onStepZero(f); }, "labellers",
                    [&rig, f] {
                        rig.click("optEtiquetadoras");
                        EXPECT_TRUE(f->frEtiquetadoras.visible());
                        EXPECT_FALSE(f->frBalanzas.visible());
                        EXPECT_FALSE(f->frVisores.visible());
                        rig.click("optVisores");
                        EXPECT_TRUE(f->frVisores.visible());
                        EXPECT_FALSE(f->frEtiquetadoras.visible());
                        rig.click("optBalanzas");
                        EXPECT_TRUE(f->frBalanzas.visible());
                        EXPECT_FALSE(f->frVisores.visible());
                        throw ScenarioDone{};
                    });
    EXPECT_EQ(rig.run(""), -1);
}

TEST(ModelSelection, WayAndPortButtonsSetTheConnectionAndThePort) {
    ScenarioRig rig;
    Firmcast* f = &rig.form();
    rig.script.when([f] { return onStepZero(f); }, "pick Serie_W", [&rig] { pickModel(rig, 0); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "ways and ports",
                    [&rig, f] {
                        rig.click("optEthernet");
                        EXPECT_EQ(f->tipo_conexion, 0);
                        EXPECT_FALSE(f->Frame1.enabled());
                        rig.click("optrs232");
                        EXPECT_EQ(f->tipo_conexion, 1);
                        EXPECT_TRUE(f->Frame1.enabled());
                        for (int port = 1; port <= 4; ++port) {
                            rig.click("Option" + std::to_string(port));
                            EXPECT_EQ(f->puerto_com, port);
                        }
                        throw ScenarioDone{};
                    });
    EXPECT_EQ(rig.run(""), -1);
}

TEST(ModelSelection, AfterAPassWithCode8EligeModeloHighlightsNothingAndKeepsTheGroup) {
    ScenarioRig rig;
    AcceptingScale scale(rig);
    passThenAgain(rig, 8);
    stopOnStepZero(rig);
    EXPECT_EQ(rig.run(""), -1);
    Firmcast* f = &rig.form();
    EXPECT_FALSE(f->anyModelFlag());
    for (int code = 0; code < 8; ++code) {
        EXPECT_EQ(f->pictureOf(code).backColor(), kColourWhite) << "code " << code;
    }
    // Picture9 is left out of the reset: it keeps what its own click gave it.
    EXPECT_EQ(f->Picture9.backColor(), kColourHighlight);
    EXPECT_TRUE(f->optEtiquetadoras.value());
    EXPECT_TRUE(f->frEtiquetadoras.visible());
    EXPECT_FALSE(f->frBalanzas.visible());
    EXPECT_EQ(f->modelo_elegido, 8);
}

TEST(ModelSelection, AfterAPassWithCode8NextStillSelectsCode8) {
    ScenarioRig rig;
    AcceptingScale scale(rig);
    passThenAgain(rig, 8);
    Firmcast* f = &rig.form();
    rig.script.when([f] { return onStepZero(f); }, "Next", [&rig] { rig.click("cmdAdelante"); });
    rig.stopWhen([f] { return f->frPuerto.reachable(); }, "way step");
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_EQ(f->es_tr8200, kTrue);
    EXPECT_EQ(f->modelo_elegido, 8);
    EXPECT_EQ(f->PictureVisualizar.picture(), f->Picture9.picture());
}

TEST(ModelSelection, AfterAPassWithCode6Picture7IsHighlightedAndTheLabellerFrameShows) {
    ScenarioRig rig;
    AcceptingScale scale(rig);
    passThenAgain(rig, 6);
    stopOnStepZero(rig);
    EXPECT_EQ(rig.run(""), -1);
    Firmcast* f = &rig.form();
    EXPECT_EQ(f->Picture7.backColor(), kColourHighlight);
    EXPECT_TRUE(f->frEtiquetadoras.visible());
    EXPECT_FALSE(f->frBalanzas.visible());
    EXPECT_FALSE(f->frVisores.visible());
    EXPECT_FALSE(f->anyModelFlag());
    EXPECT_FALSE(f->PictureVisualizar.visible());
}

TEST(ModelSelection, EligeModeloShowsTheGroupOfTheCodeItHighlights) {
    ScenarioRig rig;
    Firmcast& f = rig.form();
    f.optBalanzas_Click();
    f.EligeModelo("7");
    EXPECT_EQ(f.Picture12.backColor(), kColourHighlight);
    EXPECT_TRUE(f.frVisores.visible());
    EXPECT_FALSE(f.frBalanzas.visible());
    f.EligeModelo("4");
    EXPECT_EQ(f.Picture5.backColor(), kColourHighlight);
    EXPECT_EQ(f.Picture12.backColor(), kColourWhite);
    EXPECT_TRUE(f.frEtiquetadoras.visible());
    f.EligeModelo("-1");
    for (int code = 0; code < kCatalogueSize; ++code)
        EXPECT_EQ(f.pictureOf(code).backColor(), kColourWhite);
    EXPECT_TRUE(f.frEtiquetadoras.visible());
}

TEST(ModelSelection, GseriesStartedTwiceStartsTwoCopies) {
    ScenarioRig rig;
    std::vector<std::string> started;
    rig.hooks.startProgram = [&started](const std::string& commandLine) {
        started.push_back(commandLine);
        return static_cast<long>(1000 + started.size());
    };
    Firmcast* f = &rig.form();
    rig.script.when([f] { return onStepZero(f); }, "Serie_G", [&rig] { pickModel(rig, 3); });
    rig.script.after(100, "Serie_G again", [&rig] { rig.click("Picture6"); });
    rig.script.after(100, "look", [] { throw ScenarioDone{}; });
    rig.run("");
    std::string expected = rig.home.path().string() + "\\Gseries.exe 0";
    EXPECT_THAT(started, ElementsAre(expected, expected));
    EXPECT_EQ(f->proceso_externo, 1002);
    EXPECT_EQ(f->lanzado_gseries, kTrue);
    EXPECT_EQ(f->modelo_elegido, 3);
    EXPECT_EQ(f->paso_asistente, 0);
    EXPECT_TRUE(f->Seleccion.reachable());
    EXPECT_FALSE(f->anyModelFlag());
    EXPECT_EQ(f->Picture6.backColor(), kColourHighlight);
}

TEST(ModelSelection, GseriesGetsTheLevelAsOneDigitFromThePictureAndFromNext) {
    for (int level = 0; level <= 3; ++level) {
        ScenarioRig rig;
        std::vector<std::string> started;
        rig.hooks.startProgram = [&started](const std::string& commandLine) {
            started.push_back(commandLine);
            return 1L;
        };
        Firmcast* f = &rig.form();
        rig.script.when([f] { return onStepZero(f); }, "Serie_G", [&rig] { pickModel(rig, 3); });
        rig.script.after(100, "Next", [&rig] { rig.click("cmdAdelante"); });
        rig.script.after(100, "look", [] { throw ScenarioDone{}; });
        rig.run(std::to_string(level));
        std::string expected = rig.home.path().string() + "\\Gseries.exe " + std::to_string(level);
        EXPECT_THAT(started, ElementsAre(expected, expected)) << "level " << level;
        EXPECT_EQ(f->paso_asistente, 0);
    }
}

TEST(ModelSelection, TheVisorPictureOpensItsScreenModallyAndStepZeroComesBack) {
    ScenarioRig rig;
    Firmcast* f = &rig.form();
    // The visor screen's steps run while the main screen's click is still in
    // its handler, so they are a script of their own.
    OperatorScript onVisor(rig.pump);
    auto visorShown = [f] { return f->visorScreen() != nullptr && f->visorScreen()->loaded(); };
    rig.script.when([f] { return onStepZero(f); }, "MV-510", [&rig] { pickModel(rig, 7); });
    rig.script.after(100, "Next with the visor remembered", [&rig] { rig.click("cmdAdelante"); });
    rig.script.after(100, "look", [] { throw ScenarioDone{}; });
    Screen* firstShown = nullptr;
    onVisor.when(visorShown, "the visor screen", [f, &firstShown] {
        firstShown = f->visorScreen();
        EXPECT_EQ(f->visorScreen()->caption(), "MV-510 Firmware Loader");
        EXPECT_EQ(f->paso_asistente, 0);
        EXPECT_EQ(f->modelo_elegido, 7);
        EXPECT_EQ(f->Picture12.backColor(), kColourHighlight);
    });
    onVisor.after(1000, "back to the main screen", [f] { f->visorScreen()->cmdAtras.click(); });
    onVisor.when(visorShown, "the same screen again", [f, &firstShown] {
        EXPECT_EQ(f->visorScreen(), firstShown);
        f->visorScreen()->cmdAtras.click();  // back to the main screen
    });
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_TRUE(onVisor.finished());
    EXPECT_EQ(f->paso_asistente, 0);
    EXPECT_TRUE(f->Seleccion.reachable());
    EXPECT_TRUE(f->frVisores.reachable());
    EXPECT_FALSE(f->anyModelFlag());
}

}  // namespace
}  // namespace fc::test
