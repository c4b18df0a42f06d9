// The far end of one TCP connection: a device's boot loader with a small
// embedded stack. It is hosted on the simulated network of the virtual clock
// or behind a real listening socket; either way the host fills the device's
// receive buffer, acknowledges what is in it at once, and hands the device the
// bytes it reads, at the pace it reads them.
#pragma once

#include <functional>
#include <string>

#include "platform/event_source.h"

namespace fc {

// What hosts a device's connection.
class TcpDeviceLink {
  public:
    virtual ~TcpDeviceLink() = default;
    // Bytes towards the program.
    virtual void deviceSend(const std::string& bytes) = 0;
    // Orderly close (FIN): the program sees its peer close.
    virtual void deviceClose() = 0;
    // Abortive close (RST): the program's connection breaks.
    virtual void deviceReset() = 0;
    // Runs `action` `delay` microseconds from now, while the connection lasts.
    virtual void deviceAfter(Micros delay, std::function<void()> action) = 0;
    virtual Micros now() const = 0;
};

class TcpDevice {
  public:
    virtual ~TcpDevice() = default;

    // A program has connected; `link` carries this connection until it ends.
    virtual void onConnect(TcpDeviceLink& link) { link_ = &link; }
    // Bytes the device has read from its receive buffer.
    virtual void onReceive(const std::string& bytes) = 0;
    // The program closed its side.
    virtual void onProgramClosed() {}
    // At most how many bytes the device takes at its next read; -1 any. Lets a
    // device stop at an exact byte count.
    virtual long readLimit() const { return -1; }

    // How the device reads: its receive buffer, and its pace in bytes a second
    // (0: as soon as bytes arrive). A device that stops reading lets its
    // buffer fill, its window close and the sender's bytes go unacknowledged.
    int receiveBuffer = 2048;
    double readBytesPerSecond = 0;
    bool reading = true;

  protected:
    // Towards the link of the present connection; nothing without one.
    void send(const std::string& bytes) {
        if (link_)
            link_->deviceSend(bytes);
    }
    void closeConnection() {
        if (link_)
            link_->deviceClose();
    }
    void resetConnection() {
        if (link_)
            link_->deviceReset();
    }
    void after(Micros delay, std::function<void()> action) {
        if (link_)
            link_->deviceAfter(delay, std::move(action));
    }
    Micros now() const { return link_ ? link_->now() : 0; }

    TcpDeviceLink* link_ = nullptr;
};

}  // namespace fc
