#include "sim/korvacom_on_pump.h"

#include "platform/pump.h"

namespace fc::sim {

namespace {
constexpr const char* kEventName = "Evento_Recursos_KorvaCOM";
}  // namespace

KorvacomOnPump::KorvacomOnPump(Pump& pump, KernelObjects& kernel, std::filesystem::path folder,
                               KorvacomDriver::Faults faults, GraphicDisplay::Faults display,
                               Timing timing)
    : pump_(pump),
      kernel_(kernel),
      folder_(std::move(folder)),
      faults_(faults),
      display_(display),
      timing_(timing),
      driver_(std::make_unique<KorvacomDriver>(folder_, faults_, display_)) {}

KorvacomOnPump::~KorvacomOnPump() {
    if (running_)
        pump_.remove(*this);
}

void KorvacomOnPump::launch() {
    if (running_)
        return;
    driver_ = std::make_unique<KorvacomDriver>(folder_, faults_, display_);
    running_ = true;
    up_ = false;
    ++launches_;
    due_ = pump_.nowMicros() + Micros{timing_.startupMs} * 1000;
    pump_.add(*this);
}

void KorvacomOnPump::runDue(Micros now) {
    if (!up_) {
        up_ = true;
        driver_->readSwitches();
        event_ = kernel_.createEvent(true, false, kEventName);
    }
    char command = driver_->takeCommand();
    if (command != 0 && event_ != 0)
        kernel_.setEvent(event_);
    if (driver_->ended()) {
        end();
        return;
    }
    driver_->sendNext();
    due_ = now + Micros{timing_.tickMs} * 1000;
}

void KorvacomOnPump::end() {
    if (event_ != 0)
        kernel_.closeHandle(event_);
    event_ = 0;
    running_ = false;
    due_ = kNever;
    pump_.remove(*this);
}

}  // namespace fc::sim
