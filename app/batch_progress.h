// How far a load has got, told on standard error in the form the reader
// asked for (--progress): a bar drawn over itself on a terminal, a line a
// phase and a tenth for a log, a JSON object a line for a program that
// follows the load, or nothing.
//
// A load reports events: a device enters a phase, or gets further in one.
// The serial loads of the main screen are followed by SerialLoadFollower,
// which reads them off the screen; a follower of another way (Ethernet
// messages, the visor's and display's records, the boot ROM's pages) reports
// the same events with its own unit and device.
#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "app/batch_options.h"

namespace fc {
class Firmcast;
}

namespace fc::batch {

struct ProgressEvent {
    std::string device;  // "COM1"; a scale's address on Ethernet
    int pass = 1;        // the pass of Production Way, from 1
    std::string phase;   // "connect", "erase", "load", "ready" or "failed"
    std::string unit;    // what is counted: "line" on a serial line, "message" on Ethernet
    long number = 0;     // the unit being sent, from 1; 0 before the first
    long total = 0;      // how many the load has; 0 when not known
    int percentage = 0;  // of the load, by the screen's bar
    std::string box;     // with "failed": the last box of the pass, if any
};

class ProgressReport {
  public:
    virtual ~ProgressReport() = default;
    // A phase began, or the load got further within one.
    virtual void report(const ProgressEvent& event) = 0;
};

// The report for `how`; Auto is a bar when `terminal` (standard error is
// one) and plain lines otherwise.
std::unique_ptr<ProgressReport> makeProgressReport(Progress how, std::ostream& out, bool terminal);

// One JSON object, without a line end: {"device":..,"pass":..,"phase":..,
// "<unit>":..,"total":..,"percentage":..} and "box" when the event has one.
std::string jsonLine(const ProgressEvent& event);

// Follows a serial load on the main screen: the connect and erase phases by
// the text of `Texto`, the lines by the advances of `Barra`.
class SerialLoadFollower {
  public:
    // `totalLines`: the lines of the firmware file.
    SerialLoadFollower(Firmcast& form, ProgressReport& report, std::string device, long totalLines);

    // The end of pass `pass`: ready, or failed with the last box shown in it.
    void passEnded(int pass, bool ready, const std::string& lastBox);
    // The next pass begins.
    void nextPass(int pass);

  private:
    void textChanged(const std::string& text);
    void barChanged();
    void enter(const std::string& phase);
    void send();

    Firmcast& form_;
    ProgressReport& report_;
    ProgressEvent event_;
    long lastValue_ = 0;
    bool inPass_ = false;
};

}  // namespace fc::batch
