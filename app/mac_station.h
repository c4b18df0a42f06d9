// The MAC database as a loader program reaches it: the common module on the
// real machine, ODBC through unixODBC, and the main screen's hook that asks
// for the next address. ODBCINI defaults to odbc.ini in the program's folder.
#pragma once

#include "common/common_module.h"
#include "mac/mac_module.h"
#include "platform/linux/linux_file_system.h"
#include "platform/linux/posix_kernel_objects.h"
#include "platform/linux/sqlite_database.h"
#include "platform/linux/system_calendar.h"
#include "platform/linux/unix_odbc.h"

namespace fc {

class Firmcast;

struct MacStation {
    explicit MacStation(Services& services);
    MacStation(const MacStation&) = delete;
    MacStation& operator=(const MacStation&) = delete;

    // Gives `form` its DameMACAddress; a failure of the register unloads it.
    void wire(Firmcast& form);

    LinuxFileSystem fileSystem;
    PosixKernelObjects kernel;
    SystemCalendar calendar;
    SqliteDatabaseEngine databases;
    CommonModule c;
    UnixOdbcEnvironment odbc;
    MacModule m;
};

}  // namespace fc
