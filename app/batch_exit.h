// The exit statuses of the headless program.
#pragma once

namespace fc::batch {

constexpr int kExitOk = 0;            // every pass (or read) succeeded
constexpr int kExitDeviceFailed = 1;  // a device failed, or a file read failed
constexpr int kExitBadUsage = 2;
constexpr int kExitFatalTrap = 3;  // the program ended by its fatal trap

}  // namespace fc::batch
