// A machine's network seen by one of several loads that run at once on the
// same PC, each towards its own scales: it deletes only the address table
// rows of those scales. The loader clears the whole table at each scale's
// turn and reads its scale's row later; without this, one load's clearing
// would remove the row another load is about to read, and that load's scale
// would look absent at its MAC decision. Everything else passes through.
#pragma once

#include <vector>

#include "platform/network.h"

namespace fc {

class OwnRowsNetwork : public Network {
  public:
    OwnRowsNetwork(Network& machine, std::vector<Ipv4> own);

    std::unique_ptr<TcpTransport> newTcpTransport() override;
    std::unique_ptr<UdpTransport> newUdpTransport() override;
    std::int32_t setsockopt(int handle, std::int32_t level, std::int32_t option,
                            std::int32_t value) override;
    NetResult readNeighbours(std::vector<NeighbourRow>& rows) override;
    // A row of another address is left in the table, and reported deleted:
    // for this load it is as good as gone.
    NetResult deleteNeighbour(const NeighbourRow& row) override;
    NetResult echo(const Ipv4& address, int timeoutMs, bool& answered) override;

  private:
    bool owns(const Ipv4& ip) const;

    Network& machine_;
    std::vector<Ipv4> own_;
};

}  // namespace fc
