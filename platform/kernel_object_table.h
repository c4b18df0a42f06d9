// The handle side of the kernel objects, common to the real and the virtual
// kind: handles are numbers given out by this table, and one named object is
// shared by every handle opened on its name while any of them stays open.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/kernel_objects.h"

namespace fc {

// One event or mutex, whatever stands behind it.
class KernelObject {
  public:
    virtual ~KernelObject() = default;
    virtual bool isEvent() const = 0;
    // kObject0, kTimeout, kAbandoned or kFailed.
    virtual Long wait(Long milliseconds) = 0;
    virtual bool set() { return false; }
    virtual bool reset() { return false; }
    virtual bool release() { return false; }
};

class KernelObjectTable : public KernelObjects {
  public:
    Handle createEvent(bool manualReset, bool initialState, const std::string& name) override;
    Handle createMutex(bool initialOwner, const std::string& name) override;
    Long setEvent(Handle handle) override;
    Long resetEvent(Handle handle) override;
    Long releaseMutex(Handle handle) override;
    Long waitForSingleObject(Handle handle, Long milliseconds) override;
    Long closeHandle(Handle handle) override;

  protected:
    // Make a new object, or open the one of that name that another process
    // holds; nullptr on failure.
    virtual std::shared_ptr<KernelObject> makeEvent(bool manualReset, bool initialState,
                                                    const std::string& name) = 0;
    virtual std::shared_ptr<KernelObject> makeMutex(bool initialOwner, const std::string& name) = 0;

  private:
    Handle open(bool wantEvent, const std::string& name,
                const std::function<std::shared_ptr<KernelObject>()>& make);
    KernelObject* find(Handle handle) const;

    std::map<Handle, std::shared_ptr<KernelObject>> handles_;
    std::map<std::string, std::weak_ptr<KernelObject>> named_;
    Handle next_ = 0;
};

}  // namespace fc
