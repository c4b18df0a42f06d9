// Runs a simulated TCP device behind a real listening socket, so that the
// loader (or any program) reaches it over a real TCP connection as it would a
// scale. One connection at a time; the next waits in the backlog until the
// present one ends.
//
// The device's stack is made to behave as a small embedded one: the receive
// buffer is set small before listening (Linux rounds it up to its minimum),
// the socket is read only at the device's pace, and every read is followed by
// an immediate acknowledgement (TCP_QUICKACK), so that what the sender sees
// acknowledged is what the device has made room for.
#pragma once

#include <map>
#include <string>

#include "platform/event_source.h"
#include "sim/device/read_pace.h"
#include "sim/device/tcp_device.h"

namespace fc {

class Pump;

class TcpDeviceHost : public EventSource, public TcpDeviceLink {
  public:
    // Listens on `address` ("0.0.0.0", "127.0.0.1"), port `port` (0: any free
    // one). Throws std::runtime_error when the socket cannot be had. The
    // device must outlive the host.
    TcpDeviceHost(Pump& pump, TcpDevice& device, const std::string& address, int port);
    ~TcpDeviceHost() override;
    TcpDeviceHost(const TcpDeviceHost&) = delete;
    TcpDeviceHost& operator=(const TcpDeviceHost&) = delete;

    // The port it listens on.
    int port() const { return port_; }
    bool connected() const { return connection_ >= 0; }

    // TcpDeviceLink
    void deviceSend(const std::string& bytes) override;
    // Drops what the device has not read, so that the close is a FIN; data
    // that comes after it is answered with a reset by the kernel.
    void deviceClose() override;
    void deviceReset() override;
    void deviceAfter(Micros delay, std::function<void()> action) override;
    Micros now() const override;

    // EventSource: the listening socket wakes the pump while no one is
    // connected, the connection while the device may read; the pace and the
    // device's timed actions are due.
    Micros nextDue() const override;
    void runDue(Micros now) override;
    int wakeFd() const override;
    bool runsWhileAsleep() const override { return true; }

  private:
    void acceptOne(Micros now);
    void readAtPace(Micros now);
    bool readOnce(Micros now);
    long nextReadSize(Micros now);
    void flushOutput();
    void endConnection();
    bool mayRead() const;
    void runDueActions(Micros now);

    Pump& pump_;
    TcpDevice& device_;
    int listener_ = -1;
    int port_ = 0;
    int connection_ = -1;
    std::string output_;  // what the device sent that the socket has not taken yet
    ReadPace pace_;
    Micros lastRun_ = 0;
    std::multimap<Micros, std::function<void()>> actions_;
};

}  // namespace fc
