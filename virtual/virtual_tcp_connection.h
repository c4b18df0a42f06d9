// One TCP connection on the simulated network, both ends of it: what the
// program's transport sees (status, received bytes, unacknowledged bytes) and
// the device's side (its receive buffer, its reading pace). Shared by the
// transport, the host that accepted it and the packets still on their way,
// so that each may go first.
#pragma once

#include <memory>
#include <string>

#include "platform/tcp_transport.h"
#include "sim/device/read_pace.h"
#include "sim/device/tcp_device.h"

namespace fc {

class VirtualHost;
class VirtualNetwork;

class VirtualTcpConnection : public TcpDeviceLink,
                             public std::enable_shared_from_this<VirtualTcpConnection> {
  public:
    // The time a connection attempt that gets no answer takes to fail.
    static constexpr Micros kConnectTimeout = 21'000'000;

    // `host` may be null: no such machine on the LAN.
    VirtualTcpConnection(VirtualNetwork& network, VirtualHost* host, int port);
    ~VirtualTcpConnection() override;

    // The program's side.
    void start();
    void programSend(const std::string& bytes);
    void programClose();
    long unacknowledged() const { return static_cast<long>(queued_.size()) + inFlight_; }
    std::string& received() { return received_; }
    const TcpStatus& status() const { return status_; }

    // The device's side, for the network's clock: when the device reads next
    // (kNever: not now), and that read.
    Micros readDue() const;
    void read(Micros now);
    // The host was switched off: this connection is dead for good.
    void cut() { cut_ = true; }
    TcpDevice* device() const { return device_.get(); }

    // TcpDeviceLink
    void deviceSend(const std::string& bytes) override;
    void deviceClose() override;
    void deviceReset() override;
    void deviceAfter(Micros delay, std::function<void()> action) override;
    Micros now() const override;

  private:
    void synArrives();
    void accept(std::unique_ptr<TcpDevice> device);
    void fillDeviceBuffer();
    void answerDataWithReset();
    void breakWith(int error);
    long nextReadSize(Micros now);
    bool programGone() const { return programClosed_ || status_.error != 0; }
    bool deviceListens() const { return deviceOpen_ && !cut_; }

    VirtualNetwork& network_;
    VirtualHost* host_;
    int port_;

    TcpStatus status_;
    std::string received_;
    std::string queued_;  // sent by the program, not yet in the device's buffer
    long inFlight_ = 0;   // in the device's buffer, acknowledgement on its way
    bool programClosed_ = false;

    std::unique_ptr<TcpDevice> device_;
    bool deviceOpen_ = false;  // accepted, and neither closed nor reset by the device
    bool deviceClosed_ = false;
    bool resetSent_ = false;
    bool cut_ = false;
    std::string buffer_;  // the device's receive buffer
    Micros bufferedAt_ = 0;
    ReadPace pace_;
};

}  // namespace fc
