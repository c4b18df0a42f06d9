#include "sim/device/serial_device.h"

#include "sim/device/device_link.h"

namespace fc {

SerialDevice::~SerialDevice() {
    if (wire_)
        wire_->detachDevice();
}

void SerialDevice::send(const std::string& bytes) {
    if (wire_)
        wire_->deviceSend(bytes);
}

void SerialDevice::after(Micros delay, std::function<void()> action) {
    if (wire_)
        wire_->deviceAfter(delay, std::move(action));
}

Micros SerialDevice::now() const {
    return wire_ ? wire_->now() : 0;
}

}  // namespace fc
