// The world the headless program runs the screens in: the real clock, real
// serial lines and files, and message boxes that are printed, one line
// "msgbox: <text>" each, as they are shown, and answered by script.
#pragma once

#include <ostream>

#include "control/firmcast_form.h"
#include "operator/recording_dialogs.h"
#include "platform/file_table.h"
#include "platform/linux/linux_machine.h"
#include "platform/linux/real_pump.h"
#include "platform/linux/termios_port.h"

namespace fc::batch {

struct BatchWorld {
    explicit BatchWorld(std::ostream& out);

    // The services of a screen of this world.
    Services services();

    RealPump pump;
    RecordingDialogs dialogs{pump};
    TermiosPortOpener serialPorts;
    FileTable files;
    LinuxMachine machine;
};

}  // namespace fc::batch
