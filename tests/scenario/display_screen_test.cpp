// The display's load screen: its lists and defaults, the way, the address
// check, the stop and a load after it.
#include <gtest/gtest.h>

#include "support/display_rig.h"

namespace fc::test {
namespace {

TEST(DisplayScreen, TheListsAndTheirDefaultsAfterTheLoad) {
    DisplayRig rig;
    frmCargaDisplayGrafico& f = *rig.form;
    const char* speeds[] = {"115200", "57600", "38400", "28800", "19200",
                            "14400",  "9600",  "2400",  "1200"};
    ASSERT_EQ(f.cmbvelocidades.listCount(), 9);
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(f.cmbvelocidades.list(i), speeds[i]);
        EXPECT_EQ(f.cmbvelocidades.itemData(i), i);
    }
    EXPECT_EQ(f.cmbvelocidades.text(), "19200");
    ASSERT_EQ(f.nbits.listCount(), 2);
    EXPECT_EQ(f.nbits.text(), "8");
    ASSERT_EQ(f.cboParidad.listCount(), 6);
    EXPECT_EQ(f.cboParidad.list(1), "Even");
    EXPECT_EQ(f.cboParidad.list(5), "Space");
    EXPECT_EQ(f.cboParidad.listIndex(), 0);
    EXPECT_EQ(f.TxtPort.text(), "3000");
    EXPECT_EQ(f.TxtPortRX.text(), "3001");
    EXPECT_TRUE(f.optEthernet.value());
    EXPECT_FALSE(f.optrs232.value());
    EXPECT_FALSE(f.frComParameters.visible());
    EXPECT_TRUE(f.frEthParameters.visible());
    EXPECT_FALSE(f.frInfoComunicacion.visible());
    EXPECT_FALSE(f.Texto.visible());
    EXPECT_EQ(f.caption(), "Firmcast working on Ethernet ");
    EXPECT_EQ(f.common().base_recursos, 3000);
    EXPECT_EQ(f.nivel, 0);
    EXPECT_EQ(f.tabla_crc[1], 0x1021);
    EXPECT_TRUE(rig.boxes().empty());
}

TEST(DisplayScreen, Address00IsTheDefaultLogicalAddressAnd49TheHighest) {
    DisplayRig rig;
    ComboBox& dir = rig.form->cmbDirLogica;
    ASSERT_EQ(dir.listCount(), 50);
    EXPECT_EQ(dir.text(), "00");
    EXPECT_EQ(dir.list(7), "07");
    EXPECT_EQ(dir.list(49), "49");
}

TEST(DisplayScreen, SelectingRs232ForTheFirstTimeSelectsCom1) {
    DisplayRig rig;
    operatorClick(*rig.form, "optrs232");
    EXPECT_EQ(rig.form->puerto_com, 1);
    EXPECT_TRUE(rig.form->Option1.value());
    EXPECT_FALSE(rig.form->Option2.value());
    EXPECT_TRUE(rig.form->frComParameters.visible());
    EXPECT_FALSE(rig.form->frEthParameters.visible());
    EXPECT_EQ(rig.form->caption(), "Firmcast working on port COM1 ");
    EXPECT_TRUE(rig.boxes().empty());
    operatorClick(*rig.form, "Option3");
    operatorClick(*rig.form, "optEthernet");
    EXPECT_FALSE(rig.form->Option3.enabled());
    operatorClick(*rig.form, "optrs232");
    EXPECT_EQ(rig.form->puerto_com, 3) << "a port once chosen stays";
}

TEST(DisplayScreen, AnInvalidAddressStopsCmdAdelanteBeforeAnythingIsDisabled) {
    DisplayRig rig;
    rig.chooseFirmware("disp.hex", displayFirmware(4));
    rig.chooseEthernet("192.168.1");
    rig.load();
    EXPECT_EQ(rig.boxes(), std::vector<std::string>{"The IP Address is not a valid one"});
    EXPECT_TRUE(rig.form->txtDirTCP.hasFocus());
    EXPECT_TRUE(rig.form->cmdAdelante.enabled());
    EXPECT_TRUE(rig.form->Frame2.enabled());
    EXPECT_TRUE(rig.form->File1.enabled());
    EXPECT_FALSE(rig.form->CmdStop.visible());
    EXPECT_TRUE(rig.started.empty());
}

TEST(DisplayScreen, OnSerialTheAddressIsNotLookedAt) {
    DisplayRig rig;
    rig.chooseFirmware("disp.hex", displayFirmware(4));
    rig.form->txtDirTCP.setText("not an address");
    rig.chooseSerial(1);
    rig.load();
    EXPECT_TRUE(rig.boxes().empty());
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded OK");
}

TEST(DisplayScreen, EnterInTheAddressBoxChecksIt) {
    DisplayRig rig;
    rig.form->txtDirTCP.setText("1.2.3.");
    operatorKey(*rig.form, "txtDirTCP", 13);
    EXPECT_EQ(rig.boxes(), std::vector<std::string>{"The IP Address is not a valid one"});
    rig.form->txtDirTCP.setText("1.2.3.4");
    operatorKey(*rig.form, "txtDirTCP", 13);
    EXPECT_EQ(rig.boxes().size(), 1u);
}

TEST(DisplayScreen, AfterCmdStopANewCmdAdelanteWorksWithoutLeavingTheScreen) {
    DisplayRig rig;
    rig.chooseFirmware("disp.hex", displayFirmware(250));
    rig.chooseEthernet();
    frmCargaDisplayGrafico* f = rig.form.get();
    rig.script.when([f] { return f->Label2.caption() == "Loading program"; }, "stop",
                    [f] { operatorClick(*f, "CmdStop"); });
    rig.load();
    EXPECT_EQ(rig.driver->driver().commandsTaken().back(), 'G');
    EXPECT_FALSE(rig.driver->running());
    EXPECT_NE(std::find(rig.label2.begin(), rig.label2.end(), "Firmcast cancelled by user"),
              rig.label2.end());
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded KO. ERROR");
    EXPECT_TRUE(rig.form->cmdAdelante.enabled());
    EXPECT_FALSE(rig.form->CmdStop.visible());
    rig.load();
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded OK");
    EXPECT_EQ(rig.driver->launches(), 2);
    EXPECT_FALSE(rig.driver->running());
    EXPECT_TRUE(rig.boxes().empty());
}

TEST(DisplayScreen, CmdAtrasHidesTheScreenAndKeepsItsState) {
    DisplayRig rig;
    operatorClick(*rig.form, "optrs232");
    operatorClick(*rig.form, "cmdAtras");
    EXPECT_FALSE(rig.form->loaded());
    EXPECT_EQ(rig.form->puerto_com, 1);
}

TEST(DisplayScreen, ClosingTheWindowEndsTheWholeProgram) {
    DisplayRig rig;
    try {
        rig.form->unload();
        FAIL() << "the program did not end";
    } catch (const ProgramEnd& end) {
        EXPECT_EQ(end.exitStatus, 0);
    }
    EXPECT_EQ(rig.form->mousePointer(), 1);
    EXPECT_EQ(rig.read(rig.korvacom("ctrl.txt")), "G\r\n");
}

TEST(DisplayScreen, AMissingDatabaseIsReportedByAbrirBD) {
    DisplayRig rig;
    std::filesystem::remove_all(rig.home.path() / "Database");
    frmCargaDisplayGrafico other(rig.services, rig.common, {});
    other.Form_Load();
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "AbrirBD");
    EXPECT_EQ(other.bd, nullptr);
}

