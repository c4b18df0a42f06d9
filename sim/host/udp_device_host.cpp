#include "sim/host/udp_device_host.h"

#include <stdexcept>

#include "platform/linux/linux_udp_transport.h"
#include "platform/pump.h"

namespace fc {

UdpDeviceHost::UdpDeviceHost(Pump& pump, int port, std::function<void(const Datagram&)> onDatagram)
    : pump_(pump),
      socket_(std::make_unique<LinuxUdpTransport>()),
      onDatagram_(std::move(onDatagram)) {
    if (const int error = socket_->bind(port); error != 0)
        throw std::runtime_error("UDP port " + std::to_string(port) + " cannot be bound (error " +
                                 std::to_string(error) + ")");
    pump_.add(*this);
}

UdpDeviceHost::~UdpDeviceHost() {
    pump_.remove(*this);
}

int UdpDeviceHost::port() const {
    return socket_->localPort();
}

void UdpDeviceHost::send(const Ipv4& to, int toPort, const std::string& bytes) {
    socket_->sendTo(to, toPort, bytes);
}

int UdpDeviceHost::wakeFd() const {
    return socket_->wakeFd();
}

void UdpDeviceHost::runDue(Micros) {
    Datagram datagram;
    while (socket_->receive(datagram)) onDatagram_(datagram);
}

}  // namespace fc
