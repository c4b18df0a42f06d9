// The hand-made window of the main screen, `Firmcast`: the steps of the
// wizard in one page beside a column naming them, the model pictures as
// cards big enough to click, Back / Next / Exit at the bottom right, and the
// keyboard as on Windows (Enter presses the focused button, or Next).
#pragma once

namespace fc {

// Registers the layout for the screens named "Firmcast"; call it before the
// window is built.
void registerFirmcastLayout();

}  // namespace fc
