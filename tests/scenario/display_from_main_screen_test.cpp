// The display screen as the operator reaches it: from the main screen's way
// step of the first scale, shown modally, loaded, and left by Exit.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "sim/korvacom_on_pump.h"
#include "support/display_rig.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

void prepareHome(const TempFolder& home) {
    home.write("korvacom/Korctrl.txt", kSwitchesShipped);
    std::filesystem::create_directories(home.path() / "Database");
    sqlite3* db = nullptr;
    sqlite3_open((home.path() / "Database/KorvaFirmcast.mdb").c_str(), &db);
    sqlite3_exec(db,
                 "CREATE TABLE DAT_Parametro (Parametro TEXT, ValorParametro TEXT);"
                 "INSERT INTO DAT_Parametro VALUES ('VERSION', '0');",
                 nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

TEST(DisplayFromMainScreen, CmdDisplayGraficoOpensTheScreenModallyAndItsExitEndsTheProgram) {
    ScenarioRig rig;
    prepareHome(rig.home);
    rig.driveC.write("disp.hex", displayFirmware(30));
    sim::KorvacomOnPump driver(rig.pump, rig.kernel, rig.home.path() / "korvacom");
    rig.hooks.startProgram = [&driver](const std::string&) -> long {
        driver.launch();
        return 77;
    };
    Firmcast& main = rig.form();
    rig.script.when([&main] { return main.cmdAdelante.reachable() && main.paso_asistente == 0; },
                    "pick the first scale",
                    [&] {
                        rig.click("optBalanzas");
                        operatorClick(main, main.pictureOf(0).name());
                    });
    rig.script.when([&main] { return main.cmdDisplayGrafico.reachable(); }, "open the display",
                    [&] { rig.click("cmdDisplayGrafico"); });
    // The hands on the modal screen: a script of their own, since the main
    // script's step that opened it is still acting.
    OperatorScript onDisplay(rig.pump);
    onDisplay.when([&main] { return main.displayScreen() && main.displayScreen()->loaded(); },
                   "load the display",
                   [&main] {
                       frmCargaDisplayGrafico& d = *main.displayScreen();
                       operatorSelectText(d, "File1", "disp.hex");
                       d.txtDirTCP.setText("10.0.0.7");
                       operatorClick(d, "cmdAdelante");
                   });
    onDisplay.when([&main] { return main.displayScreen()->Label2.caption() == "Loaded OK"; },
                   "Exit", [&main] { operatorClick(*main.displayScreen(), "FIN"); });
    int status = -2;
    try {
        status = rig.run();
    } catch (const std::exception& e) {
        ADD_FAILURE() << e.what() << " after " << ::testing::PrintToString(rig.script.done());
    }
    EXPECT_EQ(status, 0) << ::testing::PrintToString(rig.script.done());
    EXPECT_EQ(main.paso_asistente, 1);
    EXPECT_EQ(main.displayScreen()->Label2.caption(), "Loaded OK");
    EXPECT_FALSE(driver.running());
    EXPECT_FALSE(driver.holdsEvent());
    EXPECT_EQ(driver.driver().commandsTaken(), "sSRsSG");
}

}  // namespace
}  // namespace fc::test
