// The waits of the serial protocols: a plain delay that keeps the window
// alive, and the wait for a device's answer under the time-out timer.
#pragma once

#include <functional>

#include "serial/serial_panel.h"

namespace fc {

// Arms `timerout` for `ms` and pumps events, sleeping 1 ms a turn, until it
// fires. A time of 0 never fires, so the call never returns; no caller passes 0.
void espera_tiempo(SerialPanel& panel, int ms);

// Pumps events until nothing is left queued for sending on the line.
void drena_salida(SerialPanel& panel);

// Arms `timerout` for `timeoutMs` and pumps events, without sleeping, while
// `answered` is false and the timer has not fired; then disarms the timer.
// Returns true when the answer came, false on a time-out. The caller then
// reads the line's Input.
bool espera_respuesta(SerialPanel& panel, int timeoutMs, const std::function<bool()>& answered);

// The condition most steps wait for: at least `count` bytes received.
std::function<bool()> al_menos(SerialPanel& panel, int count);

}  // namespace fc
