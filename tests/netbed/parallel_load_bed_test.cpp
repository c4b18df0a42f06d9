// Twenty scales loaded at once on the test bed: firmcast-batch --parallel 20
// in the loader's namespace, one worker a scale, twenty simulated scales in
// namespaces of their own, each with its own MAC, and the MAC register in
// SQLite through ODBC. Scale 1 is switched off, scale 2 answers a wrong
// checksum; every other scale loads, and the nineteen that took the load get
// nineteen different new addresses from the counter, take them as their
// interfaces' own and have their serial numbers written against them. The
// record file says it all, one whole line a scale.
//
// It needs a bed of twenty scales: run_netbed_tests.sh with
// FIRMCAST_NETBED_SCALE_COUNT=20 (the ctest netbed_parallel).
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <thread>

#include "load_bed_fixture.h"
#include "support/first_line_process.h"
#include "support/flat_json.h"
#include "support/process_by_arguments.h"

namespace fc::netbed {
namespace {

constexpr std::size_t kScales = 20;

std::string serialOf(std::size_t n) {
    return "SN-" + std::string(n < 10 ? "0" : "") + std::to_string(n);
}

class ParallelLoadOnBed : public LoadOnBed {
  protected:
    void SetUp() override {
        LoadOnBed::SetUp();
        if (bed.scales.size() < kScales)
            GTEST_SKIP() << "the bed has " << bed.scales.size() << " scales, this test needs "
                         << kScales << " (FIRMCAST_NETBED_SCALE_COUNT=20)";
    }

    std::vector<test::FlatJson> records() {
        std::vector<test::FlatJson> lines;
        std::istringstream in(test::contentOfFile(record.string()));
        for (std::string line; std::getline(in, line);) {
            std::optional<test::FlatJson> json = test::readFlatJson(line);
            EXPECT_TRUE(json) << "not a whole record: " << line;
            if (json)
                lines.push_back(*json);
        }
        return lines;
    }

