// One UDP endpoint: the small table of operations that the UDP socket control
// needs. One implementation on the machine's sockets, one on the simulated
// network of the virtual clock.
#pragma once

#include <string>

#include "platform/tcp_transport.h"

namespace fc {

struct Datagram {
    Ipv4 from{};
    int fromPort = 0;
    std::string bytes;
};

class UdpTransport {
  public:
    virtual ~UdpTransport() = default;

    // Binds to a local port on every address (0: any free port). Returns 0 or
    // a socket error number.
    virtual int bind(int localPort) = 0;
    // Sends one datagram; binds to a free port first when not bound. Returns 0
    // or a socket error number.
    virtual int sendTo(const Ipv4& address, int port, const std::string& bytes) = 0;
    // Takes the next datagram that has arrived; false when there is none.
    virtual bool receive(Datagram& out) = 0;
    virtual int localPort() const = 0;
    virtual int handle() const = 0;
    virtual void close() = 0;

    // A descriptor that becomes readable when a datagram arrives, or -1.
    virtual int wakeFd() const { return -1; }
};

}  // namespace fc
