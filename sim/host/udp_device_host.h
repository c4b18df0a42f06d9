// A simulated device behind a real UDP port: every datagram that comes to
// the port is handed to the device with its sender; the device answers
// through send(). The port's arrivals wake the pump.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/event_source.h"
#include "platform/udp_transport.h"

namespace fc {

class Pump;

class UdpDeviceHost : public EventSource {
  public:
    // Binds every local address on `port` (0: any free one). Throws
    // std::runtime_error when the port cannot be had.
    UdpDeviceHost(Pump& pump, int port, std::function<void(const Datagram&)> onDatagram);
    ~UdpDeviceHost() override;
    UdpDeviceHost(const UdpDeviceHost&) = delete;
    UdpDeviceHost& operator=(const UdpDeviceHost&) = delete;

    int port() const;
    void send(const Ipv4& to, int port, const std::string& bytes);

    Micros nextDue() const override { return kNever; }
    void runDue(Micros now) override;
    int wakeFd() const override;
    bool runsWhileAsleep() const override { return true; }

  private:
    Pump& pump_;
    std::unique_ptr<UdpTransport> socket_;
    std::function<void(const Datagram&)> onDatagram_;
};

}  // namespace fc