    std::filesystem::path record = folder.path() / "loads.jsonl";
};

TEST_F(ParallelLoadOnBed, TwentyScalesAtOnceOneOffOneWrongEveryOtherLoadedWithItsOwnNewMac) {
    std::string whyNot;
    auto store = test::MacStore::make("SQLite", whyNot);
    if (!store)
        GTEST_SKIP() << "SQLite is not available here: " << whyNot;
    std::vector<BedScale> scales(bed.scales.begin(), bed.scales.begin() + kScales);
    prepareHome(*store, scales);
    ASSERT_TRUE(run("ip -n " + scales[0].ns + " link set dev " + kScaleInterface + " down"));
    std::vector<std::unique_ptr<FirstLineProcess>> sims;
    for (std::size_t i = 1; i < kScales; ++i) {
        std::vector<std::string> faults;
        if (i == 1)
            faults.push_back("--wrong-checksum");
        sims.push_back(std::make_unique<FirstLineProcess>(scaleSim(scales[i], faults)));
        ASSERT_EQ(sims.back()->firstLine(), "listening on 3000") << i + 1;
    }
    std::string list;
    std::vector<std::string> args{"--model", "0",        "--ethernet",   "--level",
                                  "2",       "--file",   file,           "--parallel",
                                  "20",      "--record", record.string()};
    for (std::size_t i = 0; i < kScales; ++i) {
        list += (i ? "," : "") + text(scales[i].ip);
        args.push_back("--serial");
        args.push_back(serialOf(i + 1));
    }
    args.push_back("--scales");
    args.push_back(list);

    test::BatchResult result = runLoader(args);
    EXPECT_EQ(result.status, 1) << result.said();
    std::string expected = "scale 1: " + text(scales[0].ip) + " failed: 1\n" +
                           "scale 2: " + text(scales[1].ip) + " failed: Scale 2 Checksum Error\n";
    for (std::size_t n = 3; n <= kScales; ++n)
        expected += "scale " + std::to_string(n) + ": " + text(scales[n - 1].ip) + " ok: Scale " +
                    std::to_string(n) + " loaded OK\n";
    std::string lines;
    std::istringstream out(result.out);
    for (std::string line; std::getline(out, line);) {
        if (line.rfind("scale ", 0) == 0)
            lines += line + "\n";
    }
    EXPECT_EQ(lines, expected) << result.said();

    // Twenty whole record lines, one a scale; nineteen new MACs, all different.
    std::vector<test::FlatJson> recs = records();
    ASSERT_EQ(recs.size(), kScales);
    std::map<int, test::FlatJson> byScale;
    for (const test::FlatJson& r : recs) byScale[std::stoi(r.others.at("scale"))] = r;
    ASSERT_EQ(byScale.size(), kScales);
    EXPECT_EQ(byScale[1].text("result"), "failed");
    EXPECT_TRUE(byScale[1].isNull("mac_new"));
    EXPECT_TRUE(byScale[1].isNull("serial"));
    std::set<std::string> newMacs;
    for (std::size_t n = 2; n <= kScales; ++n) {
        test::FlatJson& r = byScale[static_cast<int>(n)];
        SCOPED_TRACE("scale " + std::to_string(n));
        EXPECT_EQ(r.text("result"), n == 2 ? "failed" : "ok");
        EXPECT_EQ(r.text("serial"), serialOf(n));
        const std::string mac = r.text("mac_new");
        newMacs.insert(mac);
        // The register row of that MAC holds the scale's serial.
        auto row = registerRow(*store, mac);
        ASSERT_EQ(row.size(), 1u) << mac;
        EXPECT_EQ(row[0][0], serialOf(n));
        // And the scale answers with it now.
        std::string learnt = mac;
        for (char& c : learnt) c = c == '-' ? ':' : static_cast<char>(std::tolower(c));
        EXPECT_EQ(learntMac(scales[n - 1]), learnt);
        EXPECT_EQ(r.text("mac_old"), [&] {
            std::string own = text(scales[n - 1].mac);
            for (char& c : own) c = c == ':' ? '-' : static_cast<char>(std::toupper(c));
            return own;
        }());
    }
    EXPECT_EQ(newMacs.size(), kScales - 1);
}

// A worker killed in the middle of its scale's load: that scale is reported
// failed, with a record line of its own written whole by the parent; the
// other scales load and get their MACs and serials as always.
TEST_F(ParallelLoadOnBed, AWorkerKilledMidLoadIsReportedFailedAndTheOthersLoad) {
    std::string whyNot;
    auto store = test::MacStore::make("SQLite", whyNot);
    if (!store)
        GTEST_SKIP() << "SQLite is not available here: " << whyNot;
    std::vector<BedScale> scales(bed.scales.begin(), bed.scales.begin() + 3);
    prepareHome(*store, scales);
    FirstLineProcess first(scaleSim(scales[0], {}));
    // The second scale's erase takes six seconds: its worker is caught there.
    FirstLineProcess second(scaleSim(scales[1], {"--erase-ms", "6000"}));
    FirstLineProcess third(scaleSim(scales[2], {}));
    ASSERT_EQ(third.firstLine(), "listening on 3000");
    const std::string list =
        text(scales[0].ip) + "," + text(scales[1].ip) + "," + text(scales[2].ip);
    test::BatchResult result;
    std::thread loader([&] {
        result = runLoader({"--model", "0", "--ethernet", "--level", "2", "--file", file,
                            "--parallel", "3", "--record", record.string(), "--scales", list,
                            "--serial", "SN-1", "--serial", "SN-2", "--serial", "SN-3"});
    });
    pid_t victim = 0;
    for (int tries = 0; tries < 200 && victim == 0; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        // By this run's record file as well: another test running at the
        // same time may have a worker 2 of its own.
        victim =
            test::processWith("firmcast-batch", {{"--worker", "2"}, {"--record", record.string()}});
    }
    // Past the connection and its settle (a second), in the erase wait.
    std::this_thread::sleep_for(std::chrono::milliseconds(2000));
    if (victim != 0)
        kill(victim, SIGKILL);
    loader.join();
    ASSERT_NE(victim, 0) << "the worker of scale 2 was never seen";
    EXPECT_EQ(result.status, 1) << result.said();
    EXPECT_THAT(result.out, ::testing::HasSubstr(
                                "scale 1: " + text(scales[0].ip) + " ok: Scale 1 loaded OK\n" +
                                "scale 2: " + text(scales[1].ip) +
                                " failed: the worker ended by signal 9 (Killed) before its "
                                "scale's result\n" +
                                "scale 3: " + text(scales[2].ip) + " ok: Scale 3 loaded OK\n"));
    std::vector<test::FlatJson> recs = records();
    ASSERT_EQ(recs.size(), 3u);
    std::map<int, test::FlatJson> byScale;
    for (const test::FlatJson& r : recs) byScale[std::stoi(r.others.at("scale"))] = r;
    EXPECT_EQ(byScale[2].text("result"), "failed");
    EXPECT_TRUE(byScale[2].isNull("mac_new"));
    for (int n : {1, 3}) {
        auto row = registerRow(*store, byScale[n].text("mac_new"));
        ASSERT_EQ(row.size(), 1u) << n;
        EXPECT_EQ(row[0][0], "SN-" + std::to_string(n));
    }
}

}  // namespace
}  // namespace fc::netbed
