// Setting up and closing the loader's TCP socket.
#pragma once

namespace fc {

struct NetworkModule;
class TcpSocket;

// Sets, right after Connect and before the connection is up: no receive
// buffer, no send buffer (so that a send completes only when the scale has
// taken the data), and no coalescing of messages. A refused option is ignored.
void AplicaOpcionesSocket(NetworkModule& m, TcpSocket& socket);

// Closes the socket after a 100 ms pause that runs no events, letting Close
// linger by the platform's default, then waits, running events, up to 500 ms
// (`TimerClose`) for the socket to report closed. A fault in here is ignored.
void CerrarSocket(NetworkModule& m, TcpSocket& socket);

}  // namespace fc
