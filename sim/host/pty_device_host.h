// Runs a simulated device on the far side of a real pseudo-terminal, so that
// the loader (or any other program) talks to it through a tty device such as
// /dev/pts/7 exactly as it would to a cable. The host reads what the program
// writes, hands it to the device byte by byte, writes the device's answers
// back, and keeps the device's timed actions on the steady clock of a pump.
//
// A pty has no line speed of its own, so the host looks at the settings the
// program gave the tty: when speed, data bits or parity differ from the
// device's, the device hears garbage, that is nothing; a 7-bit device never
// sees bit 8. A slow factor stretches the device's answers, as a slow line
// would.
//
// A pty also moves bytes at once. With the line's time on, the host keeps the
// line's time in both directions, as on a cable: the device hears each
// character when its last bit would have arrived at the device's speed,
// counted from the arrival of the first character of a run, and each
// character the device sends reaches the program one character time after the
// one before it. A program that sends and then throws its input away cannot
// lose an answer that, on a real line, could not have come yet; and a program
// timed against the device sees the line's own speed.
//
// The device lives on the line's time: while it hears a character or runs a
// timed action, its clock reads the moment that event was due, not the
// moment the host got round to it, so a late wake-up of the host never delays
// what the device does next. The host blocks in the pump until the next
// deadline and asks the kernel for timers to the microsecond, so the events
// themselves come within a few tens of microseconds of their time.
#pragma once

#include <map>
#include <string>

#include "platform/event_source.h"
#include "platform/serial_port.h"
#include "platform/vb_types.h"
#include "sim/device/device_link.h"
#include "sim/device/wire_direction.h"

namespace fc {

class Pump;
class SerialDevice;

class PtyDeviceHost : public EventSource, public DeviceLink {
  public:
    // Opens a new pty pair and plugs `device` into its master side. Throws
    // std::runtime_error when no pty can be had.
    PtyDeviceHost(Pump& pump, SerialDevice& device);
    ~PtyDeviceHost() override;
    PtyDeviceHost(const PtyDeviceHost&) = delete;
    PtyDeviceHost& operator=(const PtyDeviceHost&) = delete;

    // The tty the program opens, such as "/dev/pts/7".
    const std::string& ttyPath() const { return ttyPath_; }

    void setSlowFactor(double factor) { slowFactor_ = factor; }
    // Off by default: a bench of the loader's own turnaround wants none.
    void setLineTime(bool on) { lineTime_ = on; }
    // Drops the line: from now on nothing passes either way.
    void hangUp() { hungUp_ = true; }

    // DeviceLink
    void deviceSend(const std::string& bytes) override;
    void deviceAfter(Micros delay, std::function<void()> action) override;
    Micros now() const override;
    void detachDevice() override;

    // EventSource: input from the program wakes the pump; characters arriving
    // at either end and the device's timed actions are due.
    Micros nextDue() const override;
    void runDue(Micros now) override;
    int wakeFd() const override { return master_; }
    bool runsWhileAsleep() const override { return true; }

  private:
    bool programSettingsMatch() const;
    void readFromProgram();
    void hear(Byte byte);
    void writeToProgram(const std::string& bytes);
    void runFirstAction();

    Pump& pump_;
    SerialDevice* device_;
    int master_ = -1;
    int keepOpen_ = -1;  // the slave held open so the master never sees a hang-up between sessions
    std::string ttyPath_;
    double slowFactor_ = 1.0;
    bool hungUp_ = false;
    bool lineTime_ = false;
    // The line's two directions, with the line's time on.
    WireDirection toDevice_;
    WireDirection toProgram_;
    std::multimap<Micros, std::function<void()>> actions_;
    // The time of the event the device is being given, or -1 between events.
    Micros eventTime_ = -1;
    // The thread's timer slack before the host asked for the finest.
    long oldTimerSlack_ = -1;
};

}  // namespace fc
