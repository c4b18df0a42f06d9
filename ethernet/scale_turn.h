// The pieces of one scale's turn in the Ethernet load, in the order they run:
// the connection, the messages, the waits that follow some of them, and the
// checksum at the end. Each marks the scale failed in `estado_balanzas` when
// it fails; none stops the run.
#pragma once

#include <string>

namespace fc {

struct EthernetPanel;
class TcpSocket;

// Connects the client socket to scale i unless it is connected already,
// waits up to 500 ms for the connection, then 500 ms more to let it settle.
void ConectaBalanza(EthernetPanel& p, int i);

// Sends every message from the first, the list's end read again on each
// pass, until the end or a failure.
void EnviaTodos(EthernetPanel& p, int i);

// After the erase message: up to 40 s for code 3. The end of the time is not
// a failure.
void EsperaBorrado(EthernetPanel& p);

// A send that did not complete: up to 4 s for code 10, then the scale is
// failed and the socket closed.
void EsperaError(EthernetPanel& p, int i);

// After the end-of-load message: whether scale i needs a new MAC address
// and, if so, the 0x68 message that gives it one.
void DecideMac(EthernetPanel& p, int i);

// After the last message: up to 40 s for code 5, then its checksum against
// the image's.
void EsperaChecksum(EthernetPanel& p, int i);

// "Scale " and the scale's number: its place in the list counted from
// `primera_balanza` (1 unless a parallel run's worker says otherwise).
std::string TextoBalanza(const EthernetPanel& p, int i);

// Starts `socket` towards `ip` on the scale port with the loader's options
// and `TimerConnection` running, after closing whatever it held.
void IniciaConexion(EthernetPanel& p, TcpSocket& socket, const std::string& ip);

}  // namespace fc
