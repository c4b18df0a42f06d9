// The world the headless program runs the screens in: the real clock, real
// serial lines and files, and message boxes that are printed, one line
// "msgbox: <text>" each, as they are shown, and answered by script.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "control/firmcast_form.h"
#include "operator/recording_dialogs.h"
#include "platform/file_table.h"
#include "platform/linux/linux_machine.h"
#include "platform/linux/real_pump.h"
#include "platform/linux/termios_port.h"
#include "platform/noted_dialogs.h"

namespace fc::batch {

// The serial ports of this machine, telling `onFailure` why a port would not
// open or take its settings, with the device behind it, before the screen
// hears of it as the run time's error (its box says no more than "Error at
// port COMn").
class ReportingPortOpener : public SerialPortOpener {
  public:
    using Failure =
        std::function<void(int commPort, const std::string& device, const std::string& reason)>;
    Failure onFailure;

    std::unique_ptr<SerialPort> open(int commPort) override;
    std::string deviceOf(int commPort) const override { return ports_.deviceOf(commPort); }

    // The machine's own opener under it, for its notes.
    TermiosPortOpener& machinePorts() { return ports_; }

  private:
    TermiosPortOpener ports_;
};

struct BatchWorld {
    explicit BatchWorld(std::ostream& out);

    // The services of a screen of this world.
    Services services();

    // When set, the network the screens reach instead of the machine's own.
    Network* network = nullptr;

    RealPump pump;
    RecordingDialogs dialogs{pump};
    // What the screens are given: the same boxes, told on the way to
    // whoever keeps the record of the loads.
    NotedDialogs notedDialogs{dialogs};
    ReportingPortOpener serialPorts;
    FileTable files;
    LinuxMachine machine;
};

}  // namespace fc::batch
