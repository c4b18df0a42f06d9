// The options of the simulator program: which device, at what speed, and
// which faults it shows.
#pragma once

#include <ostream>
#include <string>

#include "sim/device_faults.h"

namespace fc {

class SerialDevice;

struct SimOptions {
    std::string kind = "numbered";  // numbered, banked or echo
    int baud = 57600;
    long long eraseMs = 2000;
    bool wantsMac = false;
    bool silentEndCommand = false;
    double slowFactor = 1.0;
    std::string logPath;
    DeviceFaults faults;
    bool help = false;
};

bool parseSimOptions(int argc, char** argv, SimOptions& out, std::string& error);
std::string simUsage();

// Writes the frames the device received after the first `alreadyLogged`, one
// a line; returns how many are logged now.
size_t logNewFrames(const SerialDevice& device, size_t alreadyLogged, std::ostream& out);

}  // namespace fc
