#include <gtest/gtest.h>

#include "platform/event_source.h"
#include "platform/linux/real_pump.h"
#include "virtual/virtual_pump.h"
#include "platform/window_timer.h"

namespace fc {
namespace {

class DueAt : public EventSource {
  public:
    explicit DueAt(Micros when) : when_(when) {}
    Micros nextDue() const override { return when_; }
    void runDue(Micros) override {
        ++runs;
        when_ = kNever;
    }
    int runs = 0;

  private:
    Micros when_;
};

TEST(PendingEvents, RunWhatIsDueNowWithoutMovingTheVirtualClock) {
    VirtualPump pump;
    DueAt now(0), later(5000);
    pump.add(now);
    pump.add(later);
    pump.doPendingEvents();
    EXPECT_EQ(now.runs, 1);
    EXPECT_EQ(later.runs, 0);
    EXPECT_EQ(pump.nowMicros(), 0);
}

TEST(PendingEvents, ReturnAtOnceWhenNothingIsScheduled) {
    VirtualPump pump;
    EXPECT_NO_THROW(pump.doPendingEvents());
    EXPECT_EQ(pump.nowMicros(), 0);
}

TEST(PendingEvents, RunADueWindowTimer) {
    VirtualPump pump;
    WindowTimer timer(pump, "t");
    int fired = 0;
    timer.onTimer = [&] { ++fired; };
    timer.setInterval(10);
    timer.setEnabled(true);
    pump.doPendingEvents();
    EXPECT_EQ(fired, 0);
    pump.sleep(10);
    pump.doPendingEvents();
    EXPECT_EQ(fired, 1);
}

TEST(PendingEvents, RunDueSourcesOnTheRealPump) {
    RealPump pump;
    DueAt now(0);
    pump.add(now);
    pump.doPendingEvents();
    EXPECT_EQ(now.runs, 1);
}

}  // namespace
}  // namespace fc
