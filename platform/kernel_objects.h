// The kernel's named objects that the system shares with the display driver:
// events and mutexes behind 32-bit handles, with the results and special
// values of the Windows calls. A null or unknown handle makes every call
// fail at once: a wait returns WAIT_FAILED, the others return 0 (FALSE).
#pragma once

#include <string>

#include "platform/vb_types.h"

namespace fc {

using Handle = Long;  // 0 is the null handle

namespace wait {
constexpr Long kObject0 = 0;       // WAIT_OBJECT_0: the object was signalled or obtained
constexpr Long kAbandoned = 0x80;  // WAIT_ABANDONED
constexpr Long kTimeout = 0x102;   // WAIT_TIMEOUT
constexpr Long kFailed = -1;       // WAIT_FAILED (0xFFFFFFFF)
constexpr Long kInfinite = -1;     // INFINITE as a time-out
}  // namespace wait

class KernelObjects {
  public:
    virtual ~KernelObjects() = default;

    // CreateEventA / CreateMutexA: a handle to the named object, opening it
    // when it exists already (the initial state then has no effect), creating
    // it otherwise; an empty name makes an unnamed object. 0 on failure.
    virtual Handle createEvent(bool manualReset, bool initialState, const std::string& name) = 0;
    virtual Handle createMutex(bool initialOwner, const std::string& name) = 0;

    virtual Long setEvent(Handle handle) = 0;
    virtual Long resetEvent(Handle handle) = 0;
    virtual Long releaseMutex(Handle handle) = 0;
    // WaitForSingleObject: kObject0, kTimeout, kAbandoned or kFailed. A wait
    // blocks the thread: no events of the program run meanwhile.
    virtual Long waitForSingleObject(Handle handle, Long milliseconds) = 0;
    virtual Long closeHandle(Handle handle) = 0;
};

}  // namespace fc
