// firmcast-batch loading each of the six RS-232 families from end to end over
// a real pseudo-terminal, the device being firmcast-sim in its own process;
// and the bad files, which end as the driver says with the right exit status.
// The boxes are checked on standard output, where other programs read them;
// the progress and the errors go to standard error.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "integration/batch_run.h"
#include "mac/mac_tables.h"
#include "support/ethernet_rig.h"
#include "support/firmware_files.h"
#include "support/first_line_process.h"
#include "support/mac_store.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

const std::string kBin = FIRMCAST_BIN_DIR;

// firmcast-sim on a pty of its own; its first line names the tty.
class SimProcess {
  public:
    explicit SimProcess(const std::vector<std::string>& arguments) : process_(words(arguments)) {}
    const std::string& tty() const { return process_.firstLine(); }

  private:
    static std::vector<std::string> words(const std::vector<std::string>& arguments) {
        std::vector<std::string> all{kBin + "/firmcast-sim"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return all;
    }
    FirstLineProcess process_;
};

std::vector<std::string> simArguments(const std::string& device, const std::string& eraseMs) {
    return {"--device", device, "--erase-ms", eraseMs};
}

// The words of `arguments`, which hold no path with a blank.
std::vector<std::string> wordsOf(const std::string& arguments) {
    std::vector<std::string> words;
    std::istringstream in(arguments);
    for (std::string word; in >> word;) words.push_back(word);
    return words;
}

// Runs firmcast-batch with COM1 on `tty`, and the variables of `more`.
BatchResult runBatch(const std::string& tty, const std::string& arguments,
                     BatchEnvironment more = {}) {
    more.emplace_back("FIRMCAST_COM1", tty);
    return runBatchProcess(wordsOf(arguments), more);
}

struct Family {
    int model;
    const char* device;
};

class BatchLoad : public ::testing::TestWithParam<Family> {};

TEST_P(BatchLoad, LoadsFromEndToEndOverARealPty) {
    const Family family = GetParam();
    bool banked = std::string(family.device) == "banked";
    TempFolder folder;
    std::string file =
        folder.write("fw.txt", banked ? sRecordFile(consecutive(0x7F00, 40)) : intelHexFile(40));
    SimProcess sim(simArguments(family.device, "100"));
    ASSERT_FALSE(sim.tty().empty()) << "firmcast-sim gave no tty";
    BatchResult run =
        runBatch(sim.tty(), "--model " + std::to_string(family.model) + " --com 1 --file " + file);
    EXPECT_EQ(run.status, 0) << run.said();
    EXPECT_EQ(run.out, "msgbox: The scale is ready\n");
    ASSERT_FALSE(run.errLines().empty()) << run.said();
    EXPECT_EQ(run.errLines().back(), "COM1 pass 1: ready");
}

INSTANTIATE_TEST_SUITE_P(SixFamilies, BatchLoad,
                         ::testing::Values(Family{0, "numbered"}, Family{1, "numbered"},
                                           Family{6, "numbered"}, Family{2, "banked"},
                                           Family{4, "banked"}, Family{5, "banked"}),
                         [](const auto& info) {
                             return "model" + std::to_string(info.param.model);
                         });

TEST(BatchLoadPasses, ProductionWayLoadsTheSameFileTwice) {
    TempFolder folder;
    std::string file = folder.write("fw.hex", intelHexFile(10));
    SimProcess sim(simArguments("numbered", "50"));
    BatchResult run = runBatch(sim.tty(), "--model 1 --com 1 --passes 2 --file " + file);
    EXPECT_EQ(run.status, 0) << run.said();
    EXPECT_EQ(run.out, "msgbox: The scale is ready\nmsgbox: The scale is ready\n");
}

// With the record named in config.ini, each pass over a real pty adds a
// line: the port, the file's digest, and what the load said last.
TEST(BatchLoadPasses, EachPassIsAppendedToTheRecordThatConfigIniNames) {
    TempFolder folder, home;
    std::string file = folder.write("fw.hex", intelHexFile(10));
    home.write("config.ini", "[Record]\r\nrecord=loads.jsonl\r\n");
    SimProcess sim(simArguments("numbered", "50"));
    BatchResult run = runBatch(sim.tty(), "--model 1 --com 1 --passes 2 --file " + file,
                               {{"FIRMCAST_HOME", home.path().string()}});
    EXPECT_EQ(run.status, 0) << run.said();
    std::istringstream in(contentOfFile((home.path() / "loads.jsonl").string()));
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    ASSERT_EQ(lines.size(), 2u);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_THAT(lines[i],
                    ::testing::HasSubstr("\"way\":\"rs232\",\"port\":\"COM1\",\"scale\":0,"
                                         "\"pass\":" +
                                         std::to_string(i + 1) + ","));
        EXPECT_THAT(lines[i],
                    ::testing::HasSubstr("\"firmware\":\"fw.hex\",\"firmware_size\":" +
                                         std::to_string(std::filesystem::file_size(file))));
        EXPECT_THAT(lines[i],
                    ::testing::HasSubstr("\"result\":\"ok\",\"info\":\"The scale is ready\""));
    }
}

