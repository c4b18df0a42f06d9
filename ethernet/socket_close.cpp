#include "ethernet/socket_close.h"

#include "common/common_module.h"
#include "common/kernel_waits.h"
#include "ethernet/network_module.h"
#include "platform/pump.h"
#include "platform/runtime_error.h"
#include "platform/tcp_socket.h"
#include "platform/window_timer.h"

namespace fc {

namespace {
constexpr int kTiempoCierre = 500;
constexpr int kPausaCierre = 100;
}  // namespace

void AplicaOpcionesSocket(NetworkModule& m, TcpSocket& socket) {
    int handle = socket.socketHandle();
    m.network.setsockopt(handle, sockopt::kSolSocket, sockopt::kSoRcvbuf, 0);
    m.network.setsockopt(handle, sockopt::kSolSocket, sockopt::kSoSndbuf, 0);
    m.network.setsockopt(handle, sockopt::kIpprotoTcp, sockopt::kTcpNodelay, 1);
}

void CerrarSocket(NetworkModule& m, TcpSocket& socket) {
    try {
        m.TimerClose.setInterval(kTiempoCierre);
        EsperaEventoRecursos(m.c, kPausaCierre);
        m.network.setsockopt(socket.socketHandle(), sockopt::kSolSocket, sockopt::kSoDontlinger, 0);
        socket.close();
        m.TimerClose.setEnabled(true);
        Pump& pump = m.c.services.pump;
        while (m.TimerClose.enabled() && socket.state() > 0) pump.doEvents();
        if (m.TimerClose.enabled())
            m.TimerClose.setEnabled(false);
    } catch (const RuntimeError&) {
        // Ignored: the socket is as good as closed for the caller.
    }
}

}  // namespace fc
