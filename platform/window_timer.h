// A window timer: its handler runs only from the event pump, when the interval
// has passed since it was enabled or last fired. An interval of 0 never fires.
#pragma once

#include <functional>
#include <string>

#include "platform/event_source.h"

namespace fc {

class Pump;

class WindowTimer : public EventSource {
  public:
    static constexpr int kMaxInterval = 65535;

    WindowTimer(Pump& pump, std::string name);
    ~WindowTimer() override;
    WindowTimer(const WindowTimer&) = delete;
    WindowTimer& operator=(const WindowTimer&) = delete;

    const std::string& name() const { return name_; }

    // Changing the interval or enabling restarts the count. An interval above
    // 65535 ms is refused with run-time error 380, as a window timer refuses it.
    void setInterval(int ms);
    int interval() const { return interval_; }
    void setEnabled(bool enabled);
    bool enabled() const { return enabled_; }

    std::function<void()> onTimer;

    Micros nextDue() const override;
    void runDue(Micros now) override;

  private:
    Pump& pump_;
    std::string name_;
    int interval_ = 0;
    bool enabled_ = false;
    Micros started_ = 0;
};

}  // namespace fc
