// The visor screen's own behaviour: how it opens, the choice of the way,
// the serial line's opening, the file kept in memory, the refusals before a
// load, the error handler of the load button, and Back, Exit and closing.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/dialogs.h"
#include "platform/runtime_error.h"
#include "support/intel_hex.h"
#include "support/visor_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class VisorScreen : public ::testing::Test {
  protected:
    std::vector<std::string> goodFile() { return VisorRig::imageFile(0, patternBytes(6, 40)); }

    VisorRig v;
    frmCargaMV510& s = *v.screen;
};

TEST_F(VisorScreen, ItOpensOnRs232WithTheSpeedListAndTheVisorsUdpPort) {
    std::vector<std::string> speeds;
    for (int i = 0; i < s.cmbvelocidades.listCount(); ++i)
        speeds.push_back(s.cmbvelocidades.list(i));
    EXPECT_THAT(speeds, ElementsAre("115200", "57600", "38400", "28800", "19200", "14400", "9600",
                                    "2400", "1200"));
    EXPECT_EQ(s.cmbvelocidades.listIndex(), 0);
    EXPECT_EQ(s.TxtPort.text(), "3000");
    EXPECT_TRUE(s.optrs232.value());
    EXPECT_EQ(s.tipo_conexion, 1);
    EXPECT_FALSE(s.Barra.visible());
    EXPECT_FALSE(s.Texto.visible());
    EXPECT_FALSE(s.CmdStop.visible());
    EXPECT_EQ(s.Frame1.caption(), "Serial port selection");
    EXPECT_EQ(s.Option3.caption(), "COM 3");
    EXPECT_EQ(s.frComParameters.caption(), "Serial Parameters");
    EXPECT_EQ(s.frEthParameters.caption(), "Ethernet Parameters");
    EXPECT_TRUE(s.loaded());
    EXPECT_THAT(v.boxes(), IsEmpty());
}

TEST_F(VisorScreen, ChoosingEthernetTakesThePortsOutOfUseAndShowsItsParameters) {
    s.optEthernet.setValue(true);
    EXPECT_EQ(s.tipo_conexion, 0);
    EXPECT_FALSE(s.Frame1.enabled());
    EXPECT_FALSE(s.Option1.enabled());
    EXPECT_TRUE(s.frEthParameters.visible());
    EXPECT_FALSE(s.frComParameters.visible());
    EXPECT_EQ(s.caption(), "Firmcast working on Ethernet ");
    s.Option2.setValue(true);
    s.optrs232.setValue(true);
    EXPECT_EQ(s.tipo_conexion, 1);
    EXPECT_TRUE(s.Frame1.enabled());
    EXPECT_FALSE(s.frEthParameters.visible());
    EXPECT_EQ(s.caption(), "Firmcast working on port COM2 ");
}

TEST_F(VisorScreen, TheSerialLineOpensAfterAOneSecondPauseAndLeavesDtrLow) {
    const auto before = v.rig.pump.now();
    v.useSerial(1, "9600");
    EXPECT_EQ(v.rig.pump.now() - before, 1000);
    EXPECT_FALSE(s.Linea.dtrEnable());
    EXPECT_TRUE(s.Linea.portOpen());
    EXPECT_EQ(s.Linea.settings(), "9600,N,8,1");
    EXPECT_EQ(s.caption(), "Firmcast working on port COM1 ");
}

TEST_F(VisorScreen, ALoadAt9600TakesTheSlowerLine) {
    v.chooseFile("visor.hex", goodFile());
    v.useSerial(1, "9600");
    v.visor.setSettings(LineSettings{9600, 'N', 8, 1});
    v.load();
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
}

