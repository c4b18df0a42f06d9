// The MAC database as a loader program reaches it: ODBC through unixODBC,
// the main screen's module of common procedures, and the screen's MAC steps
// (the next address, the scale record form). ODBCINI defaults to odbc.ini in the program's
// folder.
#pragma once

#include "mac/mac_module.h"
#include "platform/linux/unix_odbc.h"

namespace fc {

class Firmcast;

struct MacStation {
    // Gives `form` its MAC steps; a failure of the register unloads it.
    explicit MacStation(Firmcast& form);
    MacStation(const MacStation&) = delete;
    MacStation& operator=(const MacStation&) = delete;

    UnixOdbcEnvironment odbc;
    MacModule m;
};

}  // namespace fc
