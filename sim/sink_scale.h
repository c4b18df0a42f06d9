// A scale's boot loader on Ethernet that takes whatever it is sent: it counts
// the bytes it reads and keeps them (up to a limit), at the pace and with the
// receive buffer it is given, and can be told to misbehave once it has read a
// given number of bytes: stop reading (its window closes and the sender waits
// for ever), close the connection, reset it, or switch its host off. The
// counts run over the device's whole life, across connections, and each
// fault happens once.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "sim/device/tcp_device.h"

namespace fc {

class SinkScale : public TcpDevice {
  public:
    // Byte counts at which a fault happens; -1 never.
    struct Faults {
        long stopReadingAfter = -1;
        long closeAfter = -1;
        long resetAfter = -1;
        long switchOffAfter = -1;
    };
    // What happened, in order, for a log.
    struct Event {
        enum class Kind {
            Connected,
            Read,
            ProgramClosed,
            StoppedReading,
            Closed,
            Reset,
            SwitchedOff
        };
        Kind kind;
        Micros at;
        long bytes;  // for a read, how many; else 0
        long total;  // bytes read so far
    };

    Faults faults;
    // Switches the host off (on the simulated network only); without it the
    // switch-off fault does nothing.
    std::function<void()> switchOff;
    // At most this many bytes are kept; the count goes on.
    long keepLimit = 64L << 20;

    void onConnect(TcpDeviceLink& link) override;
    void onReceive(const std::string& bytes) override;
    void onProgramClosed() override;
    long readLimit() const override;

    long received() const { return received_; }
    const std::string& kept() const { return kept_; }
    int connections() const { return connections_; }
    bool programClosed() const { return programClosed_; }
    const std::vector<Event>& events() const { return events_; }

  private:
    void note(Event::Kind kind, long bytes = 0);
    // True once, when the count has just reached `after`.
    bool reached(long after, bool& done) const;
    void actOnFaults();

    long received_ = 0;
    std::string kept_;
    int connections_ = 0;
    bool programClosed_ = false;
    bool stopped_ = false, closed_ = false, reset_ = false, switchedOff_ = false;
    std::vector<Event> events_;
};

// Writes the events after the first `alreadyLogged`, one a line, and returns
// how many are logged now.
size_t logNewSinkEvents(const SinkScale& sink, size_t alreadyLogged, std::ostream& out);

}  // namespace fc
