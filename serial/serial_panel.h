// What the serial procedures use of a screen: its serial control, its
// time-out timer and flag, the speed list and the frame-format labels. The
// main screen and the visor screen each hand theirs over, so one
// implementation serves both.
#pragma once

#include "platform/vb_types.h"

namespace fc {

class Pump;
class Dialogs;
class SerialLine;
class WindowTimer;
class ComboBox;
class Label;
class Frame;

struct SerialPanel {
    Pump& pump;
    Dialogs& dialogs;
    SerialLine& Linea;
    WindowTimer& timerout;
    Flag& tiempo_agotado;
    ComboBox& cmbvelocidades;
    Label& lblBits;
    Label& lblParidad;
    Frame& frComParameters;
};

// The frame format a model's loader speaks.
enum class LineFamily {
    SevenEven,  // 7 data bits, even parity: the numbered-line scales and TR-8200
    EightNone,  // 8 data bits, no parity: everything else
};

}  // namespace fc
