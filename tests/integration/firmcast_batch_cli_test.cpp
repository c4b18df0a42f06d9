// firmcast-batch's command line as the built program takes it: what it
// cannot take is refused with exit status 2 and its reason on standard
// error; --version, --help, and --list-ports on a device folder of the
// test's own.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "integration/batch_run.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

namespace fs = std::filesystem;

bool startsWith(const std::string& text, const std::string& head) {
    return text.rfind(head, 0) == 0;
}

// ---- The command line -------------------------------------------------------

struct Refusal {
    const char* name;
    std::vector<std::string> args;
    const char* message;  // the first line on standard error
};

class BatchRefuses : public ::testing::TestWithParam<Refusal> {};

TEST_P(BatchRefuses, WithExitTwoAndItsReasonOnStandardError) {
    const Refusal& refusal = GetParam();
    BatchResult run = runBatchProcess(refusal.args);
    EXPECT_EQ(run.status, 2) << run.said();
    EXPECT_EQ(run.out, "");
    std::vector<std::string> lines = run.errLines();
    ASSERT_GE(lines.size(), 2u) << run.said();
    EXPECT_EQ(lines[0], refusal.message);
    EXPECT_TRUE(startsWith(lines[1], "usage: firmcast-batch")) << run.said();
}

INSTANTIATE_TEST_SUITE_P(
    Options, BatchRefuses,
    ::testing::Values(
        Refusal{"AnOptionGivenTwice",
                {"--model", "1", "--com", "1", "--com", "2", "--file", "fw.hex"},
                "firmcast-batch: --com is given twice (1, then 2)"},
        Refusal{"AFlagGivenTwice",
                {"--model", "0", "--ethernet", "--ethernet", "--file", "fw.hex"},
                "firmcast-batch: --ethernet is given twice"},
        Refusal{"ASpeedNotOnTheList",
                {"--model", "0", "--com", "1", "--speed", "12345", "--file", "fw.hex"},
                "firmcast-batch: --speed takes an entry of the speed list: 115200, 57600, 38400, "
                "28800, 19200, 14400, 9600, 2400, 1200 (not \"12345\")"},
        Refusal{"ASpeedForAModelWithoutASpeedList",
                {"--model", "1", "--com", "1", "--speed", "9600", "--file", "fw.hex"},
                "firmcast-batch: --speed is for models 0, 6 and 8: model 1 always starts at 57600 "
                "and its speed list cannot be changed"},
        Refusal{"ASpeedOnEthernet",
                {"--model", "0", "--ethernet", "--speed", "9600", "--file", "fw.hex"},
                "firmcast-batch: --speed is the speed of a serial line: it goes with --com, not "
                "--ethernet"},
        Refusal{"AnUnknownOption", {"--frobnicate"}, "firmcast-batch: unknown option --frobnicate"},
        Refusal{"AWordWithoutItsOption",
                {"--model", "1", "fw.hex"},
                "firmcast-batch: unexpected argument \"fw.hex\": every value follows its option"},
        Refusal{"AMissingValue",
                {"--model", "1", "--com", "1", "--file"},
                "firmcast-batch: --file needs a value"},
        Refusal{"AnOptionInPlaceOfAValue",
                {"--model", "--com", "1", "--file", "fw.hex"},
                "firmcast-batch: --model needs a value"},
        Refusal{"AProgressItDoesNotKnow",
                {"--model", "1", "--com", "1", "--file", "fw.hex", "--progress", "xml"},
                "firmcast-batch: --progress takes auto, bar, plain, json or none (not \"xml\")"},
        Refusal{"ParallelOverRs232",
                {"--model", "0", "--com", "1", "--parallel", "2", "--file", "fw.hex"},
                "firmcast-batch: --parallel loads Ethernet scales: it goes with --ethernet"},
        Refusal{"ParallelWithoutTheList",
                {"--model", "0", "--ethernet", "--parallel", "2", "--file", "fw.hex"},
                "firmcast-batch: --parallel needs the scale list: give --scales IP,IP,..."},
        Refusal{"ParallelWithSave",
                {"--model", "0", "--ethernet", "--scales", "10.0.0.1,10.0.0.2", "--save",
                 "--parallel", "2", "--file", "fw.hex"},
                "firmcast-batch: --save goes with a load of the list one scale after another, not "
                "--parallel"},
        Refusal{"MoreAtOnceThanTheListCanHold",
                {"--model", "0", "--ethernet", "--scales", "10.0.0.1", "--parallel", "21",
                 "--file", "fw.hex"},
                "firmcast-batch: --parallel takes a number from 1 to 20 (not \"21\")"},
        Refusal{"AWorkerWithTwoScales",
                {"--model", "0", "--ethernet", "--scales", "10.0.0.1,10.0.0.2", "--worker", "3",
                 "--file", "fw.hex"},
                "firmcast-batch: --worker loads one scale of a parallel run: --ethernet and one "
                "--scales address"},
        Refusal{"ParallelForTheVisor",
                {"--model", "7", "--udp", "10.0.0.9", "--parallel", "2", "--file", "fw.hex"},
                "firmcast-batch: the visor is loaded once, from its own screen: --passes, "
                "--serial, --scales, --save, --parallel, --worker and --record are not for model "
                "7"},
        Refusal{
            "VersionWithMore", {"--version", "--help"}, "firmcast-batch: --version stands alone"},
        Refusal{"NothingToDo", {}, "firmcast-batch: nothing to do"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(BatchCommandLine, AFileThatIsNotThereIsBadUsageNamingItsCause) {
    TempFolder folder;
    const std::string missing = (folder.path() / "none.hex").string();
    BatchResult run = runBatchProcess({"--model", "1", "--com", "1", "--file", missing});
    EXPECT_EQ(run.status, 2) << run.said();
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "firmcast-batch: --file " + missing + ": No such file or directory\n");
}

TEST(BatchCommandLine, AnOptionMayBeJoinedToItsValue) {
    TempFolder folder;
    const std::string missing = (folder.path() / "none.hex").string();
    // Read as far as the file check: the options themselves were taken.
    BatchResult run = runBatchProcess({"--model=1", "--com=1", "--file=" + missing});
    EXPECT_EQ(run.status, 2) << run.said();
    EXPECT_EQ(run.err, "firmcast-batch: --file " + missing + ": No such file or directory\n");
}

TEST(BatchCommandLine, VersionNamesTheProgramAndTheProjectsVersion) {
    BatchResult run = runBatchProcess({"--version"});
    EXPECT_EQ(run.status, 0) << run.said();
    EXPECT_EQ(run.out, std::string("firmcast-batch ") + FIRMCAST_VERSION + "\n");
    EXPECT_EQ(run.err, "");
}

TEST(BatchCommandLine, HelpGoesToStandardOutputAndNamesTheNewOptions) {
    BatchResult run = runBatchProcess({"--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(startsWith(run.out, "usage: firmcast-batch")) << run.out;
    for (const char* option :
         {"--progress", "--list-ports", "--version", "--speed", "--parallel", "--record"})
        EXPECT_NE(run.out.find(option), std::string::npos) << option;
    EXPECT_EQ(run.err, "");
}

// ---- --list-ports -----------------------------------------------------------

void touch(const fs::path& file, const std::string& content = "") {
    fs::create_directories(file.parent_path());
    FILE* out = std::fopen(file.c_str(), "w");
    ASSERT_NE(out, nullptr) << file;
    std::fputs(content.c_str(), out);
    std::fclose(out);
}

TEST(BatchListPorts, ListsTheSerialDevicesOfTheDeviceFolderWithTheirSetting) {
    TempFolder dev, sys;
    for (const char* name : {"ttyS0", "ttyS1", "ttyS10", "ttyS4", "ttyUSB1", "ttyUSB0", "ttyACM0",
                             "tty0", "ttyS", "ttySx", "console", "ttyprintk"})
        touch(dev.path() / name);
    fs::create_directories(dev.path() / "serial" / "by-id");
    fs::create_symlink("../../ttyUSB0", dev.path() / "serial" / "by-id" / "usb-FTDI_FT232R-if00");
    // The kernel says that ttyS1 has no UART behind it; ttyS0's type is 4.
    touch(sys.path() / "class" / "tty" / "ttyS0" / "type", "4\n");
    touch(sys.path() / "class" / "tty" / "ttyS1" / "type", "0\n");

    BatchResult run = runBatchProcess(
        {"--list-ports"},
        {{"FIRMCAST_DEV_ROOT", dev.path().string()}, {"FIRMCAST_SYS_ROOT", sys.path().string()}});
    EXPECT_EQ(run.status, 0) << run.said();
    const std::string d = dev.path().string();
    EXPECT_EQ(run.out, d + "/ttyS0  FIRMCAST_COM1=" + d + "/ttyS0  (COM1 by default)\n" +  //
                           d + "/ttyS4  FIRMCAST_COM1=" + d + "/ttyS4\n" +                 //
                           d + "/ttyS10  FIRMCAST_COM1=" + d + "/ttyS10\n" +               //
                           d + "/ttyUSB0  FIRMCAST_COM1=" + d + "/ttyUSB0\n" +             //
                           d + "/ttyUSB1  FIRMCAST_COM1=" + d + "/ttyUSB1\n" +             //
                           d + "/ttyACM0  FIRMCAST_COM1=" + d + "/ttyACM0\n" +             //
                           d + "/serial/by-id/usb-FTDI_FT232R-if00  FIRMCAST_COM1=" + d +
                           "/serial/by-id/usb-FTDI_FT232R-if00  (" + d + "/ttyUSB0)\n");
    EXPECT_EQ(run.err, "");
}

TEST(BatchListPorts, AFolderWithoutSerialDevicesSaysSo) {
    TempFolder dev;
    touch(dev.path() / "tty0");
    BatchResult run =
        runBatchProcess({"--list-ports"}, {{"FIRMCAST_DEV_ROOT", dev.path().string()}});
    EXPECT_EQ(run.status, 0) << run.said();
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "firmcast-batch: no serial device (ttyS*, ttyUSB*, ttyACM*, serial/by-id/*) in " +
                  dev.path().string() + "\n");
}

}  // namespace
}  // namespace fc::test