TEST_F(VisorScreen, AVisorAtAnotherSpeedIsNeverHeardAndTheScreenWaitsForIt) {
    v.chooseFile("visor.hex", goodFile());
    v.useSerial(1, "57600");
    v.rig.script.at(30'000, "Stop", [&] { s.CmdStop.click(); });
    v.load();
    EXPECT_EQ(s.Label2.caption(), "Firmcast cancelled by user");
    EXPECT_EQ(VisorRig::syncTimes(v.serialLoader()).size(), 0u);
}

TEST_F(VisorScreen, WithNoPortChosenTheLoadSaysSoAndGoesOnRegardless) {
    v.chooseFile("visor.hex", goodFile());
    // The line, never set up, opens on its first port with its first
    // settings, 9600,N,8,1: a visor there at that speed is loaded.
    v.visor.setSettings(LineSettings{9600, 'N', 8, 1});
    v.load();
    EXPECT_THAT(v.boxes(), ElementsAre("You must select one Serial Port"));
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
}

TEST_F(VisorScreen, APortThatWillNotOpenIsNamedAndTheLoadEndsInFirmcastError) {
    v.chooseFile("visor.hex", goodFile());
    v.useSerial(2);
    EXPECT_THAT(v.boxes(), ElementsAre("Error at port COM2"));
    v.load();
    EXPECT_THAT(v.boxes(), ElementsAre("Error at port COM2", "Error at port COM2",
                                       "8002 Invalid port number"));
    const ShownBox& last = v.rig.dialogs.boxes().back();
    EXPECT_EQ(last.style, mb::kCritical);
    EXPECT_EQ(last.title, "Firmcast");
    EXPECT_EQ(s.Label2.caption(), "Firmcast Error");
    EXPECT_FALSE(s.Barra.visible());
    EXPECT_TRUE(s.cmdAdelante.enabled());
    EXPECT_TRUE(s.File1.enabled());
    EXPECT_FALSE(s.CmdStop.visible());
}

TEST_F(VisorScreen, ABadAddressIsRefusedAndNothingIsSent) {
    v.chooseFile("visor.hex", goodFile());
    v.useUdp("10.77.0");
    v.load();
    EXPECT_THAT(v.boxes(), ElementsAre("The IP Address is not a valid one"));
    EXPECT_TRUE(s.txtDirTCP.hasFocus());
    EXPECT_TRUE(v.udpLoader().heard().empty());
    EXPECT_TRUE(s.cmdAdelante.enabled());
}

TEST_F(VisorScreen, AUdpPortThatIsNotANumberIsARunTimeErrorCaughtByTheLoadButton) {
    v.chooseFile("visor.hex", goodFile());
    v.useUdp(kVisorIp, "30x0");
    v.load();
    EXPECT_THAT(v.boxes(), ElementsAre("13 Type mismatch"));
    EXPECT_EQ(v.rig.dialogs.boxes().back().title, "Firmcast");
    EXPECT_EQ(v.rig.dialogs.boxes().back().style, mb::kCritical);
    EXPECT_EQ(s.Label2.caption(), "Firmcast Error");
    EXPECT_FALSE(s.Barra.visible());
    EXPECT_TRUE(s.cmdAdelante.enabled());
    EXPECT_TRUE(s.cmdAtras.enabled());
    EXPECT_FALSE(s.CmdStop.visible());
}

TEST_F(VisorScreen, TwoLoadsOfTheSameFileReadItOnce) {
    v.chooseFile("visor.hex", goodFile());
    v.useSerial();
    v.load();
    ASSERT_EQ(s.Label2.caption(), "Firmcast OK");
    std::filesystem::remove(v.rig.driveC.path() / "visor.hex");
    std::vector<std::string> label2;
    s.Label2.addObserver([&](Control& c) { label2.push_back(c.caption()); });
    v.load();
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
    EXPECT_EQ(std::count(label2.begin(), label2.end(), "Loading file in memory"), 0);
    EXPECT_EQ(v.serialLoader().erases(), 2);
}

TEST_F(VisorScreen, ABadFileIsRefusedAndTheOldFileThenReusesTheSpoiltImage) {
    v.chooseFile("a.hex", goodFile());
    const std::string a = s.fichero_firmware;
    v.useSerial();
    v.load();
    ASSERT_EQ(s.Label2.caption(), "Firmcast OK");
    std::vector<std::string> bad = {intelRecord(0, 0, {0x99, 0x98}), ":0300000001"};
    v.chooseFile("b.hex", bad);
    v.load();
    EXPECT_THAT(v.boxes(), ElementsAre("Corrupted file, bad checksum", "File not valid"));
    EXPECT_EQ(v.rig.dialogs.boxes().back().style, mb::kCritical);
    EXPECT_EQ(s.fichero_en_memoria, a);
    EXPECT_FALSE(s.Label2.visible());
    EXPECT_FALSE(s.Linea.portOpen());
    v.chooseFile("a.hex", goodFile());
    v.load();
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
    EXPECT_EQ(v.serialLoader().flash()[0], 0x99) << "b's first record, over a's image";
    EXPECT_EQ(v.serialLoader().flash()[2], 0xFF) << "the rest of a's image was wiped";
}

TEST_F(VisorScreen, NoFileChosenIsAFileWithNoNameThatIsNotValid) {
    v.useSerial();
    v.load();
    EXPECT_THAT(v.boxes(), ElementsAre("File  not valid"));
    EXPECT_FALSE(s.Label2.visible());
    EXPECT_FALSE(s.Barra.visible());
    EXPECT_FALSE(s.Texto.visible());
    EXPECT_TRUE(v.serialLoader().heard().empty());
}

TEST_F(VisorScreen, TheFileListPicksTheFirstFileAndADoubleClickNamesItInTheTitle) {
    v.rig.driveC.write("first.hex", hexFile(goodFile()));
    v.screen = nullptr;
    frmCargaMV510 other(v.rig.servicesWith(v.rig.serial), &v.net);
    other.Form_Load("0", 3);
    EXPECT_EQ(other.fichero_firmware, "C:\\first.hex");
    EXPECT_TRUE(other.Option3.value());
    EXPECT_EQ(other.puerto_com, 3);
    other.File1.dblClick();
    EXPECT_EQ(other.caption(), "first.hex");
    EXPECT_TRUE(other.Texto.visible());
    EXPECT_EQ(other.Texto.caption(), " ");
}

TEST_F(VisorScreen, BackClosesTheLineAndHidesTheScreenWithoutEndingTheProgram) {
    v.useSerial();
    ASSERT_TRUE(s.Linea.portOpen());
    EXPECT_NO_THROW(s.cmdAtras.click());
    EXPECT_FALSE(s.Linea.portOpen());
    EXPECT_FALSE(s.loaded());
}

TEST_F(VisorScreen, ExitEndsTheProgram) {
    v.useSerial();
    EXPECT_THROW(s.FIN.click(), ProgramEnd);
    EXPECT_FALSE(s.Linea.portOpen());
}

TEST_F(VisorScreen, ClosingTheWindowEndsTheProgramWithTheArrowPointer) {
    EXPECT_THROW(s.unload(), ProgramEnd);
    EXPECT_EQ(s.mousePointer(), 1);
}

TEST_F(VisorScreen, ALevelAboveThreeIsRefusedAndClosingTheScreenEndsTheProgram) {
    frmCargaMV510 other(v.rig.servicesWith(v.rig.serial), &v.net);
    EXPECT_THROW(other.Form_Load("4", 0), ProgramEnd);
    EXPECT_THAT(v.boxes(), ElementsAre("The parameter is not valid."));
}

TEST(VisorScreenLevel, AtLevel1TheFilesComeFromTheWorkshopFolderOnT) {
    TempFolder t;
    t.write("Programas/Industrial/Visores/MV-510/v.hex", ":00000001FF\r\n");
    VisorRig v([&](ScenarioRig& r) { r.addDrive('T', t.path()); }, "1");
    EXPECT_EQ(v.screen->nivel, 1);
    EXPECT_EQ(v.screen->Drive1.drive(), "t:");
    EXPECT_EQ(v.screen->fichero_firmware, "T:\\Programas\\Industrial\\Visores\\MV-510\\v.hex");
}

TEST_F(VisorScreen, TheFolderListShowsTheSubFoldersAndADoubleClickOpensOne) {
    v.rig.driveC.write("visores/mv510.hex", hexFile(goodFile()));
    s.Drive1_Change();
    int line = -1;
    for (int i = 0; i < s.Dir1.listCount(); ++i) {
        if (s.Dir1.list(i) == "   visores")
            line = i;
    }
    ASSERT_GE(line, 0);
    s.Dir1.setListIndex(line);
    s.Dir1.dblClick();
    EXPECT_EQ(s.Dir1.path(), "C:\\visores");
    ASSERT_EQ(s.File1.listCount(), 1);
    EXPECT_EQ(s.File1.list(0), "mv510.hex");
    std::vector<std::string> drives;
    for (int i = 0; i < s.Drive1.listCount(); ++i) drives.push_back(s.Drive1.list(i));
    EXPECT_THAT(drives, ::testing::Contains("c:"));
}

TEST(VisorScreenLevel, AtLevel1WithoutTheWorkshopFolderTheListStartsAtTheRootOfT) {
    TempFolder t;
    t.write("root.hex", ":00000001FF\r\n");
    VisorRig v([&](ScenarioRig& r) { r.addDrive('T', t.path()); }, "1");
    EXPECT_EQ(v.screen->Dir1.path(), "T:\\");
    EXPECT_EQ(v.screen->fichero_firmware, "T:\\root.hex");
}

}  // namespace
}  // namespace fc::test
