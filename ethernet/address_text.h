// The text forms of network addresses.
#pragma once

#include <string>
#include <vector>

#include "platform/vb_types.h"

namespace fc {

// The first `cuenta` bytes in decimal joined by "." ("10.77.0.11").
std::string IpATexto(const std::vector<Byte>& bytes, Integer cuenta);

// Six bytes as two upper-case hex digits each, the first five followed by
// `separador` ("02C0DE000001" with an empty one). Fewer than six bytes is a
// fault, which gives "(error building MAC address)".
std::string MacATexto(const std::vector<Byte>& bytes, const std::string& separador);

constexpr const char* kErrorMac = "(error building MAC address)";

}  // namespace fc
