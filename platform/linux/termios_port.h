// Serial ports of Linux through termios. COM n is the device named by the
// environment variable FIRMCAST_COM<n>, else ttyS<n-1> of the device folder
// (/dev; see serial_devices.h).
//
// The line is raw: every byte value 0..255 passes unchanged both ways (no
// stripping, no parity marking, no CR/NL translation, no flow control).
// A pseudo-terminal keeps 8 bits without parity and has no modem lines; on one,
// 7 data bits, parity and DTR are accepted and have no effect, so a simulated
// device behind a pty sees every byte as sent.
#pragma once

#include <memory>
#include <string>
#include <utility>

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
    // Throws PortOpenError when the device will not open.
    std::unique_ptr<SerialPort> open(int commPort) override;

    // The device file behind COM n.
    static std::string deviceName(int commPort);
};

class TermiosPort : public SerialPort {
  public:
    // Opens `device` non-blocking, claims it exclusively and makes it raw;
    // throws PortOpenError when it cannot.
    explicit TermiosPort(const std::string& device);
    ~TermiosPort() override;
    TermiosPort(const TermiosPort&) = delete;
    TermiosPort& operator=(const TermiosPort&) = delete;

    const std::string& device() const { return device_; }
    bool isPseudoTerminal() const { return pty_; }

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
    std::string outQueue_;
    std::string received_;
};

}  // namespace fc
