#include "virtual/virtual_host.h"

#include "sim/device/tcp_device.h"
#include "virtual/virtual_network.h"
#include "virtual/virtual_tcp_connection.h"

namespace fc {

VirtualHost::VirtualHost(VirtualNetwork& network, const Ipv4& ip, const Mac& mac)
    : network_(network), ip_(ip), mac_(mac) {}

VirtualHost::~VirtualHost() = default;

void VirtualHost::setUp(bool up) {
    up_ = up;
    if (up)
        return;
    for (const auto& connection : connections_) connection->cut();
}

void VirtualHost::listen(int port, DeviceFactory factory) {
    listeners_[port] = std::move(factory);
}

void VirtualHost::stopListening(int port) {
    listeners_.erase(port);
}

std::unique_ptr<TcpDevice> VirtualHost::makeDevice(int port) const {
    auto listener = listeners_.find(port);
    if (listener == listeners_.end() || !listener->second)
        return nullptr;
    return listener->second();
}

void VirtualHost::adopt(std::shared_ptr<VirtualTcpConnection> connection) {
    connections_.push_back(std::move(connection));
}

std::vector<TcpDevice*> VirtualHost::devices() const {
    std::vector<TcpDevice*> out;
    for (const auto& connection : connections_) out.push_back(connection->device());
    return out;
}

void VirtualHost::onUdp(int port, UdpHandler handler) {
    if (handler)
        udpHandlers_[port] = std::move(handler);
    else
        udpHandlers_.erase(port);
}

void VirtualHost::receiveUdp(int port, const Datagram& datagram) {
    if (!up_)
        return;
    auto handler = udpHandlers_.find(port);
    if (handler == udpHandlers_.end())
        return;
    UdpHandler take = handler->second;  // the handler may replace itself
    take(datagram);
}

void VirtualHost::sendUdp(int fromPort, int toPort, const std::string& bytes) {
    if (!up_)
        return;
    network_.sendToPc(toPort, Datagram{ip_, fromPort, bytes});
}

}  // namespace fc
