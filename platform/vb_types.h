// Numeric types of the system and its truth values.
//
// The loader's arithmetic is defined on fixed widths: several limits and quirks
// (a negative "FFFF", an address that overflows a byte) follow from them, so
// the code names the widths instead of using int everywhere.
#pragma once

#include <cstdint>

namespace fc {

using Integer = std::int16_t;  // signed 16 bits
using Long = std::int32_t;     // signed 32 bits
using Byte = std::uint8_t;     // unsigned 8 bits

// A flag is an Integer holding True (-1) or False (0).
using Flag = Integer;
constexpr Flag kTrue = -1;
constexpr Flag kFalse = 0;

inline Flag toFlag(bool b) {
    return b ? kTrue : kFalse;
}

}  // namespace fc
