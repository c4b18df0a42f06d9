// One ICMP echo, sent and waited for in the network namespace the program
// runs in.
#pragma once

#include "platform/network.h"

namespace fc {

// Sends one echo request to `address` and blocks (no events run) until its
// reply comes or `timeoutMs` has passed; `answered` tells which. It uses an
// ICMP datagram socket when net.ipv4.ping_group_range admits the program's
// group, else a raw socket, which needs CAP_NET_RAW (NotPermitted without).
// A request the machine cannot send because the host is unreachable is a
// Done without an answer.
NetResult sendIcmpEcho(const Ipv4& address, int timeoutMs, bool& answered);

}  // namespace fc
