// The drives of this machine as the program's environment names them: "C:"
// is the folder FIRMCAST_DRIVE_C, or "/" when that is not set; any other
// letter L is the folder FIRMCAST_DRIVE_<L>, and does not exist when unset.
#pragma once

#include "platform/drives.h"

namespace fc {

Drives drivesFromEnvironment();

}  // namespace fc
