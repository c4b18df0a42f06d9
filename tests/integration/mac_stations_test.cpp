// Several stations on one counter, on each real engine: eight processes of
// firmcast-macdb allocate at the same time through a data source named in
// an odbc.ini, as the stations of a line do. No address is ever given twice,
// even when a station is killed in the middle of its work.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <regex>
#include <set>
#include <thread>

#include "mac/mac_register.h"
#include "mac/mac_text.h"
#include "mac_rig.h"
#include "mac_tool_run.h"

namespace fc::test {
namespace {

constexpr int kStations = 8;
constexpr int kPerStation = 200;
// A safety net against a hung test, not a speed requirement.
constexpr auto kPatience = std::chrono::seconds(120);

// One station: firmcast-macdb allocating `count` addresses, its output in `out`.
pid_t startStation(const std::string& odbcIni, int count, const std::filesystem::path& out) {
    return startMacTool({"--dsn", "MacStations", "next", std::to_string(count)},
                        {{"ODBCINI", odbcIni}}, out);
}

int waitStation(pid_t pid) {
    return waitMacTool(pid);
}

struct Line {
    explicit Line(MacStore& s) : store(s) { std::ofstream(ini) << store.iniSection("MacStations"); }
    std::vector<pid_t> start(int count) {
        std::vector<pid_t> pids;
        for (int i = 0; i < kStations; ++i) pids.push_back(startStation(ini, count, output(i)));
        return pids;
    }
    std::filesystem::path output(int i) const { return home / ("station" + std::to_string(i)); }
    std::vector<std::string> given() const {
        std::vector<std::string> all;
        for (int i = 0; i < kStations; ++i)
            for (const std::string& mac : linesOf(output(i))) all.push_back(mac);
        return all;
    }

    MacStore& store;
    commontest::ScratchFolder home;
    std::string ini = (home / "odbc.ini").string();
};

class MacStations : public ::testing::TestWithParam<std::string> {};

TEST_P(MacStations, EightStationsOnOneCounterNeverShareAnAddress) {
    FC_MAC_STORE(store, GetParam());
    Line line(*store);
    for (pid_t pid : line.start(kPerStation)) EXPECT_EQ(waitStation(pid), 0);

    std::vector<std::string> given = line.given();
    std::set<std::string> distinct(given.begin(), given.end());
    EXPECT_EQ(given.size(), size_t(kStations * kPerStation));
    EXPECT_EQ(distinct.size(), given.size());
    for (const std::string& mac : given)
        EXPECT_TRUE(std::regex_match(mac, std::regex("02C0DE[0-9A-F]{6}"))) << mac;

    auto bd = store->open();
    EXPECT_EQ(LeeContador(*bd), kStations * kPerStation);
    std::vector<std::string> rows = TodasLasDirecciones(*bd);
    std::multiset<std::string> registered(rows.begin(), rows.end());
    EXPECT_EQ(rows.size(), given.size());
    for (const std::string& mac : given) EXPECT_EQ(registered.count(MacConGuiones(mac)), 1u) << mac;
}

TEST_P(MacStations, AStationKilledMidRunLeavesNoAddressGivenTwice) {
    FC_MAC_STORE(store, GetParam());
    Line line(*store);
    std::vector<pid_t> pids = line.start(kPerStation);
    auto until = std::chrono::steady_clock::now() + kPatience;
    while (linesOf(line.output(0)).size() < 20 && std::chrono::steady_clock::now() < until)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    kill(pids[0], SIGKILL);
    EXPECT_EQ(waitStation(pids[0]), -SIGKILL);
    for (int i = 1; i < kStations; ++i) EXPECT_EQ(waitStation(pids[i]), 0);
    // The counter still works for whoever comes next.
    pid_t after = startStation(line.ini, 1, line.home / "after");
    EXPECT_EQ(waitStation(after), 0);

    std::vector<std::string> given = line.given();
    for (const std::string& mac : linesOf(line.home / "after")) given.push_back(mac);
    std::set<std::string> distinct(given.begin(), given.end());
    EXPECT_EQ(distinct.size(), given.size());
    EXPECT_GE(given.size(), size_t((kStations - 1) * kPerStation + 1));

    auto bd = store->open();
    std::vector<std::string> rows = TodasLasDirecciones(*bd);
    std::multiset<std::string> registered(rows.begin(), rows.end());
    EXPECT_EQ(std::set<std::string>(rows.begin(), rows.end()).size(), rows.size());
    for (const std::string& mac : given) EXPECT_EQ(registered.count(MacConGuiones(mac)), 1u) << mac;
    // The killed station may have counted a number it never recorded, but
    // no more than the one it was working on.
    long long counter = LeeContador(*bd).value_or(-1);
    EXPECT_GE(counter, (long long)rows.size());
    EXPECT_LE(counter, (long long)rows.size() + 1);
}

INSTANTIATE_TEST_SUITE_P(Engines, MacStations, ::testing::ValuesIn(macEngines()),
                         [](const auto& info) { return info.param; });

}  // namespace
}  // namespace fc::test
