// The main screen's driver with a script that ends the run where the screen
// waits for an operator the script has nothing more for: back on the
// connection step after a port error, at the wait for "Again" with no step
// left; and never in the middle of a device's long erase.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "sim/numbered_scale.h"
#include "support/firmware_files.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;

constexpr int kSerieN = 1;

struct Stopped {
    std::string nextStep;
};

struct WatchedRig : ScenarioRig {
    std::optional<Stopped> stopped;

    // Runs until the run ends, the scenario is done, or the script is stuck.
    int runWatched() {
        script.endWhenStuck([](const std::string& next) { throw Stopped{next}; });
        try {
            return run();
        } catch (const Stopped& s) {
            stopped = s;
            return -2;
        }
    }
};

TEST(OperatorWaitScenario, APortErrorEndsTheRunBackOnTheConnectionStep) {
    WatchedRig rig;  // nothing is plugged into COM2
    rig.driveC.write("fw.hex", intelHexFile(5));
    rig.scriptSerialLoad(kSerieN, 2, "fw.hex");
    EXPECT_EQ(rig.runWatched(), -2);
    ASSERT_TRUE(rig.stopped.has_value());
    EXPECT_EQ(rig.stopped->nextStep, "pick the file");
    EXPECT_EQ(rig.form().paso_asistente, 1);
    EXPECT_THAT(rig.boxes(), ElementsAre("Error at port COM2"));
}

TEST(OperatorWaitScenario, ALongEraseIsADeviceWaitAndNotAStop) {
    NumberedScale::Config config;
    config.eraseTime = 60'000'000;  // a minute of erasing, inside the 65535 ms wait
    NumberedScale scale(config);
    WatchedRig rig;
    rig.serial.attach(1, scale);
    rig.driveC.write("fw.hex", intelHexFile(5));
    rig.scriptSerialLoad(kSerieN, 1, "fw.hex");
    rig.stopWhen([&rig] { return rig.form().esperando_otra != kFalse; }, "the pass ended");
    EXPECT_EQ(rig.runWatched(), -1);
    EXPECT_FALSE(rig.stopped.has_value()) << "stopped before " << rig.stopped->nextStep;
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    EXPECT_GT(rig.dialogs.boxes()[0].atMs, 60'000);
}

TEST(OperatorWaitScenario, AScriptWithNoStepLeftEndsTheRunAtTheWaitForAgain) {
    NumberedScale scale;
    WatchedRig rig;
    rig.serial.attach(1, scale);
    rig.driveC.write("fw.hex", intelHexFile(5));
    rig.scriptSerialLoad(kSerieN, 1, "fw.hex");
    EXPECT_EQ(rig.runWatched(), -2);
    ASSERT_TRUE(rig.stopped.has_value());
    EXPECT_EQ(rig.stopped->nextStep, "");
    EXPECT_NE(rig.form().esperando_otra, kFalse);
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
}

}  // namespace
}  // namespace fc::test
