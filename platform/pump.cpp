#include "platform/pump.h"

#include <algorithm>

namespace fc {

void Pump::add(EventSource& source) {
    if (!isRegistered(&source))
        sources_.push_back(&source);
}

void Pump::remove(EventSource& source) {
    sources_.erase(std::remove(sources_.begin(), sources_.end(), &source), sources_.end());
}

void Pump::defer(std::exception_ptr error) {
    if (!deferred_)
        deferred_ = error;
}

void Pump::doEventsForOperator() {
    if (operatorWatch_)
        operatorWatch_();
    doEvents();
}

void Pump::doPendingEvents() {
    runDueSources(nowMicros(), true);
}

bool Pump::isRegistered(const EventSource* source) const {
    return std::find(sources_.begin(), sources_.end(), source) != sources_.end();
}

int Pump::runDueSources(Micros now, bool programSide, const std::vector<int>& readyFds) {
    int ran = 0;
    for (EventSource* source : snapshot()) {
        if (!isRegistered(source))
            continue;  // removed by an earlier handler
        if (!programSide && !source->runsWhileAsleep())
            continue;
        // A handler that pumps events must not re-enter itself, as a window
        // timer's handler is not re-entered by its own timer.
        if (std::find(running_.begin(), running_.end(), source) != running_.end())
            continue;
        bool ready = source->nextDue() <= now;
        int fd = source->wakeFd();
        if (!ready && fd >= 0)
            ready = std::find(readyFds.begin(), readyFds.end(), fd) != readyFds.end();
        if (!ready)
            continue;
        running_.push_back(source);
        try {
            source->runDue(now);
        } catch (...) {
            running_.erase(std::find(running_.begin(), running_.end(), source));
            throw;
        }
        running_.erase(std::find(running_.begin(), running_.end(), source));
        ++ran;
    }
    throwDeferred();
    return ran;
}

Micros Pump::earliestDue(bool worldOnly) const {
    Micros earliest = kNever;
    for (const EventSource* source : sources_) {
        if (worldOnly && !source->runsWhileAsleep())
            continue;
        if (std::find(running_.begin(), running_.end(), source) != running_.end())
            continue;
        earliest = std::min(earliest, source->nextDue());
    }
    return earliest;
}

void Pump::throwDeferred() {
    if (!deferred_)
        return;
    std::exception_ptr error = deferred_;
    deferred_ = nullptr;
    std::rethrow_exception(error);
}

}  // namespace fc
