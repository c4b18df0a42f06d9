// A load without a window: the main screen and its driver, driven by an
// operator script made from the command line's options.
#pragma once

#include <ostream>

#include "app/batch_options.h"

namespace fc::batch {

// Runs the passes the options ask for, printing every message box as it is
// shown. Returns the exit status: 0 when every pass said "The scale is
// ready", 1 when one did not, 3 when the program ended by its fatal trap.
int runLoad(const Options& options, std::ostream& out, std::ostream& progress);

}  // namespace fc::batch
