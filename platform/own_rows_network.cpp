#include "platform/own_rows_network.h"

#include <algorithm>
#include <utility>

namespace fc {

OwnRowsNetwork::OwnRowsNetwork(Network& machine, std::vector<Ipv4> own)
    : machine_(machine), own_(std::move(own)) {}

std::unique_ptr<TcpTransport> OwnRowsNetwork::newTcpTransport() {
    return machine_.newTcpTransport();
}

std::unique_ptr<UdpTransport> OwnRowsNetwork::newUdpTransport() {
    return machine_.newUdpTransport();
}

std::int32_t OwnRowsNetwork::setsockopt(int handle, std::int32_t level, std::int32_t option,
                                        std::int32_t value) {
    return machine_.setsockopt(handle, level, option, value);
}

NetResult OwnRowsNetwork::readNeighbours(std::vector<NeighbourRow>& rows) {
    return machine_.readNeighbours(rows);
}

NetResult OwnRowsNetwork::deleteNeighbour(const NeighbourRow& row) {
    if (!owns(row.ip))
        return NetResult::Done;
    return machine_.deleteNeighbour(row);
}

NetResult OwnRowsNetwork::echo(const Ipv4& address, int timeoutMs, bool& answered) {
    return machine_.echo(address, timeoutMs, answered);
}

bool OwnRowsNetwork::owns(const Ipv4& ip) const {
    return std::find(own_.begin(), own_.end(), ip) != own_.end();
}

}  // namespace fc
