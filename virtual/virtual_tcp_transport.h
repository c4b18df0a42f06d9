// The program's end of a TCP connection on the simulated network. Every
// change (connected, bytes arrived, acknowledgements) is made by the network's
// events as they fall due, so service() has nothing left to do.
#pragma once

#include <memory>

#include "platform/tcp_transport.h"

namespace fc {

class VirtualNetwork;
class VirtualTcpConnection;

class VirtualTcpTransport final : public TcpTransport {
  public:
    explicit VirtualTcpTransport(VirtualNetwork& network) : network_(network) {}
    ~VirtualTcpTransport() override;
    VirtualTcpTransport(const VirtualTcpTransport&) = delete;
    VirtualTcpTransport& operator=(const VirtualTcpTransport&) = delete;

    // A second start closes the first connection and begins a new one.
    int startConnect(const Ipv4& address, int port) override;
    int handle() const override { return handle_; }
    void send(const std::string& bytes) override;
    long unacknowledged() override;
    long available() const override;
    std::string receive() override;
    void service() override {}
    TcpStatus status() const override;
    void close() override;

  private:
    VirtualNetwork& network_;
    std::shared_ptr<VirtualTcpConnection> connection_;
    int handle_ = -1;
};

}  // namespace fc
