// The machine's network: sockets, the option calls, the neighbour table
// through rtnetlink and the echo through ICMP, all in the network namespace
// the program runs in. Reading the table needs no privilege; deleting a row
// and a raw echo do, and what this process may not do itself it asks of the
// network helper, the one program that holds the capabilities.
#pragma once

#include <string>

#include "platform/linux/net_helper_client.h"
#include "platform/network.h"

namespace fc {

class LinuxNetwork : public Network {
  public:
    // The helper beside the running program, or the one named.
    LinuxNetwork();
    explicit LinuxNetwork(std::string helperProgram);

    std::unique_ptr<TcpTransport> newTcpTransport() override;
    std::unique_ptr<UdpTransport> newUdpTransport() override;
    std::int32_t setsockopt(int handle, std::int32_t level, std::int32_t option,
                            std::int32_t value) override;
    NetResult readNeighbours(std::vector<NeighbourRow>& rows) override;
    NetResult deleteNeighbour(const NeighbourRow& row) override;
    NetResult echo(const Ipv4& address, int timeoutMs, bool& answered) override;

    const NetHelperClient& helper() const { return helper_; }

  private:
    NetHelperClient helper_;
};

}  // namespace fc
