// A loopback device: answers every byte it hears with the same byte. It shows
// a line working end to end, and what a device's frame lets through.
#pragma once

#include <string>

#include "sim/device/serial_device.h"

namespace fc {

class EchoDevice : public SerialDevice {
  public:
    explicit EchoDevice(const LineSettings& settings = {}) : SerialDevice(settings) {}

    void onReceive(Byte byte) override;

    // Everything heard so far, in order.
    const std::string& heard() const { return heard_; }

  private:
    std::string heard_;
};

}  // namespace fc
