// Sending the messages to one scale, paced by the socket's SendComplete
// alone, and the waits that follow the erase and a send that didn't complete.
#include "ethernet/envia_mensajes.h"
#include "ethernet/ethernet_panel.h"
#include "ethernet/scale_turn.h"
#include "ethernet/socket_close.h"
#include "firmware/message_fields.h"
#include "platform/controls.h"
#include "platform/pump.h"
#include "platform/socket_state.h"
#include "platform/tcp_socket.h"
#include "platform/window_timer.h"

namespace fc {

namespace {

constexpr int kEsperaEnvioMs = 500;
constexpr int kEsperaBorradoMs = 40000;
constexpr int kEsperaErrorMs = 4000;

void arrancaTimerout(EthernetPanel& p, int ms) {
    p.timerout.setEnabled(false);
    p.timerout.setInterval(ms);
    p.timerout.setEnabled(true);
    p.tiempo_agotado = kFalse;
}

// Waits for SendComplete up to 500 ms. A socket that drops meanwhile fails
// the scale and ends the wait. Each pass sleeps 1 ms, then yields: the
// completion is seen as the yield raises it, and the next message follows
// at once, so that the scale is not kept waiting for the sleep.
void esperaEnvio(EthernetPanel& p, int i) {
    while (p.TimerEnvio.enabled() && !p.respuesta.envio_completo) {
        p.pump.sleep(1);
        p.pump.doEvents();
        if (p.WsckCliente.state() == sck::kClosed) {
            p.TimerEnvio.setEnabled(false);
            p.estado_balanzas[i] = false;
            break;
        }
    }
}

// One message, j. False when the scale is failed and no more is sent to it.
bool enviaMensaje(EthernetPanel& p, int i, std::size_t j) {
    p.lblInformacion.setCaption("Mensaje " + std::to_string(j));
    const std::string texto = TextoMensaje(p.mensajes[j]);
    if (p.WsckCliente.state() != sck::kConnected) {
        p.estado_balanzas[i] = false;
        return false;
    }
    p.WsckCliente.sendData(texto);
    p.respuesta.envio_completo = kFalse;
    p.TimerEnvio.setInterval(kEsperaEnvioMs);
    p.TimerEnvio.setEnabled(true);
    esperaEnvio(p, i);
    p.Texto.setCaption(texto);
    p.pump.doEvents();
    p.pump.doEvents();
    p.TimerEnvio.setEnabled(false);
    if (!p.respuesta.envio_completo) {
        // Not taken in 500 ms: the scale has stopped taking data.
        EsperaError(p, i);
        return false;
    }
    const std::string& tipo = p.mensajes[j].tipo;
    if (tipo == tipoDe(tipo_msg::kBorrado))
        EsperaBorrado(p);
    if (tipo == tipoDe(tipo_msg::kFinCarga))
        DecideMac(p, i);
    return true;
}

// Until `timerout` runs out: yields and sleeps 1 ms a pass, and an answer
// with `codigo` ends the wait as the time-out would.
void esperaRespuesta(EthernetPanel& p, Byte codigo) {
    while (!p.tiempo_agotado) {
        p.pump.doEvents();
        p.pump.sleep(1);
        if (p.respuesta.codigo_respuesta == codigo && p.respuesta.longitud_respuesta >= 1)
            p.tiempo_agotado = kTrue;
    }
}

void avanzaBarra(EthernetPanel& p) {
    if (p.BarraEth.value() < p.BarraEth.max())
        p.BarraEth.setValue(p.BarraEth.value() + 1);
    p.pump.doEvents();
}

}  // namespace

void EnviaTodos(EthernetPanel& p, int i) {
    // The end is read again on every pass: a 0x68 added at the end of the
    // load goes out like the rest.
    for (std::size_t j = 0; j < p.mensajes.size(); ++j) {
        if (!enviaMensaje(p, i, j))
            return;
        avanzaBarra(p);
        if (!p.estado_balanzas[i])
            return;
    }
}

void EsperaBorrado(EthernetPanel& p) {
    arrancaTimerout(p, kEsperaBorradoMs);
    p.lblInformacion.setCaption("Deleting Scale\xC2\xB4s Flash ...");
    // The answer of the scale before can't end this wait.
    p.respuesta.longitud_respuesta = 0;
    esperaRespuesta(p, respuesta::kBorrada);
    p.lblInformacion.setCaption("Mensaje 1");
    p.timerout.setEnabled(false);
}

void EsperaError(EthernetPanel& p, int i) {
    arrancaTimerout(p, kEsperaErrorMs);
    p.lblInformacion.setCaption("Waiting error ...");
    std::string texto = TextoBalanza(p, i) + " ERROR ";
    // The one wait that yields without sleeping.
    while (!p.tiempo_agotado) {
        p.pump.doEvents();
        if (p.respuesta.codigo_respuesta == respuesta::kError &&
            p.respuesta.longitud_respuesta >= 1) {
            p.tiempo_agotado = kTrue;
            texto = TextoBalanza(p, i) + " ERROR " + std::to_string(p.respuesta.error_balanza);
        }
    }
    p.timerout.setEnabled(false);
    p.lblInformacion.setCaption(texto);
    p.estado_balanzas[i] = false;
    CerrarSocket(p.red, p.WsckCliente);
}

void EsperaChecksum(EthernetPanel& p, int i) {
    // No answer of any kind has come from this scale: there is nothing to wait for.
    if (p.respuesta.longitud_respuesta == 0)
        return;
    arrancaTimerout(p, kEsperaBorradoMs);
    p.lblInformacion.setCaption("Waiting checksum ...");
    if (p.respuesta.codigo_respuesta != respuesta::kChecksum)
        esperaRespuesta(p, respuesta::kChecksum);
    p.lblInformacion.setCaption("");
    // A time-out leaves the old checksum, and so is told as a checksum error.
    if (p.checksum_memoria != p.respuesta.checksum_balanza) {
        p.lblInformacion.setCaption(TextoBalanza(p, i) + " Checksum Error");
        p.lstBalanzas.setSmallIcon(i, kIconoFallo);
        p.estado_balanzas[i] = false;
    }
    p.timerout.setEnabled(false);
}

}  // namespace fc
