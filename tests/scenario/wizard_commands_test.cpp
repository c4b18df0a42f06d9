// The operator's commands on the wizard: Next on an empty model step, the way
// remembered across Back, the caption of the Ethernet way, a double click on
// a firmware file, the drive, folder and file lists, the display screen, the
// scale list's Save, the address check of the start and the clean-ups.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/file_table.h"
#include "sim/echo_device.h"
#include "support/scenario_rig.h"
#include "support/wizard_steps.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;

const LineSettings k7E1{57600, 'E', 7, 1};
const std::string kFirmware = ":020000020000FC\r\n:00000001FF\r\n";

bool onStepZero(Firmcast* f) {
    return f->Seleccion.reachable() && f->paso_asistente == 0;
}
bool onFileStep(Firmcast* f) {
    return f->File1.reachable() && f->paso_asistente == 2;
}

TEST(WizardCommands, NextOnStepZeroWithNothingSelectedShowsTheMessageAndDoesNotMove) {
    ScenarioRig rig;
    Firmcast* f = &rig.form();
    rig.script.when([f] { return onStepZero(f); }, "Next", [&rig] { rig.click("cmdAdelante"); });
    rig.script.after(100, "look", [] { throw ScenarioDone{}; });
    EXPECT_EQ(rig.run(""), -1);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "You must select a model of scale");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, 64);
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "Firmcast");
    EXPECT_EQ(f->paso_asistente, 0);
    EXPECT_FALSE(f->anyModelFlag());
    EXPECT_TRUE(f->Seleccion.reachable());
    EXPECT_FALSE(f->frPuerto.visible());
}

