// The Ethernet load of every scale of the list, one after the other over the
// screen's client socket: connect and settle, the messages paced by the
// scale's taking of them, the erase wait, the end of the load with its MAC
// decision, the checksum, the scale record form, and the row's icon. A scale
// that fails does not stop the run; the next one follows at once.
#pragma once

#include <string>

#include "firmware/mensaje_eth.h"

namespace fc {

struct EthernetPanel;

// The list's row icons.
constexpr int kIconoEnviado = 1;
constexpr int kIconoFallo = 2;

void EnviaMensajes(EthernetPanel& p);

// Sends the first message of the list (the erase) to the scale at `ip`
// alone, over the second socket: a short connection of its own, with up to
// 500 ms to connect and 500 ms for the send to complete, then closed.
void EnviaMensajeBorrado(EthernetPanel& p, const std::string& ip);

// The message as it goes on the wire: type, bank, number, payload.
std::string TextoMensaje(const MensajeEth& mensaje);

}  // namespace fc
