// Low latency on an open serial port, asked for when the port opens and given
// back when it closes.
//
// A numbered-line load waits for a one-byte answer to every frame, so
// whatever holds received bytes back is paid once a frame. Two things do:
// - the driver, unless told to hand received bytes on at once: the serial
//   flag ASYNC_LOW_LATENCY (TIOCGSERIAL, TIOCSSERIAL);
// - a USB adapter's latency timer, the time the adapter keeps a few received
//   bytes before it sends them to the computer (16 ms by default on the most
//   common chip): set to 1 ms through its sysfs file latency_timer, found
//   from the tty's node, <sysfs>/dev/char/<major>:<minor>/device/latency_timer,
//   else <sysfs>/class/tty/<name>/device/latency_timer.
// Both outlive the port in the kernel, so what was there is put back on
// close. A port that refuses either (a pseudo-terminal, a driver without the
// flag, a timer that may not be written) works as before; refused() says
// what was refused, for the program's log.
#pragma once

#include <string>

namespace fc {

class LowLatency {
  public:
    // Asks for low latency on the open terminal `fd`, the device file
    // `device`, with sysfs at `sysfsRoot`.
    void ask(int fd, const std::string& device, const std::string& sysfsRoot);
    // Puts back what ask() changed; `fd` is still open.
    void restore(int fd);

    // What was refused, in words; empty when nothing was.
    const std::string& refused() const { return refused_; }
    // The latency timer's file, when the device has one.
    const std::string& timerPath() const { return timerPath_; }

  private:
    void askDriver(int fd);
    void askTimer(int fd, const std::string& device, const std::string& sysfsRoot);
    void refuse(const std::string& what);

    bool flagSet_ = false;     // ASYNC_LOW_LATENCY was set here, and is cleared on close
    std::string timerPath_;    // the adapter's latency timer, if any
    std::string timerBefore_;  // its value before, written back on close when changed
    std::string refused_;
};

}  // namespace fc
