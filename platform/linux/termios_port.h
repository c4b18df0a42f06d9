// Serial ports of Linux through termios. COM n is the device named by the
// environment variable FIRMCAST_COM<n>, else ttyS<n-1> of the device folder
// (/dev; see serial_devices.h).
//
// The line is raw: every byte value 0..255 passes unchanged both ways (no
// stripping, no parity marking, no CR/NL translation, no flow control).
// A pseudo-terminal keeps 8 bits without parity and has no modem lines; on one,
// 7 data bits, parity and DTR are accepted and have no effect, so a simulated
// device behind a pty sees every byte as sent.
//
// A port asks for low latency when it opens (the driver's flag, and a USB
// adapter's latency timer at 1 ms: see low_latency.h) and gives back what was
// there when it closes. Where that is refused the port works as before, and
// the opener gives the program one note a device for its log.
#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "platform/linux/low_latency.h"
#include "platform/runtime_error.h"
#include "platform/serial_port.h"

namespace fc {

// A device that would not open as a serial port: the run time's error (8002
// for one missing or not a serial device, 8005 for one in use, the settings'
// error for a line that cannot be made raw), with the device and the
// system's reason.
class PortOpenError : public RuntimeError {
  public:
    PortOpenError(int number, std::string device, std::string reason)
        : RuntimeError(number), device_(std::move(device)), reason_(std::move(reason)) {}
    const std::string& device() const { return device_; }
    // The system's words for the failure, and what they mean for a port
    // where that helps: "No such file or directory", "Inappropriate ioctl
    // for device: not a serial device".
    const std::string& reason() const { return reason_; }

  private:
    std::string device_;
    std::string reason_;
};

class TermiosPortOpener : public SerialPortOpener {
  public:
    // `sysfsRoot` is where sysfs is mounted; a test gives a folder of its own.
    explicit TermiosPortOpener(std::string sysfsRoot = "/sys");

    // Throws PortOpenError when the device will not open.
    std::unique_ptr<SerialPort> open(int commPort) override;

    // Takes the notes: a port that opened without all of its low latency
    // (a pty, a driver without the flag, a timer that may not be written)
    // gives one, the first time that device opens.
    using Notice = std::function<void(const std::string& text)>;
    void setNotice(Notice notice) { notice_ = std::move(notice); }

    // The device file behind COM n.
    static std::string deviceName(int commPort);
    std::string deviceOf(int commPort) const override { return deviceName(commPort); }

  private:
    std::string sysfsRoot_;
    Notice notice_;
    std::set<std::string> noted_;
};

class TermiosPort : public SerialPort {
  public:
    // Opens `device` non-blocking, claims it exclusively, makes it raw and
    // asks for low latency (sysfs at `sysfsRoot`); throws PortOpenError when
    // it cannot.
    explicit TermiosPort(const std::string& device, const std::string& sysfsRoot = "/sys");
    ~TermiosPort() override;
    TermiosPort(const TermiosPort&) = delete;
    TermiosPort& operator=(const TermiosPort&) = delete;

    const std::string& device() const { return device_; }
    bool isPseudoTerminal() const { return pty_; }
    // What of low latency the device refused, in words; empty when nothing.
    const std::string& lowLatencyRefused() const { return lowLatency_.refused(); }
    // The adapter's latency timer file; empty when the device has none.
    const std::string& latencyTimer() const { return lowLatency_.timerPath(); }

    // A setting the driver refuses or does not take is error 8015; on a pty,
    // the frame format (data bits, parity) is left as the pty keeps it.
    void apply(const LineSettings& settings) override;
    void setDtr(bool on) override;

    void write(const std::string& bytes) override;
    int outputPending() override;
    int inputAvailable() override;
    std::string read() override;
    void discardInput() override;

    // Hands queued bytes to the driver and takes in everything it has
    // received, so that a ready descriptor does not keep waking the pump.
    // A device that has gone (hang-up, I/O error) is error 8020 on reading
    // and error 57 on writing.
    void service() override;
    int wakeFd() const override { return fd_; }

  private:
    unsigned frameFlags(const LineSettings& settings) const;
    void makeRaw();
    void checkTaken(const LineSettings& settings);
    void flushOutput();
    void receiveInput();

    std::string device_;
    int fd_ = -1;
    bool pty_ = false;
    LowLatency lowLatency_;
    std::string outQueue_;
    std::string received_;
};

}  // namespace fc
