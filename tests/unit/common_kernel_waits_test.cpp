#include <gtest/gtest.h>

#include "common/kernel_waits.h"
#include "platform/window_timer.h"
#include "tests/unit/common_fixture.h"

namespace fc {
namespace {

using commontest::CommonRig;

// The display driver's side, on the virtual clock: at a given moment it opens
// the resource event by its name and signals it, as the driver process does.
class SimulatedDriver : public EventSource {
  public:
    SimulatedDriver(Pump& pump, KernelObjects& kernel, Micros signalAt)
        : pump_(pump), kernel_(kernel), at_(signalAt) {
        handle_ = kernel_.createEvent(true, false, kEventoRecursos);
        pump_.add(*this);
    }
    ~SimulatedDriver() override {
        pump_.remove(*this);
        kernel_.closeHandle(handle_);
    }
    Micros nextDue() const override { return done_ ? kNever : at_; }
    void runDue(Micros) override {
        kernel_.setEvent(handle_);
        done_ = true;
    }
    bool runsWhileAsleep() const override { return true; }

  private:
    Pump& pump_;
    KernelObjects& kernel_;
    Micros at_;
    Handle handle_ = 0;
    bool done_ = false;
};

TEST(EsperaEventoRecursos, With20ReturnsAfter20MsWhenNobodySignals) {
    CommonRig rig;
    EsperaEventoRecursos(rig.c, 20);
    EXPECT_EQ(rig.pump.now(), 20);
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(EsperaEventoRecursos, With6000ReturnsAfter6000MsWhenNobodySignals) {
    CommonRig rig;
    EsperaEventoRecursos(rig.c, 6000);
    EXPECT_EQ(rig.pump.now(), 6000);
}

TEST(EsperaEventoRecursos, TheDriversSignalCutsTheSleepShort) {
    CommonRig rig;
    SimulatedDriver driver(rig.pump, rig.kernel, 1500 * 1000);
    EsperaEventoRecursos(rig.c, 6000);
    EXPECT_GE(rig.pump.now(), 1500);
    EXPECT_LE(rig.pump.now(), 1501);
}

TEST(EsperaEventoRecursos, NoEventsOfTheProgramRunDuringTheSleep) {
    CommonRig rig;
    WindowTimer timer(rig.pump, "timerout");
    int fired = 0;
    timer.onTimer = [&] { ++fired; };
    timer.setInterval(10);
    timer.setEnabled(true);
    EsperaEventoRecursos(rig.c, 100);
    EXPECT_EQ(fired, 0);
}

TEST(EsperaEventoRecursos, AnEventLeftSignalledByAnOpenHandleEndsTheWaitAtOnce) {
    CommonRig rig;
    Handle held = rig.kernel.createEvent(true, false, kEventoRecursos);
    rig.kernel.setEvent(held);
    EsperaEventoRecursos(rig.c, 6000);
    EXPECT_EQ(rig.pump.now(), 0);
    rig.kernel.closeHandle(held);
}

TEST(EsperaEventoRecursos, ASignalWhenNobodyHeldTheEventIsGoneWithIt) {
    CommonRig rig;
    Handle h = rig.kernel.createEvent(true, false, kEventoRecursos);
    rig.kernel.setEvent(h);
    rig.kernel.closeHandle(h);
    EsperaEventoRecursos(rig.c, 20);
    EXPECT_EQ(rig.pump.now(), 20);
}

TEST(EsperaMutex, ANullHandleCountsAsObtained) {
    CommonRig rig;
    EXPECT_EQ(EsperaMutex(rig.c, 0), 0);
    EXPECT_EQ(rig.pump.now(), 0);
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(LiberaMutex, ANullHandleGivesFalse) {
    CommonRig rig;
    EXPECT_EQ(LiberaMutex(rig.c, 0), 0);
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(EsperaMutex, AMutexObtainedIsZeroAndIsReleased) {
    CommonRig rig;
    Handle m = rig.kernel.createMutex(false, "Mutex_Ctrl");
    EXPECT_EQ(EsperaMutex(rig.c, m), 0);
    EXPECT_EQ(LiberaMutex(rig.c, m), 1);
    EXPECT_EQ(LiberaMutex(rig.c, m), 0);  // no longer held
}

// A kernel whose waits give the results asked of it, for the mapping of
// every wait result.
class ScriptedWaits : public VirtualKernelObjects {
  public:
    using VirtualKernelObjects::VirtualKernelObjects;
    Long result = wait::kObject0;
    Long asked = 0;
    Long waitForSingleObject(Handle, Long milliseconds) override {
        asked = milliseconds;
        return result;
    }
};

TEST(EsperaMutex, ATimeOutOrAnAbandonedMutexIsMinusOneAndAnythingElseZero) {
    VirtualPump pump;
    ScriptedWaits kernel(pump);
    CommonRig rig;
    Services withScriptedWaits{rig.pump,       rig.dialogs,  rig.serialPorts, rig.files,
                               rig.home.str(), rig.drives,   rig.fileSystem,  kernel,
                               rig.calendar,   rig.databases,  rig.network};
    CommonModule c{withScriptedWaits};
    kernel.result = wait::kTimeout;
    EXPECT_EQ(EsperaMutex(c, 4), -1);
    EXPECT_EQ(kernel.asked, 15000);
    kernel.result = wait::kAbandoned;
    EXPECT_EQ(EsperaMutex(c, 4), -1);
    kernel.result = wait::kObject0;
    EXPECT_EQ(EsperaMutex(c, 4), 0);
    kernel.result = wait::kFailed;
    EXPECT_EQ(EsperaMutex(c, 4), 0);
}

TEST(KernelObjects, EveryCallOnANullHandleFailsAtOnce) {
    VirtualPump pump;
    VirtualKernelObjects kernel(pump);
    EXPECT_EQ(kernel.waitForSingleObject(0, 1000), wait::kFailed);
    EXPECT_EQ(kernel.resetEvent(0), 0);
    EXPECT_EQ(kernel.setEvent(0), 0);
    EXPECT_EQ(kernel.releaseMutex(0), 0);
    EXPECT_EQ(kernel.closeHandle(0), 0);
    EXPECT_EQ(pump.now(), 0);
}

TEST(KernelObjects, AnAutomaticEventIsTakenByTheWaitThatSeesIt) {
    VirtualPump pump;
    VirtualKernelObjects kernel(pump);
    Handle e = kernel.createEvent(false, true, "");
    EXPECT_EQ(kernel.waitForSingleObject(e, 0), wait::kObject0);
    EXPECT_EQ(kernel.waitForSingleObject(e, 5), wait::kTimeout);
    EXPECT_EQ(pump.now(), 5);
}

TEST(KernelObjects, AManualEventStaysSignalledUntilReset) {
    VirtualPump pump;
    VirtualKernelObjects kernel(pump);
    Handle e = kernel.createEvent(true, true, "E");
    EXPECT_EQ(kernel.waitForSingleObject(e, 0), wait::kObject0);
    EXPECT_EQ(kernel.waitForSingleObject(e, 0), wait::kObject0);
    EXPECT_EQ(kernel.resetEvent(e), 1);
    EXPECT_EQ(kernel.waitForSingleObject(e, 0), wait::kTimeout);
}

TEST(KernelObjects, ANameHeldByAnEventIsNotAMutex) {
    VirtualPump pump;
    VirtualKernelObjects kernel(pump);
    Handle e = kernel.createEvent(true, false, "Shared");
    EXPECT_NE(e, 0);
    EXPECT_EQ(kernel.createMutex(false, "Shared"), 0);
}

TEST(KernelObjects, AnEndlessWaitThatNothingEndsIsReported) {
    VirtualPump pump;
    VirtualKernelObjects kernel(pump);
    Handle e = kernel.createEvent(true, false, "");
    EXPECT_THROW(kernel.waitForSingleObject(e, wait::kInfinite), WaitNeverEnds);
}

}  // namespace
}  // namespace fc
