#include "platform/kernel_object_table.h"

#include <iterator>

namespace fc {

Handle KernelObjectTable::open(bool wantEvent, const std::string& name,
                               const std::function<std::shared_ptr<KernelObject>()>& make) {
    std::shared_ptr<KernelObject> object;
    auto known = named_.find(name);
    if (!name.empty() && known != named_.end())
        object = known->second.lock();
    if (object && object->isEvent() != wantEvent)
        return 0;  // the name is taken by the other kind
    if (!object)
        object = make();
    if (!object)
        return 0;
    if (!name.empty())
        named_[name] = object;
    // Handles are multiples of 4, as the kernel gives them; never 0.
    next_ += 4;
    handles_[next_] = object;
    return next_;
}

Handle KernelObjectTable::createEvent(bool manualReset, bool initialState,
                                      const std::string& name) {
    return open(true, name, [&] { return makeEvent(manualReset, initialState, name); });
}

Handle KernelObjectTable::createMutex(bool initialOwner, const std::string& name) {
    return open(false, name, [&] { return makeMutex(initialOwner, name); });
}

KernelObject* KernelObjectTable::find(Handle handle) const {
    auto it = handles_.find(handle);
    return it == handles_.end() ? nullptr : it->second.get();
}

Long KernelObjectTable::setEvent(Handle handle) {
    KernelObject* object = find(handle);
    return (object && object->isEvent() && object->set()) ? 1 : 0;
}

Long KernelObjectTable::resetEvent(Handle handle) {
    KernelObject* object = find(handle);
    return (object && object->isEvent() && object->reset()) ? 1 : 0;
}

Long KernelObjectTable::releaseMutex(Handle handle) {
    KernelObject* object = find(handle);
    return (object && !object->isEvent() && object->release()) ? 1 : 0;
}

Long KernelObjectTable::waitForSingleObject(Handle handle, Long milliseconds) {
    KernelObject* object = find(handle);
    return object ? object->wait(milliseconds) : wait::kFailed;
}

Long KernelObjectTable::closeHandle(Handle handle) {
    auto it = handles_.find(handle);
    if (it == handles_.end())
        return 0;
    handles_.erase(it);
    // Forget names whose object has gone with its last handle, so that the
    // next creation of that name starts afresh.
    for (auto n = named_.begin(); n != named_.end();) {
        n = n->second.expired() ? named_.erase(n) : std::next(n);
    }
    return 1;
}

}  // namespace fc
