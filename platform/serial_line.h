// The serial control of a screen (`Linea`): the operations of the classic
// comm control, over whichever transport its opener gives. One character is
// one byte, every value 0..255 passed unchanged.
#pragma once

#include <memory>
#include <string>

#include "platform/event_source.h"
#include "platform/serial_port.h"
#include "platform/vb_types.h"

namespace fc {

class Pump;

class SerialLine : public EventSource {
  public:
    SerialLine(Pump& pump, SerialPortOpener& opener);
    ~SerialLine() override;
    SerialLine(const SerialLine&) = delete;
    SerialLine& operator=(const SerialLine&) = delete;

    Integer commPort() const { return commPort_; }
    // Refused (8000) while the port is open; 1..16.
    void setCommPort(Integer port);

    const std::string& settings() const { return settings_; }
    // Takes effect at once when the port is open. A text that is not a
    // settings text is refused with error 380.
    void setSettings(const std::string& settings);

    bool portOpen() const { return port_ != nullptr; }
    // True opens the port (a failure is a run-time error); False closes it.
    void setPortOpen(bool open);

    void setInputMode(int mode) { inputMode_ = mode; }
    int inputMode() const { return inputMode_; }

    bool dtrEnable() const { return dtrEnable_; }
    void setDTREnable(bool on);

    // The operations below need the port open (else error 8018).
    void output(const std::string& text);
    Integer outBufferCount();
    Integer inBufferCount();
    // Only 0 may be put: it throws away what was received.
    void setInBufferCount(Integer count);
    std::string input();

    // EventSource: keeps the output moving and wakes the pump on input.
    Micros nextDue() const override { return kNever; }
    void runDue(Micros now) override;
    int wakeFd() const override;

  private:
    SerialPort& open_();

    Pump& pump_;
    SerialPortOpener& opener_;
    Integer commPort_ = 1;
    std::string settings_ = "9600,N,8,1";
    LineSettings parsed_;
    int inputMode_ = 0;
    bool dtrEnable_ = false;
    std::unique_ptr<SerialPort> port_;
};

}  // namespace fc
