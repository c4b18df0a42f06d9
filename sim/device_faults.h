// Faults a simulated device can be told to show, each at a chosen frame: the
// frame number of a numbered-line scale (H0000 is 0), or, for a banked
// device, the place of the frame among all it has received (0 the first).
#pragma once

#include <map>

namespace fc {

struct DeviceFaults {
    std::map<long, bool> silentAt;     // no answer to this frame
    std::map<long, char> wrongByteAt;  // this byte instead of the answer
    std::map<long, int> refusals;      // refuse this frame so many times (0x15)
    long closeAt = -1;                 // the line drops when this frame arrives
    // From this frame on the device says nothing more (the line is gone).
    bool closed = false;
};

}  // namespace fc
