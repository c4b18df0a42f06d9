// The kernel's named objects on Linux, shared between processes.
//
// An object named N is the named POSIX semaphore "/N" (the file
// /dev/shm/sem.N), any "/" or "\" in the name turned into "_":
//
// - an event is signalled while the semaphore's value is above 0. Another
//   process signals it by opening the semaphore and posting it when its value
//   is 0 (sem_open + sem_post is enough); resetting takes the value back to 0.
//   A wait on a manual-reset event takes the value and gives it back, so the
//   event stays signalled; an automatic one stays taken.
// - a mutex is free while the value is 1; obtaining it takes the value,
//   releasing it gives it back. A thread may obtain its mutex again (it must
//   then release it as often). Abandonment is not detected.
//
// A semaphore outlives the processes that used it, where a kernel object dies
// with its last handle. So that a stale signal does not cut short a later
// wait, every process holding a handle keeps a shared lock on the companion
// file "<lock folder>/firmcast-handles.N"; the first to open the object while
// nobody else holds it (an exclusive lock succeeds) starts it afresh with the
// initial state asked for, and the last to let go of it (an exclusive lock
// succeeds again) removes the semaphore and the companion file, so that
// nothing of the object is left once no process holds it.
#pragma once

#include <string>

#include "platform/kernel_object_table.h"

namespace fc {

class PosixKernelObjects : public KernelObjectTable {
  public:
    // `namePrefix` goes before every name (tests use one of their own so that
    // runs side by side do not meet); `lockFolder` holds the companion files.
    explicit PosixKernelObjects(std::string namePrefix = "", std::string lockFolder = "/dev/shm");

    // The semaphore's name for an object's name: "/" + prefix + name.
    std::string semaphoreName(const std::string& name) const;

  protected:
    std::shared_ptr<KernelObject> makeEvent(bool manualReset, bool initialState,
                                            const std::string& name) override;
    std::shared_ptr<KernelObject> makeMutex(bool initialOwner, const std::string& name) override;

  private:
    std::string prefix_;
    std::string lockFolder_;
};

}  // namespace fc
