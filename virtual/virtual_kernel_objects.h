// The kernel's named objects on the virtual clock. A wait is a plain sleep of
// the pump, so the simulated world goes on meanwhile and the program's events
// do not run; it ends early when the world signals the event. A simulated
// driver opens the same named event through this same table and sets it, as
// the real driver would through the kernel.
#pragma once

#include "platform/kernel_object_table.h"

namespace fc {

class Pump;

class VirtualKernelObjects : public KernelObjectTable {
  public:
    explicit VirtualKernelObjects(Pump& pump);

    // An endless wait that nothing ends could never return; past this much
    // virtual time, well beyond the system's longest wait (180 s), it is
    // reported as a wait that never ends.
    static constexpr Long kEndlessWaitLimitMs = 10 * 60 * 1000;

  protected:
    std::shared_ptr<KernelObject> makeEvent(bool manualReset, bool initialState,
                                            const std::string& name) override;
    std::shared_ptr<KernelObject> makeMutex(bool initialOwner, const std::string& name) override;

  private:
    Pump& pump_;
};

}  // namespace fc
