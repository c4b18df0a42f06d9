// The operator's waits as the pump knows them, and a script that ends the run
// where it can no longer end such a wait: the watch is asked at every turn of
// a wait on the operator and never in a wait on anything else.
#include <gtest/gtest.h>

#include <string>

#include "operator/operator_script.h"
#include "operator/recording_dialogs.h"
#include "platform/screen.h"
#include "platform/window_timer.h"
#include "virtual/virtual_pump.h"

namespace fc {
namespace {

struct Stuck {
    std::string nextStep;
};

TEST(OperatorWait, OnlyATurnForTheOperatorAsksTheWatch) {
    VirtualPump pump;
    WindowTimer timer(pump, "t");  // something to wait for
    timer.setInterval(5);
    timer.setEnabled(true);
    int asked = 0;
    pump.setOperatorWatch([&] { ++asked; });
    pump.doEvents();
    pump.doPendingEvents();
    EXPECT_EQ(asked, 0);
    pump.doEventsForOperator();
    pump.doEventsForOperator();
    EXPECT_EQ(asked, 2);
    pump.setOperatorWatch(nullptr);
    pump.doEventsForOperator();
    EXPECT_EQ(asked, 2);
}

TEST(OperatorWait, AModalScreenNoStepWillCloseEndsTheRun) {
    VirtualPump pump;
    RecordingDialogs dialogs(pump);
    Screen screen("frmDatosBalanza");
    OperatorScript script(pump);
    script.endWhenStuck([&](const std::string& next) { throw Stuck{next}; });
    try {
        dialogs.showModal(screen);
        FAIL() << "the modal screen was waited on for ever";
    } catch (const Stuck& stuck) {
        EXPECT_EQ(stuck.nextStep, "");
    }
    EXPECT_EQ(dialogs.modalScreen(), nullptr);
}

TEST(OperatorWait, AModalScreenTheScriptClosesIsNotTakenForStuck) {
    VirtualPump pump;
    RecordingDialogs dialogs(pump);
    Screen screen("frmDatosBalanza");
    OperatorScript script(pump);
    const Screen* shownWhileOpen = nullptr;
    script.after(3000, "close the form", [&] {
        shownWhileOpen = dialogs.modalScreen();
        screen.unload();
    });
    script.endWhenStuck([](const std::string& next) { throw Stuck{next}; });
    EXPECT_NO_THROW(dialogs.showModal(screen));
    EXPECT_EQ(shownWhileOpen, &screen);
    EXPECT_EQ(pump.now(), 3000);
    EXPECT_TRUE(script.finished());
}

TEST(OperatorWait, AConditionThatHoldsAtTheFirstTurnRunsAndTheNextOneIsWaitedFor) {
    VirtualPump pump;
    OperatorScript script(pump);
    WindowTimer timer(pump, "t");
    timer.setInterval(1);
    timer.setEnabled(true);
    int step = 1;
    script.when([&] { return step == 1; }, "go to step 2", [&] { step = 2; });
    script.when([&] { return step == 3; }, "finish", [&] { step = 4; });
    script.endWhenStuck([](const std::string& next) { throw Stuck{next}; });
    // The wait on step 1 ends by the script; the wait on step 2 has nothing
    // in the script that could end it.
    while (step == 1) pump.doEventsForOperator();
    EXPECT_EQ(step, 2);
    try {
        while (step == 2) pump.doEventsForOperator();
        FAIL() << "a wait the script cannot end went on";
    } catch (const Stuck& stuck) {
        EXPECT_EQ(stuck.nextStep, "finish");
    }
}

TEST(OperatorWait, AWaitOnADeviceOrTimerIsNeverWatched) {
    VirtualPump pump;
    OperatorScript script(pump);
    WindowTimer erase(pump, "erase");
    bool erased = false;
    erase.onTimer = [&] {
        erased = true;
        erase.setEnabled(false);
    };
    erase.setInterval(65000);
    erase.setEnabled(true);
    script.when([] { return false; }, "never", [] {});
    script.endWhenStuck([](const std::string& next) { throw Stuck{next}; });
    EXPECT_NO_THROW({
        while (!erased) pump.doEvents();
    });
    EXPECT_EQ(pump.now(), 65000);
}

}  // namespace
}  // namespace fc
