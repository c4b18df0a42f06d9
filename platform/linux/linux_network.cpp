#include "platform/linux/linux_network.h"

#include "platform/linux/icmp_echo.h"
#include "platform/linux/linux_tcp_transport.h"
#include "platform/linux/linux_udp_transport.h"
#include "platform/linux/neighbour_table.h"
#include "platform/linux/socket_options.h"

namespace fc {

std::unique_ptr<TcpTransport> LinuxNetwork::newTcpTransport() {
    return std::make_unique<LinuxTcpTransport>();
}

std::unique_ptr<UdpTransport> LinuxNetwork::newUdpTransport() {
    return std::make_unique<LinuxUdpTransport>();
}

std::int32_t LinuxNetwork::setsockopt(int handle, std::int32_t level, std::int32_t option,
                                      std::int32_t value) {
    return setLoaderSocketOption(handle, level, option, value);
}

NetResult LinuxNetwork::readNeighbours(std::vector<NeighbourRow>& rows) {
    return readNeighbourTable(rows);
}

NetResult LinuxNetwork::deleteNeighbour(const NeighbourRow& row) {
    return deleteNeighbourEntry(row);
}

NetResult LinuxNetwork::echo(const Ipv4& address, int timeoutMs, bool& answered) {
    return sendIcmpEcho(address, timeoutMs, answered);
}

}  // namespace fc
