// The Serie_G tool really started: the main screen on the virtual clock, the
// Linux launcher, and the stand-in Gseries (build/bin/Gseries) copied into
// the program's folder, where it records the command line it was given.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "platform/linux/process_launcher.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;

// A safety net against a hung test, not a speed requirement.
constexpr auto kPatience = std::chrono::seconds(10);

std::vector<std::string> linesOf(const std::filesystem::path& file) {
    std::vector<std::string> lines;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

// Waits until the stand-ins have written `count` lines (they run detached).
std::vector<std::string> waitForLines(const std::filesystem::path& file, size_t count) {
    auto until = std::chrono::steady_clock::now() + kPatience;
    std::vector<std::string> lines = linesOf(file);
    while (lines.size() < count && std::chrono::steady_clock::now() < until) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        lines = linesOf(file);
    }
    return lines;
}

class GseriesStart : public ::testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::path standIn = std::filesystem::path(FIRMCAST_BIN_DIR) / "Gseries";
        if (!std::filesystem::exists(standIn))
            GTEST_SKIP() << "the stand-in " << standIn << " is not built";
        record_ = records_.path() / "started.txt";
        setenv("FIRMCAST_GSERIES_RECORD", record_.c_str(), 1);
        standIn_ = standIn;
    }
    void TearDown() override { unsetenv("FIRMCAST_GSERIES_RECORD"); }

    // The program's folder of `rig`, with the tool in it.
    void installTool(ScenarioRig& rig) {
        std::filesystem::copy_file(standIn_, rig.home.path() / "Gseries");
        rig.hooks.startProgram = [this](const std::string& commandLine) {
            return launcher_.start(commandLine);
        };
    }

    TempFolder records_;
    std::filesystem::path record_;
    std::filesystem::path standIn_;
    Drives noDrives_;  // the tool is named by its host path
    LinuxProcessLauncher launcher_{noDrives_};
};

TEST_F(GseriesStart, TheToolGetsTheLevelDigitAtLevels0To3) {
    for (int level = 0; level <= 3; ++level) {
        std::filesystem::remove(record_);
        ScenarioRig rig;
        installTool(rig);
        Firmcast* f = &rig.form();
        rig.script.when([f] { return f->Seleccion.reachable(); }, "Serie_G",
                        [&rig] { rig.click("Picture6"); });
        rig.script.after(10, "look", [] { throw ScenarioDone{}; });
        rig.run(std::to_string(level));
        EXPECT_THAT(waitForLines(record_, 1), ElementsAre(std::to_string(level)))
            << "level " << level;
        EXPECT_GT(f->proceso_externo, 0);
        EXPECT_EQ(f->lanzado_gseries, kTrue);
    }
}

TEST_F(GseriesStart, NextOnTheRememberedSerieGStartsAnotherCopy) {
    ScenarioRig rig;
    installTool(rig);
    Firmcast* f = &rig.form();
    long first = 0;
    rig.script.when([f] { return f->Seleccion.reachable(); }, "Serie_G",
                    [&] {
                        rig.click("Picture6");
                        first = f->proceso_externo;
                    });
    rig.script.after(10, "Next", [&rig] { rig.click("cmdAdelante"); });
    rig.script.after(10, "look", [] { throw ScenarioDone{}; });
    rig.run("2");
    EXPECT_THAT(waitForLines(record_, 2), ElementsAre("2", "2"));
    EXPECT_GT(first, 0);
    EXPECT_GT(f->proceso_externo, 0);
    EXPECT_NE(f->proceso_externo, first);
}

}  // namespace
}  // namespace fc::test
