// The far end of a simulated serial wire: a device with its own line
// settings. It hears each character when the character's last bit has
// arrived, and what it sends travels back at its line's speed.
#pragma once

#include <functional>
#include <string>

#include "platform/event_source.h"
#include "platform/serial_port.h"
#include "platform/vb_types.h"

namespace fc {

class DeviceLink;

class SerialDevice {
  public:
    explicit SerialDevice(const LineSettings& settings = {}) : settings_(settings) {}
    virtual ~SerialDevice();
    SerialDevice(const SerialDevice&) = delete;
    SerialDevice& operator=(const SerialDevice&) = delete;

    // The device's own speed and frame. A character heard under other
    // settings than it was sent with is garbage, and is lost. Changes apply to
    // the characters that start after them.
    const LineSettings& settings() const { return settings_; }
    void setSettings(const LineSettings& settings) { settings_ = settings; }

    // One character that reached the device, with only as many bits as the
    // device's frame carries (a 7-bit device never sees bit 8).
    virtual void onReceive(Byte byte) = 0;
    // The program raised or lowered DTR (or the cable was pulled or plugged).
    virtual void onDtrChanged(bool /*on*/) {}

    bool attached() const { return wire_ != nullptr; }
    // Plugs the device into `link` (or unplugs it with nullptr). The wire or
    // host does this; a device is in one link at a time.
    void plugInto(DeviceLink* link) { wire_ = link; }
    DeviceLink* link() const { return wire_; }

  protected:
    // Sends bytes towards the program, one character after another at the
    // device's speed. Without a wire they go nowhere.
    void send(const std::string& bytes);
    // Runs `action` `delay` microseconds from now on the wire's clock: the
    // device's own timing (an erase that takes seconds, a late answer).
    void after(Micros delay, std::function<void()> action);
    // The wire's clock, in microseconds.
    Micros now() const;

  private:
    DeviceLink* wire_ = nullptr;
    LineSettings settings_;
};

}  // namespace fc