TEST(WizardCommands, BackFromTheFileStepAndForwardAgainReselectsTheRememberedWayAndPort) {
    ScenarioRig rig;
    EchoDevice device(k7E1);
    rig.serial.attach(3, device);
    Firmcast* f = &rig.form();
    rig.script.when([f] { return onStepZero(f); }, "Serie_W", [&rig] { pickModel(rig, 0); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "Ethernet, Next",
                    [&rig] {
                        rig.click("optEthernet");
                        rig.click("cmdAdelante");
                    });
    rig.script.when([f] { return onFileStep(f); }, "Back", [&rig] { rig.click("cmdAtras"); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "the way is Ethernet again",
                    [&rig, f] {
                        EXPECT_TRUE(f->optEthernet.value());
                        EXPECT_FALSE(f->optrs232.value());
                        rig.click("optrs232");
                        rig.click("Option3");
                        rig.click("cmdAdelante");
                    });
    rig.script.when([f] { return onFileStep(f); }, "Back", [&rig] { rig.click("cmdAtras"); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "RS-232 on COM3 again",
                    [&rig, f] {
                        EXPECT_TRUE(f->optrs232.value());
                        EXPECT_FALSE(f->optEthernet.value());
                        EXPECT_TRUE(f->Option3.value());
                        EXPECT_FALSE(f->Option1.value());
                        rig.click("cmdAdelante");
                    });
    rig.stopWhen([f] { return onFileStep(f); }, "file step");
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_TRUE(rig.script.finished());
    EXPECT_EQ(f->caption(), "Firmcast working on port COM3 ");
    EXPECT_TRUE(f->Linea.portOpen());
    EXPECT_EQ(f->Linea.commPort(), 3);
    EXPECT_TRUE(rig.boxes().empty());
}

TEST(WizardCommands, EthernetWithTr8200LeavesTheCaptionWhileSerieWChangesIt) {
    for (int code : {6, 0}) {
        ScenarioRig rig;
        Firmcast* f = &rig.form();
        rig.script.when([f] { return onStepZero(f); }, "pick",
                        [&rig, code] { pickModel(rig, code); });
        rig.script.when([f] { return f->frPuerto.reachable(); }, "Ethernet, Next",
                        [&rig] {
                            rig.click("optEthernet");
                            rig.click("cmdAdelante");
                        });
        rig.stopWhen([f] { return onFileStep(f); }, "file step");
        EXPECT_EQ(rig.run(""), -1);
        EXPECT_EQ(f->caption(),
                  code == 6 ? "Firmware Loader 1.22 A" : "Firmcast working on Ethernet ");
        EXPECT_EQ(f->transporte_elegido, 0);
        EXPECT_FALSE(f->frPuerto.visible());
        EXPECT_TRUE(f->frDirectorio.visible());
        EXPECT_FALSE(f->Linea.portOpen());
    }
}

TEST(WizardCommands, ADoubleClickOnAFileShowsTheAnimationAndTheFileButOnlyNextStartsTheLoad) {
    ScenarioRig rig;
    AcceptingScale scale(rig);
    rig.driveC.write("fw.hex", kFirmware);
    scriptModelAndPort(rig, 1, 1);
    Firmcast* f = &rig.form();
    rig.script.when([f] { return onFileStep(f); }, "double click the file",
                    [&rig] {
                        rig.selectText("File1", "fw.hex");
                        operatorDblClick(rig.form(), "File1");
                    });
    rig.script.after(700, "the animation runs, the load does not", [f, &scale] {
        EXPECT_EQ(f->caption(), "Firmcast working on port COM1 C:\\fw.hex");
        EXPECT_TRUE(f->Tiempo1.enabled());
        EXPECT_EQ(f->Tiempo1.interval(), 600);
        EXPECT_EQ(f->animando, kTrue);
        EXPECT_TRUE(f->dibujo(1).visible());
        EXPECT_EQ(f->Texto.caption(), " ");
        EXPECT_EQ(f->paso_asistente, 2);
        EXPECT_EQ(scale.connects(), 0);
    });
    rig.script.after(5000, "Next", [&rig] { rig.click("cmdAdelante"); });
    rig.stopWhen([&scale] { return scale.connects() > 0; }, "the scale heard the handshake");
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_TRUE(rig.script.finished());
    EXPECT_EQ(scale.connects(), 1);
}

TEST(WizardCommands, ADriveThatIsNotReadyPutsTheDriveListBackSilently) {
    TempFolder t;
    ScenarioRig rig;
    rig.addDrive('t', t.path());
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    rig.driveC.write("fw/a.hex", kFirmware);
    scriptModelAndPort(rig, 1, 1);
    Firmcast* f = &rig.form();
    rig.script.when([f] { return onFileStep(f); }, "open fw",
                    [&rig] {
                        rig.selectText("Dir1", "   fw");
                        operatorDblClick(rig.form(), "Dir1");
                    });
    rig.script.after(10, "T: is no longer ready; choose it", [&rig, f, &t] {
        ASSERT_EQ(f->Drive1.listCount(), 2);
        EXPECT_EQ(f->Dir1.path(), "C:\\fw");
        std::filesystem::remove_all(t.path());
        reach(rig.form(), "Drive1");
        f->Drive1.setDrive("t:");  // what choosing it in the list does
    });
    rig.script.after(10, "look", [] { throw ScenarioDone{}; });
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_EQ(f->Drive1.drive(), "c:");
    EXPECT_EQ(f->Dir1.path(), "C:\\fw");
    EXPECT_EQ(f->File1.path(), "C:\\fw");
    EXPECT_EQ(f->File1.list(0), "a.hex");
    EXPECT_TRUE(rig.boxes().empty());
}

TEST(WizardCommands, TheFolderListOpensAFolderOnDoubleClickAndGoesBackUp) {
    ScenarioRig rig;
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    rig.driveC.write("top.hex", "");
    rig.driveC.write("fw/new.hex", "");
    rig.driveC.write("fw/old/old.hex", "");
    scriptModelAndPort(rig, 1, 1);
    Firmcast* f = &rig.form();
    std::vector<std::string> rootFolders, fwFolders, fwFiles;
    auto items = [](const ComboBox& list) {
        std::vector<std::string> out;
        for (int i = 0; i < list.listCount(); ++i) out.push_back(list.list(i));
        return out;
    };
    rig.script.when([f] { return onFileStep(f); }, "open fw",
                    [&] {
                        rootFolders = items(f->Dir1);
                        rig.selectText("Dir1", "   fw");
                        operatorDblClick(rig.form(), "Dir1");
                        fwFolders = items(f->Dir1);
                        fwFiles = items(f->File1);
                        rig.selectText("Dir1", "C:\\");
                        operatorDblClick(rig.form(), "Dir1");
                        throw ScenarioDone{};
                    });
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_THAT(rootFolders, ElementsAre("C:\\", "   fw"));
    EXPECT_THAT(fwFolders, ElementsAre("C:\\", "   fw", "      old"));
    EXPECT_THAT(fwFiles, ElementsAre("new.hex"));
    EXPECT_EQ(f->Dir1.path(), "C:\\");
    EXPECT_EQ(f->Dir1.listIndex(), 0);
    EXPECT_THAT(items(f->File1), ElementsAre("top.hex"));
}

TEST(WizardCommands, AFileClickMakesTheFullPathAndRemembersDriveFolderAndName) {
    ScenarioRig rig;
    EchoDevice device(k7E1);
    rig.serial.attach(1, device);
    rig.driveC.write("top.hex", "");
    rig.driveC.write("fw/new.hex", "");
    scriptModelAndPort(rig, 1, 1);
    Firmcast* f = &rig.form();
    std::string atRoot;
    rig.script.when([f] { return onFileStep(f); }, "a file at the root, then in fw",
                    [&] {
                        rig.selectText("File1", "top.hex");
                        atRoot = f->fichero_firmware;
                        rig.selectText("Dir1", "   fw");
                        operatorDblClick(rig.form(), "Dir1");
                        rig.selectText("File1", "new.hex");
                        throw ScenarioDone{};
                    });
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_EQ(atRoot, "C:\\top.hex");
    EXPECT_EQ(f->fichero_firmware, "C:\\fw\\new.hex");
    EXPECT_EQ(f->unidad_elegida, "c:");
    EXPECT_EQ(f->carpeta_elegida, "C:\\fw");
    EXPECT_EQ(f->fichero_elegido, "new.hex");
}

TEST(WizardCommands, NextOnStepZeroRestoresTheRememberedFileWhichAPictureClickForgets) {
    ScenarioRig rig;
    AcceptingScale scale(rig);
    rig.driveC.write("top.hex", kFirmware);
    rig.driveC.write("fw/new.hex", kFirmware);
    scriptModelAndPort(rig, 1, 1);
    Firmcast* f = &rig.form();
    rig.script.when([f] { return onFileStep(f); }, "load fw\\new.hex",
                    [&rig] {
                        rig.selectText("Dir1", "   fw");
                        operatorDblClick(rig.form(), "Dir1");
                        rig.selectText("File1", "new.hex");
                        rig.click("cmdAdelante");
                    });
    rig.script.when([f] { return f->cmdAgain.reachable(); }, "Again",
                    [&rig] { rig.click("cmdAgain"); });
    rig.script.when([f] { return onStepZero(f); }, "Next", [&rig] { rig.click("cmdAdelante"); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "Next",
                    [&rig] { rig.click("cmdAdelante"); });
    rig.script.when([f] { return onFileStep(f); }, "the file is there again; Back twice",
                    [&rig, f] {
                        EXPECT_EQ(f->Dir1.path(), "C:\\fw");
                        EXPECT_EQ(f->File1.fileName(), "new.hex");
                        rig.click("cmdAtras");
                    });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "Back",
                    [&rig] { rig.click("cmdAtras"); });
    rig.script.when([f] { return onStepZero(f); }, "the picture",
                    [&rig] { rig.click("Picture3"); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "Next",
                    [&rig] { rig.click("cmdAdelante"); });
    rig.stopWhen([f] { return onFileStep(f); }, "file step");
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_EQ(f->Dir1.path(), "C:\\");
    EXPECT_EQ(f->File1.listIndex(), -1);
}

// The display screen's database, which its load checks.
void makeDisplayDatabase(const TempFolder& home) {
    std::filesystem::create_directories(home.path() / "Database");
    sqlite3* db = nullptr;
    sqlite3_open((home.path() / "Database/KorvaFirmcast.mdb").c_str(), &db);
    sqlite3_exec(db,
                 "CREATE TABLE DAT_Parametro (Parametro TEXT, ValorParametro TEXT);"
                 "INSERT INTO DAT_Parametro VALUES ('VERSION', 'D');",
                 nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

TEST(WizardCommands, TheGraphicDisplayButtonOpensItsScreenAndBackReturnsToTheWayStep) {
    ScenarioRig rig;
    makeDisplayDatabase(rig.home);
    Firmcast* f = &rig.form();
    OperatorScript onDisplay(rig.pump);
    auto displayShown = [f] {
        return f->displayScreen() != nullptr && f->displayScreen()->loaded();
    };
    Screen* firstShown = nullptr;
    rig.script.when([f] { return onStepZero(f); }, "Serie_W", [&rig] { pickModel(rig, 0); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "the display loader",
                    [&rig] { rig.click("cmdDisplayGrafico"); });
    rig.script.after(100, "again", [&rig] { rig.click("cmdDisplayGrafico"); });
    rig.script.after(100, "look", [] { throw ScenarioDone{}; });
    onDisplay.when(displayShown, "the display screen", [f, &firstShown] {
        firstShown = f->displayScreen();
        EXPECT_EQ(firstShown->caption(), "Firmcast working on Ethernet ");
        EXPECT_EQ(f->paso_asistente, 1);
        operatorClick(*f->displayScreen(), "cmdAtras");
    });
    onDisplay.when(displayShown, "the same screen", [f, &firstShown] {
        EXPECT_EQ(f->displayScreen(), firstShown);
        operatorClick(*f->displayScreen(), "cmdAtras");
    });
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_TRUE(onDisplay.finished());
    EXPECT_EQ(f->paso_asistente, 1);
    EXPECT_TRUE(f->frPuerto.reachable());
    EXPECT_EQ(f->es_serie_w, kTrue);
}

TEST(WizardCommands, SaveConfigOnTheScaleListSavesIt) {
    ScenarioRig rig;
    // A list of one scale, kept without the port: saving adds it.
    rig.home.write("config.ini", "[Balanzas]\r\nNumero=1\r\n[Direcciones]\r\ndir1=10.0.0.1\r\n");
    auto saved = [&rig] {
        std::ifstream in(rig.home.path() / "config.ini", std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    };
    Firmcast* f = &rig.form();
    rig.script.when([f] { return onStepZero(f); }, "Serie_W", [&rig] { pickModel(rig, 0); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "Ethernet, Next",
                    [&rig] {
                        rig.click("optEthernet");
                        rig.click("cmdAdelante");
                    });
    rig.script.when([f] { return onFileStep(f); }, "Next", [&rig] { rig.click("cmdAdelante"); });
    rig.script.when([f] { return f->cmdSave.reachable(); }, "Save Config",
                    [&rig] { rig.click("cmdSave"); });
    rig.script.after(10, "look", [] { throw ScenarioDone{}; });
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_EQ(
        saved(),
        "[Balanzas]\r\nNumero=1\r\n[Direcciones]\r\ndir1=10.0.0.1\r\n[Puertos]\r\nTx=3000\r\n");
    EXPECT_EQ(f->paso_asistente, 3);
}

TEST(WizardCommands, TheStartAsksForTheAddressOfEveryScaleFirst) {
    ScenarioRig rig;
    Firmcast& f = rig.form();
    f.load();
    f.frBalanzasEth.setVisible(true);
    f.lista_balanzas = {"192.168.1.20", ""};
    std::string caption = f.caption();
    f.Command2_Click();
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "You must introduce the Ip Address for every Scale.");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, 48);
    EXPECT_TRUE(f.cmbbalanza.hasFocus());
    EXPECT_EQ(f.caption(), caption);
    EXPECT_FALSE(f.Tiempo1.enabled());
    EXPECT_EQ(f.animando, kFalse);
}

TEST(WizardCommands, Acaba2ClearsTheAnimationAndTheWaitFlagsAcabaDoesNot) {
    ScenarioRig rig;
    Firmcast& f = rig.form();
    rig.driveC.write("fw.hex", kFirmware);
    auto dirty = [&] {
        rig.files.open(1, (rig.driveC.path() / "fw.hex").string(), FileTable::Mode::Input);
        f.Tiempo1.setInterval(600);
        f.Tiempo1.setEnabled(true);
        f.indice_dibujo = 5;
        f.estado_lector = 2;
        f.tiempo_agotado = kTrue;
        f.animando = kTrue;
    };
    dirty();
    f.acaba();
    EXPECT_FALSE(rig.files.isOpen(1));
    EXPECT_FALSE(f.Tiempo1.enabled());
    EXPECT_EQ(f.indice_dibujo, 5);
    EXPECT_EQ(f.animando, kTrue);
    dirty();
    f.acaba2();
    EXPECT_FALSE(rig.files.isOpen(1));
    EXPECT_FALSE(f.Tiempo1.enabled());
    EXPECT_EQ(f.indice_dibujo, 0);
    EXPECT_EQ(f.estado_lector, 0);
    EXPECT_EQ(f.tiempo_agotado, kFalse);
    EXPECT_EQ(f.animando, kFalse);
}

}  // namespace
}  // namespace fc::test
