// A load without a window: the main screen and its driver, driven by an
// operator script made from the command line's options.
#pragma once

#include <ostream>

#include "app/batch_options.h"

namespace fc::batch {

// Runs the passes the options ask for, printing every message box on `out`
// as it is shown, and the progress, the causes of failures and where a run
// stopped on `err`. Returns the exit status: 0 when every pass said "The
// scale is ready"; 1 when one did not, or when the screen waited for an
// operator the options had nothing more for (the run stops there and says
// where); 2 for a firmware file that cannot be read; 3 when the program
// ended by its fatal trap.
int runLoad(const Options& options, std::ostream& out, std::ostream& err);

}  // namespace fc::batch
