// Setting up and opening a screen's serial line.
#pragma once

#include "platform/vb_types.h"
#include "serial/serial_panel.h"

namespace fc {

// Takes the speed from the speed list (57600 when nothing is chosen), the
// frame format from the model's family, and opens COM `puerto_com`. On any
// failure it says "Error at port COMn", closes the line, puts the wizard back
// on the communication step (`paso_asistente` = 1) and returns False.
Flag lanza_linea(SerialPanel& panel, Integer puerto_com, LineFamily family,
                 Integer& paso_asistente);

}  // namespace fc