TEST(DisplayScreen, TheFolderListOpensAFolderOnADoubleClickAndGoesBackUp) {
    DisplayRig rig;
    rig.driveC.write("Displays/W420/disp.hex", displayFirmware(2));
    rig.form->Dir1.setPath("C:\\");
    rig.form->Dir1_Change();
    ComboBox& dir = rig.form->Dir1;
    ASSERT_EQ(dir.list(1), "   Displays");
    operatorSelect(*rig.form, "Dir1", 1);
    operatorDblClick(*rig.form, "Dir1");
    EXPECT_EQ(rig.form->Dir1.path(), "C:\\Displays");
    ASSERT_EQ(dir.list(2), "   W420");
    operatorSelect(*rig.form, "Dir1", 2);
    operatorDblClick(*rig.form, "Dir1");
    EXPECT_EQ(rig.form->File1.list(0), "disp.hex");
    operatorSelectText(*rig.form, "File1", "disp.hex");
    EXPECT_EQ(rig.form->fichero_firmware, "C:\\Displays\\W420\\disp.hex");
    operatorSelect(*rig.form, "Dir1", 1);
    operatorDblClick(*rig.form, "Dir1");
    EXPECT_EQ(rig.form->Dir1.path(), "C:\\Displays");
}

TEST(DisplayScreen, ADoubleClickOnAFileNamesItInTheCaptionAndDoesNotLoad) {
    DisplayRig rig;
    rig.chooseFirmware("disp.hex", displayFirmware(2));
    const std::string before = rig.form->caption();
    operatorDblClick(*rig.form, "File1");
    EXPECT_EQ(rig.form->caption(), before + "     disp.hex");
    EXPECT_TRUE(rig.form->Texto.visible());
    EXPECT_EQ(rig.form->Texto.caption(), " ");
    EXPECT_EQ(rig.form->fichero_firmware, "C:\\disp.hex");
    EXPECT_TRUE(rig.started.empty());
}

}  // namespace
}  // namespace fc::test
