// The load of a graphic display without a window: the main screen's first
// scale, its display screen opened from the way step, the way, the file and
// the logical address chosen and the load pressed, as an operator would.
#pragma once

#include <ostream>

#include "app/batch_options.h"

namespace fc::batch {

// Prints every message box on `out` as it is shown and, at the end, the
// display screen's Label2 as "label: <text>", whether shown or hidden.
// Returns 0 when it says "Loaded OK", 1 otherwise (and when the run stopped
// where the screen waited for an operator, saying where on `err`), 2 for a
// file that cannot be read, 3 on the fatal trap.
int runDisplay(const Options& options, std::ostream& out, std::ostream& err);

}  // namespace fc::batch
