// What the allocation of MAC addresses reaches the world through: the common
// module (boxes, the notice, the log), the ODBC environment, the clock of the
// register's rows, and the way to unload the main screen.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/odbc.h"

namespace fc {

struct CommonModule;

// The status the program ends with when the MAC database fails.
constexpr int kFinPorBaseMac = 3;

struct MacModule {
    CommonModule& c;
    OdbcEnvironment& odbc;
    // The data source; "MacConnection" unless the site names another.
    std::string origen = "MacConnection";
    // The database connection, held for the length of one operation.
    std::unique_ptr<OdbcConnection> bd_mac;
    // Unloads the main screen, which ends the program. Without one the
    // program simply ends.
    std::function<void()> descargaPrincipal;
    // How long a failing database is tried again before its failure goes to
    // the caller; below 0, for as long as it takes (the loader's way).
    long esperaMaximaMs = -1;
};

// Closes `bd_mac` if open; a failure of the close changes nothing.
void CierraBdMac(MacModule& m);

}  // namespace fc
