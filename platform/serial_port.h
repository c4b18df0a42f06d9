// A serial transport: the small table of operations that the serial control
// needs of one open device. One implementation per kind of line: termios on
// Linux, a simulated wire on the virtual clock.
#pragma once

#include <memory>
#include <string>

namespace fc {

// "57600,e,7,1": speed, parity (N E O M S, either case), data bits, stop bits.
struct LineSettings {
    int baud = 9600;
    char parity = 'N';  // upper case
    int dataBits = 8;
    int stopBits = 1;

    // Bits a character takes on the wire: start, data, parity, stop.
    int bitsPerCharacter() const { return 1 + dataBits + (parity == 'N' ? 0 : 1) + stopBits; }
    bool operator==(const LineSettings&) const = default;
};

// Parses a settings text; false when it is not one.
bool parseLineSettings(const std::string& text, LineSettings& out);

class SerialPort {
  public:
    virtual ~SerialPort() = default;

    // Applies speed and frame format; throws RuntimeError when the device refuses.
    virtual void apply(const LineSettings& settings) = 0;
    // Raises or lowers DTR; throws RuntimeError when the device refuses.
    virtual void setDtr(bool on) = 0;

    // Queues bytes for sending and returns at once.
    virtual void write(const std::string& bytes) = 0;
    // Bytes queued and not yet sent.
    virtual int outputPending() = 0;
    // Bytes received and not yet read.
    virtual int inputAvailable() = 0;
    // Everything received so far, removed from the buffer.
    virtual std::string read() = 0;
    virtual void discardInput() = 0;

    // Moves queued bytes along; called from the event pump.
    virtual void service() {}
    // A descriptor that becomes ready when input arrives, or -1.
    virtual int wakeFd() const { return -1; }
};

// Opens COM port n (1..). Throws RuntimeError when the port cannot be opened.
class SerialPortOpener {
  public:
    virtual ~SerialPortOpener() = default;
    virtual std::unique_ptr<SerialPort> open(int commPort) = 0;
    // The device behind COM n, for the operator's eye; empty where the ports
    // are not the machine's own.
    virtual std::string deviceOf(int /*commPort*/) const { return {}; }
};

}  // namespace fc
