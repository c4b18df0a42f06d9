// The program's UDP endpoint on the simulated network: a port of the PC's,
// datagrams to the hosts' ports, and the datagrams the hosts send to it.
#pragma once

#include <deque>

#include "platform/udp_transport.h"

namespace fc {

class VirtualNetwork;

class VirtualUdpTransport final : public UdpTransport {
  public:
    explicit VirtualUdpTransport(VirtualNetwork& network) : network_(network) {}
    ~VirtualUdpTransport() override;
    VirtualUdpTransport(const VirtualUdpTransport&) = delete;
    VirtualUdpTransport& operator=(const VirtualUdpTransport&) = delete;

    // A port another endpoint holds is 10048; binding twice is 40020.
    int bind(int localPort) override;
    // Lost without a word when the host is missing, off or not taking
    // datagrams on `port`.
    int sendTo(const Ipv4& address, int port, const std::string& bytes) override;
    bool receive(Datagram& out) override;
    int localPort() const override { return port_; }
    int handle() const override { return handle_; }
    void close() override;

    // A datagram that has reached the bound port.
    void deliver(const Datagram& datagram) { inbox_.push_back(datagram); }

  private:
    VirtualNetwork& network_;
    int port_ = 0;
    int handle_ = -1;
    std::deque<Datagram> inbox_;
};

}  // namespace fc
