// The machine's form of an IPv4 address and port, made from the loader's
// bytes and read back into them.
#pragma once

#include <netinet/in.h>

#include "platform/tcp_transport.h"

namespace fc {

// `address` (bytes in network order) and `port`, ready for connect, bind or
// sendto.
sockaddr_in socketAddress(const Ipv4& address, int port = 0);

// The address bytes of `from`, in network order.
Ipv4 addressBytes(const sockaddr_in& from);

}  // namespace fc
