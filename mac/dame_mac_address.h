// The next MAC address from the shared counter, recorded in the register.
#pragma once

#include <string>

#include "platform/vb_types.h"

namespace fc {

struct MacModule;

// Takes the next number of the counter, forms the address under the maker's
// prefix, adds its row to the register and returns it as twelve hex digits;
// empty when the counter is past 0xFFFFFF. An ODBC failure (40002) while
// taking the number starts again, with no limit unless the module sets one
// (then the failure goes to the caller); between tries the program's events
// run for a pause that grows from 10 ms to one second, and the error log
// says once what the allocation waits for. At the register it shows
// the notice and unloads the main screen. Any other error is shown as
// "Problema al obtener la MAC, error: " and ends the program.
std::string DameMACAddress(MacModule& m);

// Steps of DameMACAddress, each on `bd_mac`, which must be open.
// Adds one to the counter and reads it, as one transaction.
Long TomaNumeroMac(MacModule& m);
// Adds the register's row of `mac` (twelve digits).
void AnotaDireccionMac(MacModule& m, const std::string& mac);

}  // namespace fc
