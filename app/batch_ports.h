// --list-ports: the serial devices of this machine, each with the setting
// that makes it a COM port of the loader.
#pragma once

#include <ostream>
#include <string>

namespace fc::batch {

// One line a device under `devRoot` (see listSerialDevices):
//   <device>  FIRMCAST_COM<n>=<device>
// followed, where it applies, by what the line is: "(COM<n> by default)"
// for ttyS0..ttyS3, "(<device it names>)" for a name under serial/by-id. n
// is the COM port the device is by default, else 1. With no device, a line
// on `err` says so. Returns the exit status, 0.
int listPorts(const std::string& devRoot, const std::string& sysRoot, std::ostream& out,
              std::ostream& err);

}  // namespace fc::batch
