// The wait of a test that lets the program's events run: the pump runs until
// `done` holds or `patienceMs` has passed on its clock.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/pump.h"

namespace fc {

// True when `done` came within the patience.
inline bool pumpUntil(Pump& pump, const std::function<bool()>& done, std::int64_t patienceMs) {
    std::int64_t limit = pump.nowMicros() + patienceMs * 1000;
    while (!done()) {
        if (pump.nowMicros() >= limit)
            return false;
        pump.doEvents();
    }
    return true;
}

}  // namespace fc
