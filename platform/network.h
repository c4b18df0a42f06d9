// The machine's network as the loader reaches it: new sockets, the option
// calls on a socket's handle, the IP-to-hardware address table, and the echo.
// One implementation on the machine (rtnetlink, ICMP), one simulated.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/tcp_transport.h"
#include "platform/udp_transport.h"

namespace fc {

// One row of the address table, with the fields of the classic table row.
struct NeighbourRow {
    std::uint32_t interfaceIndex = 0;
    std::uint32_t physicalLength = 0;
    std::array<std::uint8_t, 8> physical{};
    Ipv4 ip{};
    std::uint32_t type = 0;  // 3 dynamic, 4 static
};

// The row types.
constexpr std::uint32_t kNeighbourDynamic = 3;
constexpr std::uint32_t kNeighbourStatic = 4;

// How a table or echo operation went. NotPermitted: the program lacks the
// capability (CAP_NET_ADMIN to delete, CAP_NET_RAW for a raw echo).
enum class NetResult { Done, NotPermitted, Failed };

// Socket option numbers, as the loader passes them to setsockopt.
namespace sockopt {
constexpr std::int32_t kSolSocket = 0xFFFF;
constexpr std::int32_t kSoRcvbuf = 0x1002;
constexpr std::int32_t kSoSndbuf = 0x1001;
constexpr std::int32_t kSoDontlinger = -129;  // 0xFFFFFF7F, the complement of SO_LINGER (0x80)
constexpr std::int32_t kIpprotoTcp = 6;
constexpr std::int32_t kTcpNodelay = 1;
}  // namespace sockopt

class Network {
  public:
    virtual ~Network() = default;

    virtual std::unique_ptr<TcpTransport> newTcpTransport() = 0;
    virtual std::unique_ptr<UdpTransport> newUdpTransport() = 0;

    // Sets a 32-bit option on the socket `handle`, by the loader's numbers
    // (sockopt::). Returns 0, or -1 when the option is refused or unknown.
    virtual std::int32_t setsockopt(int handle, std::int32_t level, std::int32_t option,
                                    std::int32_t value) = 0;

    // Reads the whole address table, in the platform's order.
    virtual NetResult readNeighbours(std::vector<NeighbourRow>& rows) = 0;
    // Deletes one row, found by its interface and IP address.
    virtual NetResult deleteNeighbour(const NeighbourRow& row) = 0;
    // Sends one echo request to `address` and blocks, running no events, until
    // the reply comes or `timeoutMs` has passed. `answered` tells which.
    virtual NetResult echo(const Ipv4& address, int timeoutMs, bool& answered) = 0;
};

}  // namespace fc
