#include "virtual/virtual_wire.h"

#include <algorithm>
#include <stdexcept>

#include "platform/pump.h"
#include "platform/runtime_error.h"
#include "sim/device/serial_device.h"

namespace fc {

namespace {

bool sameFrame(const LineSettings& a, const LineSettings& b) {
    return a.baud == b.baud && a.dataBits == b.dataBits && a.parity == b.parity;
}

Byte dataBitsOf(Byte value, int dataBits) {
    return static_cast<Byte>(value & ((1u << dataBits) - 1u));
}

}  // namespace

VirtualWire::VirtualWire(Pump& pump, SerialDevice& device) : pump_(pump), device_(&device) {
    if (device.link())
        device.link()->detachDevice();
    device.plugInto(this);
    pump_.add(*this);
}

VirtualWire::~VirtualWire() {
    pump_.remove(*this);
    if (device_)
        device_->plugInto(nullptr);
}

void VirtualWire::setSilent(bool silent) {
    deaf_ = silent;
    mute_ = silent;
}

void VirtualWire::disconnect() {
    if (!connected_)
        return;
    if (dtr_)
        tellDeviceDtr(false);
    connected_ = false;
}

void VirtualWire::reconnect() {
    if (connected_)
        return;
    connected_ = true;
    if (dtr_)
        tellDeviceDtr(true);
}

void VirtualWire::setSlowFactor(double factor) {
    if (!(factor > 0))
        throw std::invalid_argument("a wire's slow factor must be above 0");
    slowFactor_ = factor;
}

void VirtualWire::setReceiveFifo(int triggerLevel) {
    flushFifo();
    fifoTrigger_ = std::max(0, triggerLevel);
}

void VirtualWire::flushFifo() {
    received_ += fifo_;
    fifo_.clear();
    fifoTimeout_ = kNever;
}

Micros VirtualWire::fifoDue() const {
    return fifo_.empty() ? kNever : fifoTimeout_;
}

void VirtualWire::openProgramEnd() {
    if (programOpen_)
        throw RuntimeError(err::kPortAlreadyOpen);
    programOpen_ = true;
    received_.clear();
    fifo_.clear();
    fifoTimeout_ = kNever;
}

void VirtualWire::closeProgramEnd() {
    setProgramDtr(false);
    toDevice_.dropQueued();
    received_.clear();
    fifo_.clear();
    fifoTimeout_ = kNever;
    programOpen_ = false;
}

void VirtualWire::setProgramDtr(bool on) {
    if (on == dtr_)
        return;
    dtr_ = on;
    if (connected_)
        tellDeviceDtr(on);
}

void VirtualWire::tellDeviceDtr(bool on) {
    if (device_)
        device_->onDtrChanged(on);
}

void VirtualWire::programSend(const std::string& bytes) {
    toDevice_.push(bytes);
    toDevice_.startIfIdle(now(), programSettings_, slowFactor_);
}

void VirtualWire::deviceSend(const std::string& bytes) {
    if (!device_)
        return;
    toProgram_.push(bytes);
    toProgram_.startIfIdle(now(), device_->settings(), slowFactor_);
}

void VirtualWire::deviceAfter(Micros delay, std::function<void()> action) {
    deviceActions_.emplace(now() + std::max<Micros>(0, delay), std::move(action));
}

void VirtualWire::detachDevice() {
    if (device_)
        device_->plugInto(nullptr);
    device_ = nullptr;
    deviceActions_.clear();
}

Micros VirtualWire::now() const {
    return eventTime_ >= 0 ? eventTime_ : pump_.nowMicros();
}

Micros VirtualWire::nextDue() const {
    Micros next = std::min({toDevice_.due(), toProgram_.due(), fifoDue()});
    if (!deviceActions_.empty())
        next = std::min(next, deviceActions_.begin()->first);
    return next;
}

// Runs everything due by `now` in time order: characters arriving at either
// end and the device's own timed actions, each of which may start more.
void VirtualWire::runDue(Micros now) {
    struct ClearEventTime {
        Micros& time;
        ~ClearEventTime() { time = -1; }
    } clear{eventTime_};
    for (;;) {
        Micros toDevice = toDevice_.due();
        Micros toProgram = toProgram_.due();
        Micros next = nextDue();
        if (next > now)
            break;
        eventTime_ = next;
        if (toDevice == next) {
            deliverToDevice(toDevice_.finish(programSettings_, slowFactor_));
        } else if (fifoDue() == next && toProgram != next) {
            flushFifo();
        } else if (toProgram == next) {
            const LineSettings& sender = device_ ? device_->settings() : programSettings_;
            deliverToProgram(toProgram_.finish(sender, slowFactor_));
        } else {
            runFirstAction();
        }
    }
}

void VirtualWire::runFirstAction() {
    auto first = deviceActions_.begin();
    std::function<void()> action = std::move(first->second);
    deviceActions_.erase(first);
    action();
}

void VirtualWire::deliverToDevice(const WireDirection::Character& c) {
    if (!device_ || !connected_ || deaf_)
        return;
    if (!sameFrame(c.sentWith, device_->settings()))
        return;
    device_->onReceive(dataBitsOf(c.value, c.sentWith.dataBits));
}

void VirtualWire::deliverToProgram(const WireDirection::Character& c) {
    if (!programOpen_ || !connected_ || mute_)
        return;
    if (!sameFrame(c.sentWith, programSettings_))
        return;
    const char value = static_cast<char>(dataBitsOf(c.value, c.sentWith.dataBits));
    if (fifoTrigger_ == 0) {
        received_ += value;
        return;
    }
    fifo_ += value;
    if (static_cast<int>(fifo_.size()) >= fifoTrigger_) {
        flushFifo();
        return;
    }
    // Four character times of quiet, at the program's own speed.
    const double characterMicros =
        1e6 * programSettings_.bitsPerCharacter() / std::max(1, programSettings_.baud);
    fifoTimeout_ = c.end + static_cast<Micros>(4 * characterMicros * slowFactor_);
}

}  // namespace fc
