// The graphic display at the end of a line or a connection: it takes the
// driver's records as lines ended by CR LF and sends each answer back as a
// line of its own. The same device sits on a serial wire (a pty) or behind a
// TCP port.
#pragma once

#include <string>

#include "sim/device/serial_device.h"
#include "sim/device/tcp_device.h"
#include "sim/graphic_display.h"

namespace fc::sim {

class GraphicDisplayDevice : public SerialDevice, public TcpDevice {
  public:
    explicit GraphicDisplayDevice(DisplayFaults faults = {}, const LineSettings& settings = {})
        : SerialDevice(settings), display_(faults) {}

    void onReceive(Byte byte) override;
    void onReceive(const std::string& bytes) override;

    GraphicDisplay& display() { return display_; }
    long linesHeard() const { return lines_; }

  private:
    void take(char c, bool serial);

    GraphicDisplay display_;
    std::string line_;
    long lines_ = 0;
};

}  // namespace fc::sim
