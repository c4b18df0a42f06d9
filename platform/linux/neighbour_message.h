// The rtnetlink messages of the IPv4 neighbour table: the dump request, the
// delete request, and one dumped entry read into a row. Plain byte work, kept
// apart from the socket so that it can be checked on messages made by hand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/network.h"

namespace fc {

// RTM_GETNEIGH for every IPv4 entry of every interface.
std::vector<std::uint8_t> neighbourDumpRequest(std::uint32_t sequence);

// RTM_DELNEIGH, acknowledged, for the entry of `row.ip` on `row.interfaceIndex`.
std::vector<std::uint8_t> neighbourDeleteRequest(const NeighbourRow& row, std::uint32_t sequence);

// Reads one netlink message of `length` bytes, header included, as a table
// row. False when it is not an RTM_NEWNEIGH for IPv4 with a destination and a
// 6-byte hardware address, or when it is a NOARP entry (multicast, broadcast):
// those are not hosts whose address the table learnt.
bool readNeighbourMessage(const std::uint8_t* message, std::size_t length, NeighbourRow& row);

}  // namespace fc
