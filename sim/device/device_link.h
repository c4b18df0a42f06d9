// What a simulated device is plugged into: a simulated wire on the virtual
// clock, or a real pseudo-terminal on the steady clock. The device speaks
// through it and keeps its own time by it.
#pragma once

#include <functional>
#include <string>

#include "platform/event_source.h"

namespace fc {

class DeviceLink {
  public:
    virtual ~DeviceLink() = default;
    // Bytes from the device towards the program.
    virtual void deviceSend(const std::string& bytes) = 0;
    // Runs `action` `delay` microseconds from now.
    virtual void deviceAfter(Micros delay, std::function<void()> action) = 0;
    virtual Micros now() const = 0;
    // The device is going away.
    virtual void detachDevice() = 0;
};

}  // namespace fc
