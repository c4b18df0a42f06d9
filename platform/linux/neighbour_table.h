// The machine's IPv4 neighbour table (the IP-to-hardware address table),
// read and changed through rtnetlink in the network namespace the program
// runs in.
#pragma once

#include <vector>

#include "platform/network.h"

namespace fc {

// Every IPv4 entry that holds a hardware address, in the kernel's order.
// Entries still being resolved, failed ones and NOARP ones are left out.
NetResult readNeighbourTable(std::vector<NeighbourRow>& rows);

// Removes the entry of `row.ip` on `row.interfaceIndex`. NotPermitted without
// CAP_NET_ADMIN; Failed for any other refusal, an entry already gone included.
NetResult deleteNeighbourEntry(const NeighbourRow& row);

}  // namespace fc
