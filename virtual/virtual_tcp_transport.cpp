#include "virtual/virtual_tcp_transport.h"

#include "virtual/virtual_network.h"
#include "virtual/virtual_tcp_connection.h"

namespace fc {

VirtualTcpTransport::~VirtualTcpTransport() {
    close();
}

int VirtualTcpTransport::startConnect(const Ipv4& address, int port) {
    close();
    handle_ = network_.openHandle();
    connection_ = std::make_shared<VirtualTcpConnection>(network_, network_.host(address), port);
    connection_->start();
    return 0;
}

void VirtualTcpTransport::send(const std::string& bytes) {
    if (connection_)
        connection_->programSend(bytes);
}

long VirtualTcpTransport::unacknowledged() {
    return connection_ ? connection_->unacknowledged() : 0;
}

long VirtualTcpTransport::available() const {
    return connection_ ? static_cast<long>(connection_->received().size()) : 0;
}

std::string VirtualTcpTransport::receive() {
    std::string bytes;
    if (connection_)
        bytes.swap(connection_->received());
    return bytes;
}

TcpStatus VirtualTcpTransport::status() const {
    return connection_ ? connection_->status() : TcpStatus{};
}

void VirtualTcpTransport::close() {
    if (connection_)
        connection_->programClose();
    connection_.reset();
    if (handle_ >= 0)
        network_.closeHandle(handle_);
    handle_ = -1;
}

}  // namespace fc
