// The simulated communications driver as a process on a pump's clock: once
// launched it comes up after a while, opens the named event
// "Evento_Recursos_KorvaCOM", and then every tick takes a pending command
// (signalling the event when it has) and, while started, sends one line of
// the transmit file. It goes on while the program sleeps, as another process
// would, and ends on "G", closing its event.
#pragma once

#include <filesystem>
#include <memory>

#include "platform/event_source.h"
#include "platform/kernel_objects.h"
#include "sim/korvacom_driver.h"

namespace fc {
class Pump;
}

namespace fc::sim {

struct KorvacomTiming {
    int startupMs = 1500;  // from its launch to its first look at the files
    int tickMs = 20;       // between two looks: one command, one line
};

class KorvacomOnPump : public EventSource {
  public:
    using Timing = KorvacomTiming;

    KorvacomOnPump(Pump& pump, KernelObjects& kernel, std::filesystem::path folder,
                   KorvacomDriver::Faults faults = {}, GraphicDisplay::Faults display = {},
                   Timing timing = {});
    ~KorvacomOnPump() override;
    KorvacomOnPump(const KorvacomOnPump&) = delete;
    KorvacomOnPump& operator=(const KorvacomOnPump&) = delete;

    // Starts the process (again, after it ended: a fresh driver, the same
    // display faults).
    void launch();
    bool running() const { return running_; }
    int launches() const { return launches_; }
    // The driver of the last launch.
    KorvacomDriver& driver() { return *driver_; }
    // True while the driver holds its handle to the named event.
    bool holdsEvent() const { return event_ != 0; }

    Micros nextDue() const override { return running_ ? due_ : kNever; }
    void runDue(Micros now) override;
    bool runsWhileAsleep() const override { return true; }

  private:
    void end();

    Pump& pump_;
    KernelObjects& kernel_;
    std::filesystem::path folder_;
    KorvacomDriver::Faults faults_;
    GraphicDisplay::Faults display_;
    Timing timing_;
    std::unique_ptr<KorvacomDriver> driver_;
    bool running_ = false;
    bool up_ = false;
    int launches_ = 0;
    Handle event_ = 0;
    Micros due_ = kNever;
};

}  // namespace fc::sim