// A pty takes no low latency: the load goes as before, and the error log
// of the program's folder says so once, however many passes open the port.
TEST(BatchLoadPasses, APortWithoutLowLatencyIsWrittenOnceToTheErrorLog) {
    TempFolder folder, home;
    std::string file = folder.write("fw.hex", intelHexFile(10));
    SimProcess sim(simArguments("numbered", "50"));
    BatchResult run = runBatch(sim.tty(), "--model 1 --com 1 --passes 2 --file " + file,
                               {{"FIRMCAST_HOME", home.path().string()}});
    EXPECT_EQ(run.status, 0) << run.said();
    EXPECT_EQ(run.out, "msgbox: The scale is ready\nmsgbox: The scale is ready\n");
    std::ifstream in(home.path() / "Balanza_Logs" / "Errores.log");
    std::string log((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::vector<std::string> lines;
    std::istringstream split(log);
    for (std::string line; std::getline(split, line);) lines.push_back(line);
    ASSERT_EQ(lines.size(), 3u) << log;
    EXPECT_THAT(lines[0], ::testing::EndsWith("  PortOpen\r"));
    EXPECT_THAT(lines[1],
                ::testing::HasSubstr("The port " + sim.tty() + " works without low latency"));
}

struct BadFile {
    const char* name;
    std::string content;
    int model;
    int status;
    const char* output;
};

class BatchBadFile : public ::testing::TestWithParam<BadFile> {};

TEST_P(BatchBadFile, EndsAsTheDriverSays) {
    const BadFile bad = GetParam();
    TempFolder folder;
    std::string file = folder.write("bad.txt", bad.content);
    SimProcess sim(simArguments(bad.model == 2 ? "banked" : "numbered", "50"));
    BatchResult run =
        runBatch(sim.tty(), "--model " + std::to_string(bad.model) + " --com 1 --file " + file);
    EXPECT_EQ(run.status, bad.status) << run.said();
    EXPECT_EQ(run.out, bad.output);
}

INSTANTIATE_TEST_SUITE_P(
    Files, BatchBadFile,
    ::testing::Values(
        BadFile{"Empty", "", 1, 3, "msgbox: 62Input past end of file\n"},
        BadFile{"OneLine", ":020000020000FC\r\n", 1, 1, "msgbox: The file is empty\n"},
        BadFile{"WrongFirstRecord", "S00600004844521B\r\n:00000001FF\r\n", 1, 1,
                "msgbox: This is not a Flash program file for this Board\n"},
        // Two lines: no line of the loop was sent yet, and the result
        // of the last send is False at start, so both boxes show.
        BadFile{"NoEndRecordInTwoLines",
                ":020000020000FC\r\n" + hexRecord(0, 0, std::vector<int>(16, 5)) + "\r\n", 1, 1,
                "msgbox: The end of file is not valid\nmsgbox: Error Sending Error\n"},
        BadFile{"NoEndRecord", intelHexFile(3).substr(0, intelHexFile(3).rfind(":00000001FF")), 1,
                1, "msgbox: The end of file is not valid\n"},
        BadFile{"BankDigitALetter", sRecordFile({0x000000, 0x0A0000}), 2, 3,
                "msgbox: 13Type mismatch\n"}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace fc::test

namespace fc::test {
namespace {

// A simulated scale behind a real port of this machine's loopback.
struct LoopbackScale {
    explicit LoopbackScale(const std::vector<std::string>& faults = {}) : process(words(faults)) {
        std::sscanf(process.firstLine().c_str(), "listening on %d", &port);
    }
    static std::vector<std::string> words(const std::vector<std::string>& faults) {
        std::vector<std::string> all{std::string(FIRMCAST_BIN_DIR) + "/firmcast-sim",
                                     "--tcp",
                                     "0",
                                     "--device",
                                     "ethernet-scale",
                                     "--erase-ms",
                                     "300"};
        all.insert(all.end(), faults.begin(), faults.end());
        return all;
    }
    FirstLineProcess process;
    int port = 0;
};

// The scale list of config.ini: loopback addresses on the scale's port.
void writeLoopbackList(const TempFolder& home, int count, int port) {
    std::string text = "[Balanzas]\r\nNumero=" + std::to_string(count) + "\r\n[Direcciones]\r\n";
    for (int i = 1; i <= count; ++i)
        text += "dir" + std::to_string(i) + "=127.0.0." + std::to_string(i) + "\r\n";
    home.write("config.ini", text + "[Puertos]\r\nTx=" + std::to_string(port) + "\r\n");
}

// One simulated scale with `faults` on the loopback, loaded at the level that
// gives no MAC.
BatchResult loopbackLoadAtLevel3(const std::vector<std::string>& faults) {
    LoopbackScale scale(faults);
    TempFolder folder, home;
    writeLoopbackList(home, 1, scale.port);
    std::string file = folder.write("fw.hex", EthernetRig::twoBankFile());
    return runBatchProcess({"--model", "0", "--ethernet", "--level", "3", "--file", file},
                           {{"FIRMCAST_HOME", home.path().string()}});
}

// Over a real socket, at the level that gives no MAC: the whole load, the
// checksum answered by the scale, and the line that says so.
TEST(BatchEthernet, LoadsASimulatedScaleOverARealSocket) {
    BatchResult run = loopbackLoadAtLevel3({});
    EXPECT_EQ(run.status, 0) << run.said();
    EXPECT_EQ(run.out, "scale 1: 127.0.0.1 ok: Scale 1 loaded OK\n");
}

TEST(BatchEthernet, AWrongChecksumOverARealSocketFailsWithItsText) {
    BatchResult run = loopbackLoadAtLevel3({"--wrong-checksum"});
    EXPECT_EQ(run.status, 1) << run.said();
    EXPECT_EQ(run.out, "scale 1: 127.0.0.1 failed: Scale 1 Checksum Error\n");
}

TEST(BatchEthernet, AScaleThatStopsReadingEndsInItsErrorWaitOverARealSocket) {
    BatchResult run = loopbackLoadAtLevel3({"--fail-at", "3:42"});
    EXPECT_EQ(run.status, 1) << run.said();
    EXPECT_EQ(run.out, "scale 1: 127.0.0.1 failed: Scale 1 ERROR 42\n");
}

// Under LeakSanitizer, a program that has read the SQLite register through
// the ODBC driver is told of the driver's own allocations, kept past the
// driver's unloading where no suppression can name them; the leak checks of
// the record form's code run in the tests' own process.
const std::pair<std::string, std::string> kNoDriverLeakReport{"LSAN_OPTIONS", "detect_leaks=0"};

// One good scale on the loopback at level 1 with the ADSL box ticked: no MAC
// step, and the record form on the register of `store`.
BatchResult loadAtLevel1WithRecordForm(MacStore& store, const std::vector<std::string>& extra) {
    LoopbackScale scale;
    TempFolder folder, home;
    writeLoopbackList(home, 1, scale.port);
    home.write("odbc.ini", store.iniSection(kOrigenMac));
    std::string file = folder.write("fw.hex", EthernetRig::twoBankFile());
    std::vector<std::string> args{"--model", "0",      "--ethernet", "--level",
                                  "1",       "--adsl", "--file",     file};
    args.insert(args.end(), extra.begin(), extra.end());
    return runBatchProcess(args, {{"FIRMCAST_HOME", home.path().string()},
                                  {"ODBCINI", (home.path() / "odbc.ini").string()},
                                  kNoDriverLeakReport});
}

// At the production level the record form opens for every good scale. With
// no serial number left it is accepted as it shows; an empty field is
// refused, and the run stops there naming the scale instead of looping.
TEST(BatchEthernet, ARecordFormThatRefusesWhatItShowsStopsTheRunNamingTheScale) {
    std::string whyNot;
    auto store = MacStore::make("SQLite", whyNot);
    if (!store)
        GTEST_SKIP() << "SQLite is not available here: " << whyNot;
    BatchResult run = loadAtLevel1WithRecordForm(*store, {});
    EXPECT_EQ(run.status, 1) << run.said();
    EXPECT_THAT(run.out,
                ::testing::HasSubstr("msgbox: You must enter the Scale\xC2\xB4s serial number\n"));
    EXPECT_EQ(run.err,
              "firmcast-batch: scale 1 (127.0.0.1) needed a serial number: the record form "
              "refused \"\"\n");
}

TEST(BatchEthernet, ASerialAnswersTheRecordFormAndTheLoadGoesOn) {
    std::string whyNot;
    auto store = MacStore::make("SQLite", whyNot);
    if (!store)
        GTEST_SKIP() << "SQLite is not available here: " << whyNot;
    BatchResult run = loadAtLevel1WithRecordForm(*store, {"--serial", "SN-1"});
    EXPECT_EQ(run.status, 0) << run.said();
    // Loopback has no address table: the proof by echo finds no answer.
    EXPECT_THAT(run.out, ::testing::HasSubstr("msgbox: The scale does not answer \n"));
    EXPECT_THAT(run.out, ::testing::HasSubstr("scale 1: 127.0.0.1 ok: Scale 1 loaded OK\n"));
}

TEST(BatchEthernet, EntersTheScaleListSavesItLoadsAndSaysHowEachScaleEnded) {
    TempFolder folder, home;
    std::string file = folder.write("fw.hex", EthernetRig::twoBankFile());
    // Addresses of the documentation's network: no scale answers there.
    BatchResult run = runBatchProcess(
        {"--model", "0", "--ethernet", "--scales", "192.0.2.1,192.0.2.2", "--save", "--file", file},
        {{"FIRMCAST_HOME", home.path().string()}});
    EXPECT_EQ(run.status, 1) << run.said();
    EXPECT_EQ(run.out, "scale 1: 192.0.2.1 failed: 1\nscale 2: 192.0.2.2 failed: 1\n");
    EXPECT_EQ(run.err, "");
    std::ifstream ini(home.path() / "config.ini");
    std::string text((std::istreambuf_iterator<char>(ini)), std::istreambuf_iterator<char>());
    EXPECT_EQ(text,
              "[Balanzas]\r\nNumero=2\r\n[Direcciones]\r\ndir1=192.0.2.1\r\ndir2=192.0.2.2\r\n["
              "Puertos]\r\nTx=3000\r\n");
}

}  // namespace
}  // namespace fc::test
