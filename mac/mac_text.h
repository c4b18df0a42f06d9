// The two text forms of a MAC address of ours: twelve hex digits, the maker's
// prefix "02C0DE" and the counter's number in six, as the scale takes it; and
// six pairs joined by "-", as the register and the screens show it.
#pragma once

#include <string>

#include "platform/vb_types.h"

namespace fc {

constexpr const char* kPrefijoMac = "02C0DE";
// The last number the six digits behind the prefix can hold.
constexpr Long kUltimoNumeroMac = 0xFFFFFF;

// "02C0DE" and the number's hex digits, left-padded with "0" to six.
std::string MacDeNumero(Long numero);

// "02C0DE000001" becomes "02-C0-DE-00-00-01".
std::string MacConGuiones(const std::string& mac);

}  // namespace fc
