#include "platform/linux/linux_network.h"

#include <utility>

#include "platform/linux/icmp_echo.h"
#include "platform/linux/linux_tcp_transport.h"
#include "platform/linux/linux_udp_transport.h"
#include "platform/linux/neighbour_table.h"
#include "platform/linux/socket_options.h"

namespace fc {

LinuxNetwork::LinuxNetwork() : helper_(netHelperBesideProgram()) {}

LinuxNetwork::LinuxNetwork(std::string helperProgram) : helper_(std::move(helperProgram)) {}

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
    NetResult result = deleteNeighbourEntry(row);
    if (result == NetResult::NotPermitted)
        result = helper_.deleteNeighbour(row);
    return result;
}

// An ICMP datagram socket needs no privilege where the system admits the
// program's group; a raw one does, and then the helper sends the echo.
NetResult LinuxNetwork::echo(const Ipv4& address, int timeoutMs, bool& answered) {
    NetResult result = sendIcmpEcho(address, timeoutMs, answered);
    if (result == NetResult::NotPermitted)
        result = helper_.echo(address, timeoutMs, answered);
    return result;
}

}  // namespace fc
