#include "virtual/virtual_kernel_objects.h"

#include "platform/pump.h"
#include "virtual/virtual_pump.h"

namespace fc {

namespace {

// Sleeps the pump in steps of 1 ms until `ready` holds or the time is out.
// True when `ready` came first.
bool sleepUntil(Pump& pump, Long milliseconds, const std::function<bool()>& ready) {
    if (ready())
        return true;
    bool endless = milliseconds < 0;
    long long deadline =
        pump.now() + (endless ? VirtualKernelObjects::kEndlessWaitLimitMs : milliseconds);
    while (pump.now() < deadline) {
        pump.sleep(1);
        if (ready())
            return true;
    }
    if (endless) {
        throw WaitNeverEnds("an endless wait on a kernel object at t=" +
                            std::to_string(pump.now()) + " ms: nothing ever signals it");
    }
    return false;
}

class VirtualEvent : public KernelObject {
  public:
    VirtualEvent(Pump& pump, bool manualReset, bool initialState)
        : pump_(pump), manual_(manualReset), signalled_(initialState) {}
    bool isEvent() const override { return true; }
    Long wait(Long milliseconds) override {
        if (!sleepUntil(pump_, milliseconds, [this] { return signalled_; }))
            return wait::kTimeout;
        if (!manual_)
            signalled_ = false;
        return wait::kObject0;
    }
    bool set() override {
        signalled_ = true;
        return true;
    }
    bool reset() override {
        signalled_ = false;
        return true;
    }

  private:
    Pump& pump_;
    bool manual_;
    bool signalled_;
};

// One program, one thread: the mutex is always there for the taking, again
// and again, and must be released as often as it was taken.
class VirtualMutex : public KernelObject {
  public:
    explicit VirtualMutex(bool initialOwner) : owned_(initialOwner ? 1 : 0) {}
    bool isEvent() const override { return false; }
    Long wait(Long) override {
        ++owned_;
        return wait::kObject0;
    }
    bool release() override {
        if (owned_ == 0)
            return false;
        --owned_;
        return true;
    }

  private:
    int owned_;
};

}  // namespace

VirtualKernelObjects::VirtualKernelObjects(Pump& pump) : pump_(pump) {}

std::shared_ptr<KernelObject> VirtualKernelObjects::makeEvent(bool manualReset, bool initialState,
                                                              const std::string&) {
    return std::make_shared<VirtualEvent>(pump_, manualReset, initialState);
}

std::shared_ptr<KernelObject> VirtualKernelObjects::makeMutex(bool initialOwner,
                                                              const std::string&) {
    return std::make_shared<VirtualMutex>(initialOwner);
}

}  // namespace fc
