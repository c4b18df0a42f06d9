// The two ways to the visor: the screen's serial line `Linea`, and its two
// UDP sockets, `Winsock_Envio` to the visor and `Winsock_recepcion` for the
// answers, gathered in `buffer_udp` by DataArrival.
#pragma once

#include <memory>

#include "visor/isp_way.h"

namespace fc {

class frmCargaMV510;

std::unique_ptr<IspWay> makeSerialWay(frmCargaMV510& screen);
std::unique_ptr<IspWay> makeUdpWay(frmCargaMV510& screen);

}  // namespace fc
