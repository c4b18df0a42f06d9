// Something the event pump runs: a window timer, a serial or socket event, a
// simulated device, an operator's scripted action.
#pragma once

#include <cstdint>
#include <limits>

namespace fc {

using Micros = std::int64_t;
constexpr Micros kNever = std::numeric_limits<Micros>::max();
// What a source that has work now returns: the pump's epoch, which is never
// after any "now", however the clock has moved since the pump read it.
constexpr Micros kDueNow = 0;

class EventSource {
  public:
    virtual ~EventSource() = default;

    // Pump time (microseconds) at which this source next has work; kNever when
    // it has none scheduled. A source with work now returns a time <= now.
    virtual Micros nextDue() const = 0;

    // Does the work that is due at `now`. May pump events itself.
    virtual void runDue(Micros now) = 0;

    // A file descriptor whose readiness wakes a real pump, or -1.
    virtual int wakeFd() const { return -1; }

    // True for the outside world (devices, wires): it goes on while the
    // program sleeps. Program-side sources (timers, control events, operator
    // actions) run only when the program pumps its events.
    virtual bool runsWhileAsleep() const { return false; }
};

}  // namespace fc
