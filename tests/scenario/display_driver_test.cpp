// The communications driver's control on the virtual clock: the switch file,
// the stale files, and the commands of the stop and the exit.
#include <gtest/gtest.h>

#include "support/display_rig.h"
#include "support/pump_until.h"

namespace fc::test {
namespace {

TEST(DisplayDriverControl, OnEthernetEverySwitchTheScreenKnowsIsRewrittenAndTheRestKept) {
    DisplayRig rig;
    rig.chooseEthernet("192.168.1.10");
    rig.form->ConfiguraKorvacom();
    EXPECT_EQ(rig.read(rig.korvacom("Korctrl.txt")),
              "-v 19200\r\n-p COM0\r\n-b 8\r\n-t TX.TXT\r\n-r RX.TXT\r\n-a 0\r\n-e 0\r\n-m 1\r\n"
              "-d 00#192.168.1.10:3000\r\n-E 1\r\n-j 3001,3000\r\n-k 5\r\n-A 1\r\n-x keep\r\n");
    EXPECT_FALSE(std::filesystem::exists(rig.korvacom("Temp.txt")));
}

TEST(DisplayDriverControl, ASwitchFileWithoutEAndDLinesGainsBothAtItsEndInThatOrder) {
    DisplayRig rig;
    rig.home.write("korvacom/Korctrl.txt", "-v 9600\r\n-m 1\r\n");
    rig.chooseSerial(2);
    rig.form->ConfiguraKorvacom();
    EXPECT_EQ(rig.read(rig.korvacom("Korctrl.txt")), "-v 19200\r\n-m 0\r\n-E 1\r\n-d 00#:3000\r\n");
}

TEST(DisplayDriverControl, OnSerialTheDAndJLinesStayAsTheyWereFound) {
    DisplayRig rig;
    rig.chooseSerial(3);
    rig.form->txtDirTCP.setText("10.9.9.9");
    rig.form->ConfiguraKorvacom();
    EXPECT_EQ(rig.read(rig.korvacom("Korctrl.txt")),
              "-v 19200\r\n-p COM3\r\n-b 8\r\n-t TX.TXT\r\n-r RX.TXT\r\n-a 0\r\n-e 0\r\n-m 0\r\n"
              "-d 00#10.0.0.1:3000\r\n-E 1\r\n-j 3001,3000\r\n-k 5\r\n-A 1\r\n-x keep\r\n");
}

TEST(DisplayDriverControl, TheSwitchFileIsFoundWithoutRegardToCase) {
    DisplayRig rig;
    std::filesystem::remove(rig.korvacom("Korctrl.txt"));
    rig.home.write("korvacom/KORCTRL.TXT", "-b 7\r\n");
    rig.chooseEthernet();
    rig.form->ConfiguraKorvacom();
    EXPECT_EQ(rig.read(rig.korvacom("KORCTRL.TXT")), "-b 8\r\n-E 1\r\n-d 00#192.168.1.10:3000\r\n");
    EXPECT_FALSE(std::filesystem::exists(rig.korvacom("Korctrl.txt")));
}

TEST(DisplayDriverControl, TheSwitchFileIsCopiedInAfterA20MsPauseTheDriverCanCutShort) {
    DisplayRig rig;
    rig.chooseEthernet();
    const auto before = rig.pump.now();
    rig.form->ConfiguraKorvacom();
    EXPECT_EQ(rig.pump.now() - before, 20) << "nobody signalled the event";
}

TEST(DisplayDriverControl, TheHourglassShowsWhileTheDriverComesUp) {
    DisplayRig rig;
    std::vector<int> pointers;
    rig.form->addObserver([&pointers](Screen& s) {
        if (pointers.empty() || pointers.back() != s.mousePointer())
            pointers.push_back(s.mousePointer());
    });
    rig.chooseFirmware("disp.hex", displayFirmware(4));
    rig.chooseEthernet();
    rig.load();
    EXPECT_EQ(pointers, (std::vector<int>{0, 11, 0}));
}

TEST(DisplayDriverControl, RxTxtFromAnEarlierRunIsRemovedByConfiguraKorvacom) {
    DisplayRig rig;
    rig.home.write("korvacom/RX.TXT", "00P0000000000SI123456\r\n");
    rig.chooseEthernet();
    rig.form->ConfiguraKorvacom();
    EXPECT_FALSE(std::filesystem::exists(rig.korvacom("RX.TXT")));
}

TEST(DisplayDriverControl, AMissingSwitchFileIsARunTimeErrorOfTheLoad) {
    DisplayRig rig;
    std::filesystem::remove(rig.korvacom("Korctrl.txt"));
    rig.chooseEthernet();
    try {
        rig.form->ConfiguraKorvacom();
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 53);
    }
}

TEST(DisplayDriverControl, AStaleCtrlTxtIsRemovedBeforeTheDriverStarts) {
    DisplayRig rig;
    rig.home.write("korvacom/ctrl.txt", "G\r\n");
    rig.chooseFirmware("disp.hex", displayFirmware(20));
    rig.chooseEthernet();
    rig.load();
    ASSERT_EQ(rig.ctrlAtStart.size(), 1u);
    EXPECT_FALSE(rig.ctrlAtStart[0]);
    EXPECT_EQ(rig.driver->driver().commandsTaken(), "sSRsSG");
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded OK");
}

TEST(DisplayDriverControl, TheDriverIsStartedFromItsFolderAsKorvacomExe) {
    DisplayRig rig;
    rig.chooseFirmware("disp.hex", displayFirmware(4));
    rig.chooseEthernet();
    rig.load();
    ASSERT_EQ(rig.started.size(), 1u);
    EXPECT_EQ(rig.started[0], rig.home.path().string() + "\\korvacom\\korvacom.exe");
}

TEST(DisplayDriverControl, FinSendsGAndDoesNotWaitForItsRemoval) {
    DisplayRig rig(sim::DriverFaults{.neverAnswers = true});
    rig.driver->launch();
    rig.pump.sleep(2000);
    const auto before = rig.pump.now();
    try {
        operatorClick(*rig.form, "FIN");
        FAIL() << "the program did not end";
    } catch (const ProgramEnd& end) {
        EXPECT_EQ(end.exitStatus, 0);
    }
    EXPECT_EQ(rig.pump.now(), before);
    EXPECT_EQ(rig.read(rig.korvacom("ctrl.txt")), "G\r\n");
}

TEST(DisplayDriverControl, CmdStopWaitsUpToFiveSecondsForTheDriverToTakeG) {
    DisplayRig rig(sim::DriverFaults{.neverAnswers = true});
    rig.driver->launch();
    rig.pump.sleep(2000);
    rig.form->CmdStop.setVisible(true);
    const auto before = rig.pump.now();
    operatorClick(*rig.form, "CmdStop");
    const auto waited = rig.pump.now() - before;
    EXPECT_GE(waited, 5000);
    EXPECT_LE(waited, 5001);
    EXPECT_EQ(rig.read(rig.korvacom("ctrl.txt")), "G\r\n");
    EXPECT_EQ(rig.form->Label2.caption(), "Firmcast cancelled by user");
    EXPECT_TRUE(rig.form->Label2.visible());
    EXPECT_FALSE(rig.form->CmdStop.visible());
    EXPECT_FALSE(rig.form->Barra.visible());
    EXPECT_FALSE(rig.form->Texto.visible());
}

TEST(DisplayDriverControl, CmdStopEndsADriverThatTakesGWithoutWaitingTheFiveSeconds) {
    DisplayRig rig;
    rig.driver->launch();
    rig.pump.sleep(2000);
    ASSERT_TRUE(rig.driver->holdsEvent());
    rig.form->CmdStop.setVisible(true);
    const auto before = rig.pump.now();
    operatorClick(*rig.form, "CmdStop");
    EXPECT_LT(rig.pump.now() - before, 1000);
    EXPECT_FALSE(rig.driver->running());
    EXPECT_FALSE(rig.driver->holdsEvent());
    EXPECT_FALSE(std::filesystem::exists(rig.korvacom("ctrl.txt")));
}

TEST(DisplayDriverControl, ACommandTheDriverNeverTakesJustRunsOut) {
    DisplayRig rig(sim::DriverFaults{.neverAnswers = true});
    const auto before = rig.pump.now();
    rig.form->Parar();
    EXPECT_GE(rig.pump.now() - before, 5000);
    EXPECT_TRUE(rig.boxes().empty());
    EXPECT_EQ(rig.read(rig.korvacom("ctrl.txt")), "S\r\n");
    Integer none = 0;
    const auto again = rig.pump.now();
    rig.form->EsperarFinComando(none);
    EXPECT_EQ(rig.pump.now(), again);
}

TEST(DisplayDriverControl, ADriverThatNeverAnswersEndsTheLoadWithNoComunication) {
    DisplayRig rig(sim::DriverFaults{.neverAnswers = true});
    rig.chooseFirmware("disp.hex", displayFirmware(10));
    rig.chooseEthernet();
    rig.load();
    EXPECT_EQ(rig.form->Texto.caption(), "ERROR. No comunication ");
    EXPECT_EQ(rig.form->Label2.caption(), "Sending start");
    EXPECT_TRUE(rig.boxes().empty());
    EXPECT_TRUE(rig.form->cmdAdelante.enabled());
    EXPECT_FALSE(rig.form->CmdStop.visible());
}

TEST(DisplayDriverControl, ARunTimeErrorWritingACommandIsReportedUnderItsName) {
    DisplayRig rig;
    std::filesystem::remove_all(rig.home.path() / "korvacom");
    rig.form->Start();
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "MenBorradoVentas");
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "76 - Path not found");
    Integer tics = 5;
    rig.form->CerrarKorvaCOM(tics);
    ASSERT_EQ(rig.dialogs.boxes().size(), 2u);
    EXPECT_EQ(rig.dialogs.boxes()[1].title, "Parar");
    EXPECT_FALSE(rig.files.isOpen(1));
}

}  // namespace
}  // namespace fc::test
