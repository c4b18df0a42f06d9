// A simulated network on the virtual clock, with a PC that holds the
// program's sockets and scales that listen on the loader's port.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include "sim/device/tcp_device.h"
#include "virtual/virtual_network.h"
#include "virtual/virtual_pump.h"
#include "platform/window_timer.h"
#include "support/pump_until.h"

namespace fc::nettest {

constexpr int kScalePort = 3000;

inline Ipv4 scaleIp(int n) {
    return Ipv4{10, 77, 0, static_cast<std::uint8_t>(10 + n)};
}
inline std::string scaleIpText(int n) {
    return "10.77.0." + std::to_string(10 + n);
}
inline std::array<std::uint8_t, 6> scaleMac(int n) {
    return {0x02, 0x46, 0x43, 0x00, 0x00, static_cast<std::uint8_t>(0x10 + n)};
}
inline std::string scaleMacText(int n) {
    char last[3];
    std::snprintf(last, sizeof last, "%02X", 0x10 + n);
    return std::string("0246430000") + last;
}

// A device that keeps what it reads, and answers when told to.
class KeepingDevice : public TcpDevice {
  public:
    void onReceive(const std::string& bytes) override { received += bytes; }
    void onProgramClosed() override { programClosed = true; }
    using TcpDevice::closeConnection;
    using TcpDevice::resetConnection;
    using TcpDevice::send;

    std::string received;
    bool programClosed = false;
};

struct NetworkRig {
    VirtualPump pump;
    VirtualNetwork net{pump};
    // The device of the last connection accepted by each scale.
    KeepingDevice* lastDevice = nullptr;

    // A scale that is up and listens on the loader's port with a keeping
    // device; `setUp` shapes each new device (its pace, its buffer).
    VirtualHost& addScale(int n, std::function<void(KeepingDevice&)> setUp = {}) {
        VirtualHost& host = net.addHost(scaleIp(n), scaleMac(n));
        host.listen(kScalePort, [this, setUp] {
            auto device = std::make_unique<KeepingDevice>();
            if (setUp)
                setUp(*device);
            lastDevice = device.get();
            return device;
        });
        return host;
    }

    // Pumps events until `done` or `ms` of virtual time have passed.
    // The program yields with a timer of its own running, as a loader's
    // waits do, so that a wait with nothing else scheduled still passes.
    bool pumpUntil(const std::function<bool()>& done, int ms) {
        WindowTimer tick(pump, "tick");
        tick.onTimer = [] {};
        tick.setInterval(1);
        tick.setEnabled(true);
        return fc::pumpUntil(pump, done, ms);
    }
    void pumpFor(int ms) {
        pumpUntil([] { return false; }, ms);
    }
};

}  // namespace fc::nettest
