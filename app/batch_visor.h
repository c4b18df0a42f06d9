// The headless load of an MV-510 visor: the catalogue's visor picture opens
// the visor screen, where the script picks the way and the file and presses
// the load button, as an operator would.
#pragma once

#include <ostream>

#include "app/batch_options.h"

namespace fc::batch {

// Message boxes go to `out` as "msgbox: <text>", and when the load has
// ended the visor screen's Label2 as "label: <text>". Exit 0 when it says
// "Firmcast OK", 1 otherwise.
int runVisorLoad(const Options& options, std::ostream& out, std::ostream& err);

}  // namespace fc::batch
