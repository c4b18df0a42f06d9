#include "serial/answer_wait.h"

#include "platform/pump.h"
#include "platform/serial_line.h"
#include "platform/window_timer.h"

namespace fc {

void espera_tiempo(SerialPanel& panel, int ms) {
    panel.timerout.setInterval(ms);
    panel.tiempo_agotado = kFalse;
    panel.timerout.setEnabled(true);
    while (panel.tiempo_agotado == kFalse) {
        panel.pump.doEvents();
        panel.pump.sleep(1);
    }
    panel.timerout.setEnabled(false);
}

void drena_salida(SerialPanel& panel) {
    while (panel.Linea.outBufferCount() != 0) panel.pump.doEvents();
}

bool espera_respuesta(SerialPanel& panel, int timeoutMs, const std::function<bool()>& answered) {
    panel.tiempo_agotado = kFalse;
    panel.timerout.setInterval(timeoutMs);
    panel.timerout.setEnabled(true);
    while (!answered() && panel.tiempo_agotado == kFalse) panel.pump.doEvents();
    panel.timerout.setEnabled(false);
    return panel.tiempo_agotado == kFalse;
}

std::function<bool()> al_menos(SerialPanel& panel, int count) {
    return [&panel, count] { return panel.Linea.inBufferCount() >= count; };
}

}  // namespace fc
