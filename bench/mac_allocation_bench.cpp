// Allocations of MAC addresses per second on each real engine, for one
// station alone and for eight stations on one counter. Each station is a
// firmcast-macdb process (beside this program) allocating through a data
// source in an odbc.ini, as on the line; every call opens its connection,
// takes the counter in a transaction and adds the register's row.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "support/mac_store.h"
#include "unit/common_fixture.h"

namespace {

std::string binFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

}  // namespace

#define FIRMCAST_BIN_DIR binFolder()
#include "integration/mac_tool_run.h"

namespace {

using fc::test::MacStore;

// Addresses a second with `stations` processes allocating `each` at once.
double rate(MacStore& store, int stations, int each) {
    fc::commontest::ScratchFolder home;
    std::string ini = (home / "odbc.ini").string();
    std::ofstream(ini) << store.iniSection("Bench");
    auto start = std::chrono::steady_clock::now();
    std::vector<pid_t> pids;
    for (int i = 0; i < stations; ++i)
        pids.push_back(fc::test::startMacTool({"--dsn", "Bench", "next", std::to_string(each)},
                                              {{"ODBCINI", ini}}, home / std::to_string(i)));
    size_t given = 0;
    for (int i = 0; i < stations; ++i) {
        fc::test::waitMacTool(pids[i]);
        given += fc::test::linesOf(home / std::to_string(i)).size();
    }
    std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    if (given != size_t(stations * each))
        std::printf("  (only %zu addresses given)\n", given);
    return double(given) / took.count();
}

}  // namespace

int main() {
    std::printf("%-12s %-9s %s\n", "engine", "stations", "allocations/s");
    for (const std::string engine : {"SQLite", "PostgreSQL"}) {
        std::string whyNot;
        auto store = MacStore::make(engine, whyNot);
        if (!store) {
            std::printf("%-12s skipped: %s\n", engine.c_str(), whyNot.c_str());
            continue;
        }
        std::printf("%-12s %-9d %.0f\n", engine.c_str(), 1, rate(*store, 1, 400));
        std::printf("%-12s %-9d %.0f\n", engine.c_str(), 8, rate(*store, 8, 200));
    }
}
