#include "platform/linux/linux_machine.h"

#include <utility>

#include "platform/linux/environment_drives.h"

namespace fc {

LinuxMachine::LinuxMachine() : drives(drivesFromEnvironment()) {}

LinuxMachine::LinuxMachine(Drives d) : drives(std::move(d)) {}

Services LinuxMachine::services(Pump& pump, Dialogs& dialogs, SerialPortOpener& serialPorts,
                                FileTable& files, const std::string& programFolder) {
    return Services{pump,   dialogs,    serialPorts, files,    programFolder,
                    drives, fileSystem, kernel,      calendar, databases, network};
}

}  // namespace fc
