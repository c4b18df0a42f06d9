#include "platform/window_timer.h"

#include "platform/pump.h"
#include "platform/runtime_error.h"

namespace fc {

WindowTimer::WindowTimer(Pump& pump, std::string name) : pump_(pump), name_(std::move(name)) {
    pump_.add(*this);
}

WindowTimer::~WindowTimer() {
    pump_.remove(*this);
}

void WindowTimer::setInterval(int ms) {
    if (ms < 0 || ms > kMaxInterval)
        throw RuntimeError(err::kInvalidPropertyValue);
    interval_ = ms;
    started_ = pump_.nowMicros();
}

void WindowTimer::setEnabled(bool enabled) {
    if (enabled && !enabled_)
        started_ = pump_.nowMicros();
    enabled_ = enabled;
}

Micros WindowTimer::nextDue() const {
    if (!enabled_ || interval_ == 0)
        return kNever;
    return started_ + Micros(interval_) * 1000;
}

void WindowTimer::runDue(Micros now) {
    started_ = now;
    if (onTimer)
        onTimer();
}

}  // namespace fc
