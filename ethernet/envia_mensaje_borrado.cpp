// The erase of one scale alone, over the second socket: a ready-made means
// for the screen, which the main sequence doesn't use.
#include "ethernet/address_table.h"
#include "ethernet/envia_mensajes.h"
#include "ethernet/ethernet_panel.h"
#include "ethernet/scale_turn.h"
#include "ethernet/socket_close.h"
#include "platform/pump.h"
#include "platform/socket_state.h"
#include "platform/tcp_socket.h"
#include "platform/window_timer.h"

namespace fc {

namespace {
constexpr int kEsperaEnvioMs = 500;
}  // namespace

void EnviaMensajeBorrado(EthernetPanel& p, const std::string& ip) {
    TcpSocket& socket = p.WsckClienteSiguiente;
    BorrarTablaARP(p.red, ip);
    IniciaConexion(p, socket, ip);
    while (p.TimerConnection.enabled() && socket.state() != sck::kConnected) p.pump.doEvents();
    p.TimerConnection.setEnabled(false);
    if (socket.state() == sck::kConnected && !p.mensajes.empty()) {
        p.respuesta.envio_completo = kFalse;
        socket.sendData(TextoMensaje(p.mensajes.front()));
        p.TimerEnvio.setInterval(kEsperaEnvioMs);
        p.TimerEnvio.setEnabled(true);
        while (p.TimerEnvio.enabled() && !p.respuesta.envio_completo) p.pump.doEvents();
        p.TimerEnvio.setEnabled(false);
    }
    CerrarSocket(p.red, socket);
}

}  // namespace fc
