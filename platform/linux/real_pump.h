// The pump of the real programs, on the steady clock.
#pragma once

#include "platform/pump.h"

namespace fc {

class RealPump : public Pump {
  public:
    RealPump();

    // Runs what is due; when nothing is, blocks in ppoll() on the open lines
    // and sockets until the next timer deadline, at most 1 ms. Never spins.
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
    Micros origin_;
};

}  // namespace fc
