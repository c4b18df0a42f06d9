// Connecting to one scale: the connect wait and the settle time.
#include "ethernet/ethernet_panel.h"
#include "ethernet/scale_turn.h"
#include "ethernet/socket_close.h"
#include "platform/pump.h"
#include "platform/socket_state.h"
#include "platform/tcp_socket.h"
#include "platform/window_timer.h"

namespace fc {

namespace {
constexpr int kEsperaConexionMs = 500;
}  // namespace

void IniciaConexion(EthernetPanel& p, TcpSocket& socket, const std::string& ip) {
    p.TimerConnection.setInterval(kEsperaConexionMs);
    socket.close();
    socket.setRemoteHost(ip);
    socket.setRemotePort(p.puerto_tx);
    socket.connect();
    AplicaOpcionesSocket(p.red, socket);
    p.TimerConnection.setEnabled(true);
}

void ConectaBalanza(EthernetPanel& p, int i) {
    TcpSocket& socket = p.WsckCliente;
    if (socket.state() != sck::kConnected)
        IniciaConexion(p, socket, p.lista_balanzas[i]);
    while (p.TimerConnection.enabled() && socket.state() != sck::kConnected) {
        if (socket.state() == sck::kClosed) {
            // Refused, or gone: the scale is failed, and the wait ends.
            p.TimerConnection.setEnabled(false);
            CerrarSocket(p.red, socket);
            p.estado_balanzas[i] = false;
        }
        p.pump.doEvents();
    }
    // A fixed settle time after the connection, whatever it came to.
    p.TimerConnection.setInterval(kEsperaConexionMs);
    p.TimerConnection.setEnabled(true);
    while (p.TimerConnection.enabled()) p.pump.doEvents();
    p.TimerConnection.setEnabled(false);
    if (socket.state() != sck::kConnected)
        p.estado_balanzas[i] = false;
}

}  // namespace fc
