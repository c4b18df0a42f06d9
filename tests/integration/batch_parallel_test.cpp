// firmcast-batch --parallel on this machine's loopback: simulated scales,
// each a firmcast-sim process on a loopback address of its own and the same
// port, loaded at once by worker processes; the scale lines in list order
// once all have ended, the serial numbers by the place in the list, and the
// record file with one whole line per scale, also for a worker killed in the
// middle of its load.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <thread>

#include "integration/batch_run.h"
#include "mac/mac_tables.h"
#include "support/ethernet_rig.h"
#include "support/first_line_process.h"
#include "support/flat_json.h"
#include "support/mac_store.h"
#include "support/process_by_arguments.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

// Scales on 127.0.3.1, 127.0.3.2 ..., all on the port the first one was given.
class LoopbackScales {
  public:
    explicit LoopbackScales(const std::vector<std::vector<std::string>>& faults) {
        for (std::size_t i = 0; i < faults.size(); ++i) {
            std::vector<std::string> words{std::string(FIRMCAST_BIN_DIR) + "/firmcast-sim",
                                           "--tcp",
                                           std::to_string(port_),
                                           "--device",
                                           "ethernet-scale",
                                           "--erase-ms",
                                           "300",
                                           "--address",
                                           address(i)};
            words.insert(words.end(), faults[i].begin(), faults[i].end());
            scales_.push_back(std::make_unique<FirstLineProcess>(words));
            if (i == 0)
                std::sscanf(scales_[0]->firstLine().c_str(), "listening on %d", &port_);
        }
    }
    static std::string address(std::size_t i) { return "127.0.3." + std::to_string(i + 1); }
    std::string list() const {
        std::string text;
        for (std::size_t i = 0; i < scales_.size(); ++i) text += (i ? "," : "") + address(i);
        return text;
    }
    int port() const { return port_; }
    bool allListening() const {
        for (const auto& s : scales_) {
            if (s->firstLine() != "listening on " + std::to_string(port_))
                return false;
        }
        return true;
    }

  private:
    int port_ = 0;
    std::vector<std::unique_ptr<FirstLineProcess>> scales_;
};

std::vector<std::string> linesOfFile(const fs::path& file) {
    std::vector<std::string> lines;
    std::istringstream in(contentOfFile(file.string()));
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

// The record lines by their scale number; a line that is not a whole record
// fails the test.
std::map<int, FlatJson> recordsByScale(const fs::path& file) {
    std::map<int, FlatJson> records;
    for (const std::string& line : linesOfFile(file)) {
        std::optional<FlatJson> json = readFlatJson(line);
        EXPECT_TRUE(json) << "not a whole record: " << line;
        if (json)
            records[std::stoi(json->others["scale"])] = *json;
    }
    return records;
}

struct ParallelRun {
    ParallelRun(const LoopbackScales& scales, const std::string& level) {
        home.write("config.ini", "[Puertos]\r\nTx=" + std::to_string(scales.port()) + "\r\n");
        file = folder.write("fw.hex", EthernetRig::twoBankFile());
        args = {"--model", "0",        "--ethernet",  "--level",  level,          "--file",
                file,      "--scales", scales.list(), "--record", record.string()};
    }
    BatchResult run(const std::vector<std::string>& more, const BatchEnvironment& extraEnv = {}) {
        std::vector<std::string> all = args;
        all.insert(all.end(), more.begin(), more.end());
        BatchEnvironment env{{"FIRMCAST_HOME", home.path().string()}};
        env.insert(env.end(), extraEnv.begin(), extraEnv.end());
        return runBatchProcess(all, env);
    }
    TempFolder folder, home;
    std::string file;
    fs::path record = folder.path() / "loads.jsonl";
    std::vector<std::string> args;
};

TEST(BatchParallel, ThreeScalesAtOnceGiveTheirLinesInListOrderAndARecordLineEach) {
    // The first scale erases slowly and ends last.
    LoopbackScales scales({{"--erase-ms", "1500"}, {"--wrong-checksum"}, {}});
    ASSERT_TRUE(scales.allListening());
    ParallelRun p(scales, "3");
    BatchResult run = p.run({"--parallel", "3"});
    EXPECT_EQ(run.status, 1) << run.said();
    EXPECT_EQ(run.out,
              "scale 1: 127.0.3.1 ok: Scale 1 loaded OK\n"
              "scale 2: 127.0.3.2 failed: Scale 2 Checksum Error\n"
              "scale 3: 127.0.3.3 ok: Scale 3 loaded OK\n");
    std::map<int, FlatJson> records = recordsByScale(p.record);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[1].text("result"), "ok");
    EXPECT_EQ(records[2].text("result"), "failed");
    EXPECT_EQ(records[2].text("info"), "Scale 2 Checksum Error");
    EXPECT_EQ(std::stol(records[2].others["scale_checksum"]),
              std::stol(records[2].others["image_checksum"]) + 1);
    EXPECT_EQ(records[3].text("port"), "127.0.3.3");
    for (auto& [n, r] : records) {
        EXPECT_EQ(r.text("firmware"), "fw.hex");
        EXPECT_EQ(std::stol(r.others["firmware_size"]), static_cast<long>(fs::file_size(p.file)));
        EXPECT_EQ(r.text("firmware_sha256").size(), 64u);
        EXPECT_EQ(r.text("way"), "ethernet");
        EXPECT_EQ(r.text("level"), "3");
    }
    // They ran at once: the slow first scale had started before the others ended.
    EXPECT_LT(records[1].text("start"), records[3].text("end"));
}

