// The machine's network: sockets, the option calls, the neighbour table
// through rtnetlink and the echo through ICMP, all in the network namespace
// the program runs in.
#pragma once

#include "platform/network.h"

namespace fc {

class LinuxNetwork : public Network {
  public:
    std::unique_ptr<TcpTransport> newTcpTransport() override;
    std::unique_ptr<UdpTransport> newUdpTransport() override;
    std::int32_t setsockopt(int handle, std::int32_t level, std::int32_t option,
                            std::int32_t value) override;
    NetResult readNeighbours(std::vector<NeighbourRow>& rows) override;
    NetResult deleteNeighbour(const NeighbourRow& row) override;
    NetResult echo(const Ipv4& address, int timeoutMs, bool& answered) override;
};

}  // namespace fc
