// The pump of the real programs, on the steady clock.
#pragma once

#include "platform/pump.h"

namespace fc {

class RealPump : public Pump {
  public:
    RealPump();

    // Runs what is due. When nothing is, the first few yields in a row only
    // look at the lines and sockets, so that a yield between two pieces of
    // work costs no time; after them it blocks in ppoll() until the next
    // timer deadline, at most 1 ms, so that a waiting loop never spins.
    void doEvents() override;
    // Polls the lines and sockets without blocking, then runs what is due.
    void doPendingEvents() override;
    void sleep(int ms) override;
    Micros nowMicros() const override;

  protected:
    // Waits at most `timeout` microseconds for a wake descriptor; returns the
    // ready ones. The GUI pump extends the wait to the toolkit's events.
    virtual std::vector<int> waitForWake(Micros timeout);

  private:
    // Yields in a row that returned at once without finding anything to do.
    static constexpr int kQuickYields = 3;
    int idleYields_ = 0;
    Micros origin_;
};

}  // namespace fc
