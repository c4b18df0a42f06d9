// The hand-made window of the graphic display's load screen: the firmware
// file on the left; the way, the logical address and the line's or the
// network's parameters on the right; the progress of the load under them;
// Back, Load, Stop and Exit at the bottom right.
#pragma once

namespace fc {

// Registers the layout for the screens named "frmCargaDisplayGrafico"; call
// it before the window is built.
void registerDisplayLayout();

}  // namespace fc
