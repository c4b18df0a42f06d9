// Serial ports on the virtual clock: each COM number has a simulated wire to a
// device that a test plugs in. What the program sends reaches the device at
// the line's speed, and the device's answers come back the same way.
#pragma once

#include <map>
#include <memory>

#include "platform/serial_port.h"
#include "sim/device/serial_device.h"
#include "virtual/virtual_wire.h"

namespace fc {

class Pump;

class VirtualSerialOpener : public SerialPortOpener {
  public:
    explicit VirtualSerialOpener(Pump& pump) : pump_(pump) {}

    // Plugs `device` into COM n, replacing whatever was there; returns the
    // wire, on which a test switches faults. The device must outlive its use.
    VirtualWire& attach(int commPort, SerialDevice& device);
    // The wire of COM n; std::out_of_range when nothing is plugged in there.
    VirtualWire& wire(int commPort);

    // Error 8002 when no device is plugged into COM n, 8005 when the port is
    // already open.
    std::unique_ptr<SerialPort> open(int commPort) override;

  private:
    Pump& pump_;
    std::map<int, std::shared_ptr<VirtualWire>> wires_;
};

// The program's end of a wire, open for as long as it lives.
class VirtualSerialPort : public SerialPort {
  public:
    explicit VirtualSerialPort(std::shared_ptr<VirtualWire> wire);
    ~VirtualSerialPort() override;
    VirtualSerialPort(const VirtualSerialPort&) = delete;
    VirtualSerialPort& operator=(const VirtualSerialPort&) = delete;

    // Settings and DTR take effect at once; a simulated line refuses nothing.
    void apply(const LineSettings& settings) override { wire_->setProgramSettings(settings); }
    void setDtr(bool on) override { wire_->setProgramDtr(on); }

    void write(const std::string& bytes) override { wire_->programSend(bytes); }
    int outputPending() override { return wire_->programOutputPending(); }
    int inputAvailable() override;
    std::string read() override;
    void discardInput() override { wire_->programReceived().clear(); }

  private:
    std::shared_ptr<VirtualWire> wire_;
};

}  // namespace fc
