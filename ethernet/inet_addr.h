// The classic conversion of an address text to an IPv4 address: one to four
// parts joined by ".", each decimal, octal (a leading 0) or hex (a leading
// 0x); the last part fills the bytes that are left. So "10.77.0.011" is
// 10.77.0.9, and "10.77.11" is 10.77.0.11.
#pragma once

#include <optional>
#include <string>

#include "platform/tcp_transport.h"

namespace fc {

// nullopt for a text that is no address, and for 255.255.255.255, which the
// classic call cannot tell apart from a failure.
std::optional<Ipv4> inet_addr(const std::string& texto);

}  // namespace fc