TEST(BatchParallel, TwoAtATimeLoadsEveryScaleOfTheList) {
    LoopbackScales scales({{}, {}, {}});
    ASSERT_TRUE(scales.allListening());
    ParallelRun p(scales, "3");
    BatchResult run = p.run({"--parallel", "2"});
    EXPECT_EQ(run.status, 0) << run.said();
    EXPECT_EQ(run.out,
              "scale 1: 127.0.3.1 ok: Scale 1 loaded OK\n"
              "scale 2: 127.0.3.2 ok: Scale 2 loaded OK\n"
              "scale 3: 127.0.3.3 ok: Scale 3 loaded OK\n");
    EXPECT_EQ(recordsByScale(p.record).size(), 3u);
}

// Under LeakSanitizer, a program that has read the SQLite register through
// the ODBC driver is told of the driver's own allocations, kept past the
// driver's unloading where no suppression can name them.
const std::pair<std::string, std::string> kNoDriverLeakReport{"LSAN_OPTIONS", "detect_leaks=0"};

// The n-th --serial goes to the n-th scale of the list, whatever order the
// scales end in: the first is the slowest here.
TEST(BatchParallel, EachSerialGoesToTheScaleOfItsPlaceInTheList) {
    std::string whyNot;
    auto store = MacStore::make("SQLite", whyNot);
    if (!store)
        GTEST_SKIP() << "SQLite is not available here: " << whyNot;
    LoopbackScales scales({{"--erase-ms", "1500"}, {}, {}});
    ASSERT_TRUE(scales.allListening());
    ParallelRun p(scales, "1");
    p.home.write("odbc.ini", store->iniSection(kOrigenMac));
    BatchResult run = p.run(
        {"--adsl", "--parallel", "3", "--serial", "SN-A", "--serial", "SN-B", "--serial", "SN-C"},
        {{"ODBCINI", (p.home.path() / "odbc.ini").string()}, kNoDriverLeakReport});
    EXPECT_EQ(run.status, 0) << run.said();
    std::map<int, FlatJson> records = recordsByScale(p.record);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[1].text("serial"), "SN-A");
    EXPECT_EQ(records[2].text("serial"), "SN-B");
    EXPECT_EQ(records[3].text("serial"), "SN-C");
}

TEST(BatchParallel, AWorkerKilledMidLoadIsReportedFailedAndLeavesNoHalfWrittenRecordLine) {
    // The second scale's erase takes six seconds: its worker is caught in
    // the middle of the load, waiting for it.
    LoopbackScales scales({{}, {"--erase-ms", "6000"}, {}});
    ASSERT_TRUE(scales.allListening());
    ParallelRun p(scales, "3");
    BatchResult run;
    std::thread batch([&] { run = p.run({"--parallel", "3"}); });
    pid_t victim = 0;
    for (int tries = 0; tries < 200 && victim == 0; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        // By this run's record file as well: another test running at the
        // same time may have a worker 2 of its own.
        victim =
            processWith("firmcast-batch", {{"--worker", "2"}, {"--record", p.record.string()}});
    }
    // Past the connection and its settle (a second), in the erase wait.
    std::this_thread::sleep_for(std::chrono::milliseconds(2000));
    if (victim != 0)
        kill(victim, SIGKILL);
    batch.join();
    ASSERT_NE(victim, 0) << "the worker of scale 2 was never seen";
    EXPECT_EQ(run.status, 1) << run.said();
    EXPECT_EQ(run.out,
              "scale 1: 127.0.3.1 ok: Scale 1 loaded OK\n"
              "scale 2: 127.0.3.2 failed: the worker ended by signal 9 (Killed) before "
              "its scale's result\n"
              "scale 3: 127.0.3.3 ok: Scale 3 loaded OK\n");
    std::map<int, FlatJson> records = recordsByScale(p.record);
    ASSERT_EQ(linesOfFile(p.record).size(), 3u);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[2].text("result"), "failed");
    EXPECT_EQ(records[2].text("info"),
              "the worker ended by signal 9 (Killed) before its scale's result");
    EXPECT_TRUE(records[2].isNull("scale_checksum"));
    EXPECT_EQ(records[2].text("firmware_sha256"), records[1].text("firmware_sha256"));
}

}  // namespace
}  // namespace fc::test
