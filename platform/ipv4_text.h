// The dotted form of an IPv4 address that a socket control's RemoteHost takes:
// four decimal numbers 0..255 joined by ".".
#pragma once

#include <optional>
#include <string>

#include "platform/tcp_transport.h"

namespace fc {

std::optional<Ipv4> parseDottedIpv4(const std::string& text);

}  // namespace fc
