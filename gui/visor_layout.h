// The window of the visor screen, `frmCargaMV510`: the way to the visor
// (RS-232 with its port and speed, or the visor's address and UDP port) and
// the firmware file side by side, the progress below, and the buttons at the
// bottom right.
#pragma once

namespace fc {

// Registers the layout for the screens named "frmCargaMV510".
void registerVisorLayout();

}  // namespace fc
