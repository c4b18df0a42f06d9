// One UDP endpoint on the machine's sockets: a non-blocking IPv4 datagram
// socket. Every byte value 0..255 passes unchanged; one receive() takes one
// whole datagram.
#pragma once

#include <vector>

#include "platform/udp_transport.h"

namespace fc {

class LinuxUdpTransport : public UdpTransport {
  public:
    LinuxUdpTransport() = default;
    ~LinuxUdpTransport() override;
    LinuxUdpTransport(const LinuxUdpTransport&) = delete;
    LinuxUdpTransport& operator=(const LinuxUdpTransport&) = delete;

    // On every local address, without SO_REUSEADDR, so that a port another
    // socket holds is sck::kAddressInUse. sck::kInvalidOp when already bound,
    // sck::kInvalidArg for a port outside 0..65535.
    int bind(int localPort) override;
    // A datagram too long for IPv4 is sck::kInvalidArg.
    int sendTo(const Ipv4& address, int port, const std::string& bytes) override;
    bool receive(Datagram& out) override;
    // The bound port; 0 before binding.
    int localPort() const override;
    int handle() const override { return fd_; }
    void close() override;
    int wakeFd() const override { return fd_; }

  private:
    int openSocket();
    int sendOnce(const Ipv4& address, int port, const std::string& bytes);

    int fd_ = -1;
    bool bound_ = false;
    // Room for the largest datagram, kept between receives.
    std::vector<char> buffer_;
};

}  // namespace fc
