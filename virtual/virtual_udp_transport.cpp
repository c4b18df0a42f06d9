#include "virtual/virtual_udp_transport.h"

#include "platform/socket_errors.h"
#include "virtual/virtual_host.h"
#include "virtual/virtual_network.h"

namespace fc {

VirtualUdpTransport::~VirtualUdpTransport() {
    close();
}

int VirtualUdpTransport::bind(int localPort) {
    if (handle_ >= 0)
        return sck::kInvalidOp;
    int port = localPort == 0 ? network_.freeUdpPort() : localPort;
    if (network_.udpPortTaken(port))
        return sck::kAddressInUse;
    port_ = port;
    handle_ = network_.openHandle();
    network_.bindUdp(port_, *this);
    return 0;
}

int VirtualUdpTransport::sendTo(const Ipv4& address, int port, const std::string& bytes) {
    if (handle_ < 0) {
        int error = bind(0);
        if (error != 0)
            return error;
    }
    VirtualHost* host = network_.host(address);
    if (!host || !host->up())
        return 0;
    network_.learn(*host);
    Datagram datagram{network_.address, port_, bytes};
    network_.at(network_.now() + network_.halfTrip(),
                [host, port, datagram] { host->receiveUdp(port, datagram); });
    return 0;
}

bool VirtualUdpTransport::receive(Datagram& out) {
    if (inbox_.empty())
        return false;
    out = std::move(inbox_.front());
    inbox_.pop_front();
    return true;
}

void VirtualUdpTransport::close() {
    if (handle_ < 0)
        return;
    network_.unbindUdp(port_, *this);
    network_.closeHandle(handle_);
    handle_ = -1;
    port_ = 0;
    inbox_.clear();
}

}  // namespace fc
