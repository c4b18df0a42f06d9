#include <gtest/gtest.h>

#include "platform/linux/real_pump.h"
#include "platform/runtime_error.h"
#include "platform/window_timer.h"
#include "virtual/virtual_pump.h"

namespace fc {
namespace {

TEST(WindowTimer, FiresOnlyFromDoEventsAfterItsInterval) {
    VirtualPump pump;
    WindowTimer timer(pump, "t");
    int fired = 0;
    timer.onTimer = [&] { ++fired; };
    timer.setInterval(600);
    timer.setEnabled(true);
    pump.sleep(700);  // no events run during a sleep
    EXPECT_EQ(fired, 0);
    pump.doEvents();
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(pump.now(), 700);
    while (fired < 2) pump.doEvents();
    EXPECT_EQ(pump.now(), 1300);
}

TEST(WindowTimer, IntervalZeroNeverFires) {
    VirtualPump pump;
    WindowTimer timer(pump, "t");
    timer.onTimer = [] { FAIL() << "an interval of 0 must never fire"; };
    timer.setInterval(0);
    timer.setEnabled(true);
    EXPECT_THROW(for (;;) pump.doEvents(), WaitNeverEnds);
}

TEST(WindowTimer, IntervalAbove65535IsRefused) {
    VirtualPump pump;
    WindowTimer timer(pump, "t");
    EXPECT_NO_THROW(timer.setInterval(65535));
    try {
        timer.setInterval(65536);
        FAIL() << "65536 ms was accepted";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 380);
    }
}

TEST(WindowTimer, ChangingTheIntervalRestartsTheCount) {
    VirtualPump pump;
    WindowTimer timer(pump, "t");
    long long firedAt = -1;
    timer.onTimer = [&] {
        firedAt = pump.now();
        timer.setEnabled(false);
    };
    timer.setInterval(1000);
    timer.setEnabled(true);
    pump.sleep(800);
    timer.setInterval(1000);
    while (firedAt < 0) pump.doEvents();
    EXPECT_EQ(firedAt, 1800);
}

TEST(WindowTimer, LeftEnabledAt65535FiresAgainEvery65535Ms) {
    VirtualPump pump;
    WindowTimer timer(pump, "timerout");
    std::vector<long long> times;
    timer.onTimer = [&] { times.push_back(pump.now()); };
    timer.setInterval(65535);
    timer.setEnabled(true);
    while (times.size() < 3) pump.doEvents();
    EXPECT_EQ(times, (std::vector<long long>{65535, 131070, 196605}));
}

TEST(VirtualPump, AWaitWithNothingScheduledFailsWithAClearMessage) {
    VirtualPump pump;
    try {
        for (;;) pump.doEvents();
    } catch (const WaitNeverEnds& e) {
        EXPECT_NE(std::string(e.what()).find("can never end"), std::string::npos);
    }
}

TEST(VirtualPump, OneYieldWithNothingScheduledPassesOneMillisecond) {
    VirtualPump pump;
    pump.doEvents();
    EXPECT_EQ(pump.now(), 1);
    pump.doEvents();
    EXPECT_EQ(pump.now(), 2);
}

TEST(VirtualPump, DoEventsAdvancesAtMostOneMillisecondWhenIdle) {
    VirtualPump pump;
    WindowTimer timer(pump, "t");
    timer.setInterval(5000);
    timer.setEnabled(true);
    pump.doEvents();
    EXPECT_EQ(pump.nowMicros(), 1000);
}

TEST(VirtualPump, DeferredErrorIsThrownByTheRunningDoEvents) {
    VirtualPump pump;
    WindowTimer timer(pump, "t");
    timer.setInterval(1);
    timer.setEnabled(true);
    pump.defer(std::make_exception_ptr(RuntimeError(6)));
    EXPECT_THROW(pump.doEvents(), RuntimeError);
}

TEST(RealPump, RunsADueTimer) {
    RealPump pump;
    WindowTimer timer(pump, "t");
    bool fired = false;
    timer.onTimer = [&] { fired = true; };
    timer.setInterval(5);
    timer.setEnabled(true);
    while (!fired) pump.doEvents();
    EXPECT_GE(pump.now(), 5);
}

}  // namespace
}  // namespace fc
