// Reading the process environment (FIRMCAST_HOME, FIRMCAST_COMn, FIRMCAST_DRIVE_x).
#pragma once

#include <string>

namespace fc {

// The variable's value, or empty when it is not set.
std::string environmentVariable(const std::string& name);
bool hasEnvironmentVariable(const std::string& name);

}  // namespace fc
