// One TCP client connection: the small table of operations that the TCP
// socket control needs. One implementation on the machine's sockets, one on
// the simulated network of the virtual clock.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace fc {

using Ipv4 = std::array<std::uint8_t, 4>;

// Where a connection stands after the last service().
struct TcpStatus {
    bool connecting = false;
    bool connected = false;
    // The peer has closed its side; what it sent before is still readable.
    bool peerClosed = false;
    // A socket error number (sck::) once the connection has failed; 0 before.
    int error = 0;
};

class TcpTransport {
  public:
    virtual ~TcpTransport() = default;

    // Creates the socket and starts connecting, without waiting. Returns 0,
    // or a socket error number when the attempt fails at once.
    virtual int startConnect(const Ipv4& address, int port) = 0;
    // The socket's handle for the option calls; -1 before startConnect.
    virtual int handle() const = 0;

    // Queues bytes; they leave as fast as the peer's window lets them.
    virtual void send(const std::string& bytes) = 0;
    // Bytes handed to send() that the peer's stack has not acknowledged yet:
    // the queue here plus the socket's unacknowledged count.
    virtual long unacknowledged() = 0;

    // Bytes received and not read yet.
    virtual long available() const = 0;
    // Everything received so far, removed from the buffer.
    virtual std::string receive() = 0;

    // Moves queued bytes out, takes arrived bytes in, and notes the progress
    // of the connection. Called from the event pump.
    virtual void service() = 0;
    virtual TcpStatus status() const = 0;

    // Closes the socket; safe to call at any time.
    virtual void close() = 0;

    // A descriptor that becomes readable when something arrives, or -1.
    virtual int wakeFd() const { return -1; }
};

}  // namespace fc
