// One direction of a simulated serial wire: characters leave one after
// another, back to back, each taking the time its frame takes at the sender's
// speed at the moment it starts. The virtual wire keeps both directions of its
// line with it on the virtual clock, the pty host on the steady clock.
#pragma once

#include <deque>
#include <string>

#include "platform/event_source.h"
#include "platform/serial_port.h"
#include "platform/vb_types.h"

namespace fc {

class WireDirection {
  public:
    struct Character {
        Byte value = 0;
        LineSettings sentWith;  // the sender's frame, which the receiver must match
        Micros end = 0;         // when its last bit has arrived
    };

    // Queues bytes behind the ones already waiting.
    void push(const std::string& bytes);
    // Puts the next queued character on the wire at `at` when the wire is free.
    void startIfIdle(Micros at, const LineSettings& settings, double slowFactor);
    // When the character on the wire has fully arrived; kNever when idle.
    Micros due() const { return onWire_ ? current_.end : kNever; }
    // Takes the character that has arrived and starts the next one straight
    // after it, under the sender's present settings.
    Character finish(const LineSettings& settings, double slowFactor);

    // Characters not yet fully sent: the queued ones and the one on the wire.
    int pending() const { return static_cast<int>(queue_.size()) + (onWire_ ? 1 : 0); }
    // Drops the characters that have not started; the one on the wire goes on.
    void dropQueued() { queue_.clear(); }

  private:
    void start(Micros at, const LineSettings& settings, double slowFactor);

    std::deque<Byte> queue_;
    bool onWire_ = false;
    Character current_;
    // A run of back-to-back characters at one pace. End times are counted
    // from the run's start so that rounding to microseconds never adds up.
    Micros runStart_ = 0;
    long runCount_ = 0;
    int runBits_ = 0;
    int runBaud_ = 0;
    double runSlow_ = 0;
};

}  // namespace fc
