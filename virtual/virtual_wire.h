// A simulated serial cable between the program's COM port and a device, on
// the pump's clock. Each character takes bitsPerCharacter()/baud seconds (times
// the slow factor), so bytes arrive one after another at the times they would.
//
// What each end hears: a character sent under other settings (speed, data
// bits, parity) than the receiver's is garbage and is lost. A character carries
// only the data bits of its frame: a 7-bit frame drops bit 8, both ways.
//
// Faults, switchable at any time:
// - silent (deaf and mute): the device hears nothing and nothing it says arrives;
// - disconnect(): the cable is pulled. As on a real RS-232 line, the program's
//   port goes on working and raises no error: what it sends goes nowhere,
//   nothing comes back, and the device sees DTR drop. reconnect() plugs it in.
// - slow factor: every character takes that many times as long.
//
// The PC's receiver may be given a FIFO, as a 16550 UART has: the program
// then sees received characters when the FIFO reaches its trigger level, or
// when the line has been quiet for four character times after the last one,
// not one by one as they arrive. Off (0) unless a test or bench asks for it.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/event_source.h"
#include "platform/serial_port.h"
#include "sim/device/device_link.h"
#include "sim/device/wire_direction.h"

namespace fc {

class Pump;
class SerialDevice;

class VirtualWire : public EventSource, public DeviceLink {
  public:
    VirtualWire(Pump& pump, SerialDevice& device);
    ~VirtualWire() override;
    VirtualWire(const VirtualWire&) = delete;
    VirtualWire& operator=(const VirtualWire&) = delete;

    // Faults.
    void setSilent(bool silent);
    void setDeaf(bool deaf) { deaf_ = deaf; }
    void setMute(bool mute) { mute_ = mute; }
    void disconnect();
    void reconnect();
    bool connected() const { return connected_; }
    // Applies to the characters that start after the change; must be > 0.
    void setSlowFactor(double factor);
    // The receive FIFO's trigger level; 0 hands each character over at once.
    void setReceiveFifo(int triggerLevel);

    // The program's end. Only one port may be open on a wire (else error 8005).
    void openProgramEnd();
    // Closing drops what was received and what has not started on the wire,
    // and lowers DTR.
    void closeProgramEnd();
    bool programEndOpen() const { return programOpen_; }
    void setProgramSettings(const LineSettings& settings) { programSettings_ = settings; }
    const LineSettings& programSettings() const { return programSettings_; }
    void setProgramDtr(bool on);
    bool programDtr() const { return dtr_; }
    void programSend(const std::string& bytes);
    int programOutputPending() const { return toDevice_.pending(); }
    std::string& programReceived() { return received_; }

    // The device's end.
    void deviceSend(const std::string& bytes) override;
    void deviceAfter(Micros delay, std::function<void()> action) override;
    void detachDevice() override;
    Micros now() const override;

    // EventSource: the wire goes on while the program sleeps.
    Micros nextDue() const override;
    void runDue(Micros now) override;
    bool runsWhileAsleep() const override { return true; }

  private:
    void deliverToDevice(const WireDirection::Character& c);
    void deliverToProgram(const WireDirection::Character& c);
    void tellDeviceDtr(bool on);
    void runFirstAction();
    void flushFifo();
    Micros fifoDue() const;

    Pump& pump_;
    SerialDevice* device_;
    WireDirection toDevice_;
    WireDirection toProgram_;
    std::multimap<Micros, std::function<void()>> deviceActions_;
    bool programOpen_ = false;
    LineSettings programSettings_;
    bool dtr_ = false;
    std::string received_;
    int fifoTrigger_ = 0;
    std::string fifo_;
    Micros fifoTimeout_ = kNever;
    bool deaf_ = false;
    bool mute_ = false;
    bool connected_ = true;
    double slowFactor_ = 1.0;
    // The time of the event being run, so that what a device does in answer
    // happens at the moment it heard the character; -1 between events.
    Micros eventTime_ = -1;
};

}  // namespace fc
