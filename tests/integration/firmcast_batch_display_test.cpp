// firmcast-batch --display: a graphic display loaded from its own screen by
// the headless program, through the Linux driver of a prepared program's
// folder, to firmcast-sim's display on a pty; its command line and its
// exact ending, "label: <text>" and the exit status.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "support/display_rig.h"
#include "support/first_line_process.h"
#include "tests/integration/batch_run.h"

namespace fc::test {
namespace {

const std::string kBin = FIRMCAST_BIN_DIR;
const std::string kScripts = FIRMCAST_SCRIPTS_DIR;

struct PreparedHome {
    PreparedHome() {
        std::string command = "FIRMCAST_HOME=" + home.path().string() + " bash " + kScripts +
                              "/prepare-home.sh " + kBin + " >/dev/null 2>&1";
        prepared = std::system(command.c_str()) == 0;
        file = firmware.write("disp.hex", displayFirmware(30));
    }
    TempFolder home;
    TempFolder firmware;
    std::string file;
    bool prepared = false;
};

TEST(FirmcastBatchDisplay, LoadsADisplayOnASerialPortAndSaysLoadedOk) {
    PreparedHome h;
    ASSERT_TRUE(h.prepared);
    FirstLineProcess display(
        {kBin + "/firmcast-sim", "--device", "graphic-display", "--baud", "57600"});
    BatchResult r = runBatchProcess(
        {"--display", "--com", "1", "--file", h.file, "--logic-address", "07", "--speed", "57600"},
        {{"FIRMCAST_HOME", h.home.path().string()}, {"FIRMCAST_COM1", display.firstLine()}});
    EXPECT_EQ(r.status, 0) << r.said();
    EXPECT_EQ(r.out, "label: Loaded OK\n") << r.said();
    std::string switches = contentOfFile((h.home.path() / "korvacom/Korctrl.txt").string());
    EXPECT_NE(switches.find("-v 57600\r\n"), std::string::npos) << switches;
    EXPECT_NE(switches.find("-p COM1\r\n"), std::string::npos) << switches;
}

// Over Ethernet the driver reaches the display on the screen's port 3000;
// the display listens on a loopback address of its own, so that nothing
// else on the machine shares that port with it.
TEST(FirmcastBatchDisplay, LoadsADisplayOverEthernetAndSaysLoadedOk) {
    PreparedHome h;
    ASSERT_TRUE(h.prepared);
    FirstLineProcess display({kBin + "/firmcast-sim", "--tcp", "3000", "--address", "127.0.0.93",
                              "--device", "graphic-display"});
    if (display.firstLine() != "listening on 3000")
        GTEST_SKIP() << "port 3000 of 127.0.0.93 is not free here: " << display.firstLine();
    BatchResult r = runBatchProcess(
        {"--display", "--ethernet", "127.0.0.93", "--file", h.file, "--logic-address", "49"},
        {{"FIRMCAST_HOME", h.home.path().string()}});
    EXPECT_EQ(r.status, 0) << r.said();
    EXPECT_EQ(r.out, "label: Loaded OK\n") << r.said();
}

TEST(FirmcastBatchDisplay, ADisplayThatRejectsTheCrcEndsWithLoadedKoAndExit1) {
    PreparedHome h;
    FirstLineProcess display({kBin + "/firmcast-sim", "--device", "graphic-display", "--baud",
                              "19200", "--rejects-crc"});
    BatchResult r = runBatchProcess(
        {"--display", "--com", "2", "--file", h.file},
        {{"FIRMCAST_HOME", h.home.path().string()}, {"FIRMCAST_COM2", display.firstLine()}});
    EXPECT_EQ(r.status, 1) << r.said();
    EXPECT_EQ(r.out, "label: Loaded KO. ERROR\n") << r.said();
}

TEST(FirmcastBatchDisplay, AnAddressThatIsNotValidShowsItsBoxAndTheLabelAsItStands) {
    PreparedHome h;
    BatchResult r = runBatchProcess({"--display", "--ethernet", "10.0.0", "--file", h.file},
                                    {{"FIRMCAST_HOME", h.home.path().string()}});
    EXPECT_EQ(r.status, 1) << r.said();
    EXPECT_EQ(r.out, "msgbox: The IP Address is not a valid one\nlabel: \n") << r.said();
}

TEST(FirmcastBatchDisplay, ARunTimeErrorOfTheLoadEndsByTheFatalTrapWithExit3) {
    PreparedHome h;
    std::filesystem::remove(h.home.path() / "korvacom/Korctrl.txt");
    BatchResult r = runBatchProcess({"--display", "--com", "1", "--file", h.file},
                                    {{"FIRMCAST_HOME", h.home.path().string()}});
    EXPECT_EQ(r.status, 3) << r.said();
    EXPECT_EQ(r.out, "msgbox: Run-time error '53':\n\nFile not found\nlabel: \n") << r.said();
}

TEST(FirmcastBatchDisplay, ItsCommandLineIsRefusedWithExit2WhereItIsWrong) {
    PreparedHome h;
    for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
             {"--display", "--file", h.file},
             {"--display", "--com", "1", "--ethernet", "1.2.3.4", "--file", h.file},
             {"--display", "--com", "1"},
             {"--display", "--com", "5", "--file", h.file},
             {"--display", "--com", "1", "--file", h.file, "--logic-address", "50"},
             {"--display", "--com", "1", "--file", h.file, "--logic-address", "7"},
             {"--display", "--ethernet", "1.2.3.4", "--file", h.file, "--speed", "19200"},
             {"--display", "--com", "1", "--file", h.file, "--speed", "12345"},
             {"--display", "--com", "1", "--file", h.file, "--model", "0"}}) {
        BatchResult r = runBatchProcess(args, {{"FIRMCAST_HOME", h.home.path().string()}});
        EXPECT_EQ(r.status, 2) << ::testing::PrintToString(args) << r.said();
        EXPECT_TRUE(r.out.empty()) << r.said();
    }
}

}  // namespace
}  // namespace fc::test
