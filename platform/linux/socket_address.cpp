#include "platform/linux/socket_address.h"

#include <cstdint>
#include <cstring>

namespace fc {

sockaddr_in socketAddress(const Ipv4& address, int port) {
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(static_cast<std::uint16_t>(port));
    std::memcpy(&to.sin_addr.s_addr, address.data(), address.size());  // already in network order
    return to;
}

Ipv4 addressBytes(const sockaddr_in& from) {
    Ipv4 ip{};
    std::memcpy(ip.data(), &from.sin_addr.s_addr, ip.size());
    return ip;
}

}  // namespace fc
