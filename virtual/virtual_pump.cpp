#include "virtual/virtual_pump.h"

#include <algorithm>

namespace fc {

void VirtualPump::doEvents() {
    if (runDueSources(now_, true) > 0)
        return;
    ++idlePasses_;
    Micros next = earliestDue(false);
    if (next == kNever) {
        // One yield with nothing to do passes a millisecond, as a real pump's
        // turn does; a wait that goes on finding nothing can never end.
        if (nothingSince_ == kNever)
            nothingSince_ = now_;
        if (now_ - nothingSince_ >= kNothingLimit) {
            throw WaitNeverEnds("the program waits at t=" + std::to_string(nothingSince_ / 1000) +
                                " ms, but nothing is scheduled to happen: the wait can never end");
        }
        advanceTo(now_ + 1000);
        return;
    }
    nothingSince_ = kNever;
    advanceTo(std::min(next, now_ + 1000));
    runDueSources(now_, true);
}

void VirtualPump::sleep(int ms) {
    if (ms > 0)
        advanceTo(now_ + Micros(ms) * 1000);
}

void VirtualPump::advanceTo(Micros when) {
    // Let the world's events fall due in order on the way, so that a device
    // answers at the moment it would, even while the program sleeps.
    for (;;) {
        Micros next = earliestDue(true);
        if (next > when)
            break;
        now_ = std::max(now_, next);
        if (runDueSources(now_, false) == 0)
            break;  // a source that is due but does nothing
    }
    now_ = std::max(now_, when);
}

}  // namespace fc
