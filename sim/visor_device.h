// The visor's boot loader on a serial line, and behind a bridge that turns
// UDP datagrams into its serial line: the bridge takes each datagram that
// comes to the visor's port as bytes for the loader, and sends what the
// loader says back to the sender's address on the answer port, one datagram
// for the echo of a record and one for its answer.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/event_source.h"
#include "sim/device/serial_device.h"
#include "sim/visor_boot_loader.h"

namespace fc {

class Pump;

class VisorSerial : public SerialDevice {
  public:
    explicit VisorSerial(const VisorBootLoader::Config& config = {},
                         const LineSettings& settings = {115200, 'N', 8, 1});

    VisorBootLoader& loader() { return loader_; }
    void onReceive(Byte byte) override;
    // DTR does nothing to the visor; its changes are kept, with their time.
    void onDtrChanged(bool on) override;
    struct DtrChange {
        Micros at;
        bool on;
    };
    const std::vector<DtrChange>& dtrChanges() const { return dtrChanges_; }

  private:
    VisorBootLoader loader_;
    std::vector<DtrChange> dtrChanges_;
};

class VisorUdpBridge : public EventSource {
  public:
    struct Faults {
        long loseDatagram = -1;  // this answer datagram (counted from 0) is lost
        int splitDump = 1;       // a dump's answer goes in so many datagrams
    };
    using SendDatagram = std::function<void(const std::string&)>;

    VisorUdpBridge(Pump& pump, SendDatagram send, const VisorBootLoader::Config& config = {});
    ~VisorUdpBridge() override;
    VisorUdpBridge(const VisorUdpBridge&) = delete;
    VisorUdpBridge& operator=(const VisorUdpBridge&) = delete;

    Faults faults;
    VisorBootLoader& loader() { return loader_; }
    // A datagram that came to the visor's port.
    void datagram(const std::string& bytes);
    long datagramsSent() const { return sent_; }

    // EventSource: the loader's timed work.
    Micros nextDue() const override;
    void runDue(Micros now) override;
    bool runsWhileAsleep() const override { return true; }

  private:
    void out(const std::string& bytes);
    void sendOne(const std::string& bytes);

    Pump& pump_;
    SendDatagram send_;
    std::multimap<Micros, std::function<void()>> actions_;
    Micros eventTime_ = -1;
    long sent_ = 0;
    VisorBootLoader loader_;
};

}  // namespace fc
