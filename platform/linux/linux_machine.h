// The machine's own pieces that a program's services stand on: its file
// system, calendar, kernel objects, database engine, network and drives. A program
// makes one (its drives as its environment names them) and builds its
// Services from it; a test may name the drives itself.
#pragma once

#include <string>

#include "platform/drives.h"
#include "platform/linux/linux_file_system.h"
#include "platform/linux/linux_network.h"
#include "platform/linux/posix_kernel_objects.h"
#include "platform/linux/sqlite_database.h"
#include "platform/linux/system_calendar.h"
#include "platform/services.h"

namespace fc {

struct LinuxMachine {
    LinuxMachine();
    explicit LinuxMachine(Drives drives);

    // The services of a screen of this machine, with the program's own pump,
    // dialogs, serial ports and file table.
    Services services(Pump& pump, Dialogs& dialogs, SerialPortOpener& serialPorts, FileTable& files,
                      const std::string& programFolder);

    Drives drives;
    LinuxFileSystem fileSystem;
    PosixKernelObjects kernel;
    SystemCalendar calendar;
    SqliteDatabaseEngine databases;
    LinuxNetwork network;
};

}  // namespace fc
