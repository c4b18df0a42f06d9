// A discrete-event clock for tests and dry runs. Nothing here takes real time:
// a 65535 ms time-out is exact and passes in microseconds.
#pragma once

#include <stdexcept>
#include <string>

#include "platform/pump.h"

namespace fc {

// Raised when the program waits and nothing at all is scheduled to happen: no
// timer, no device answer, no operator action. The wait could never end.
class WaitNeverEnds : public std::logic_error {
  public:
    explicit WaitNeverEnds(const std::string& what) : std::logic_error(what) {}
};

class VirtualPump : public Pump {
  public:
    // Runs what is due now; when nothing is, moves the clock to the next
    // scheduled event, but by at most 1 ms, as a real pump blocks at most 1 ms.
    // When nothing at all is scheduled it moves the clock 1 ms; after a
    // minute of such yields the wait is reported as one that never ends.
    void doEvents() override;

    // Moves the clock on by `ms`. The outside world (simulated devices, wires)
    // goes on meanwhile; the program's own events wait for the next doEvents.
    void sleep(int ms) override;

    Micros nowMicros() const override { return now_; }

    // Moves the clock to `when`, letting the outside world run on the way.
    void advanceTo(Micros when);

    // How many doEvents calls found nothing due; a measure of idle spinning.
    long idlePasses() const { return idlePasses_; }

  private:
    Micros now_ = 0;
    long idlePasses_ = 0;
    // Since when the program's yields have found nothing at all scheduled.
    Micros nothingSince_ = kNever;
    static constexpr Micros kNothingLimit = 60'000'000;
};

}  // namespace fc
