// Hex text primitives: reading hex fields, writing fixed-width upper-case hex,
// turning hex pairs into raw characters and computing a record's checksum.
//
// Firmware travels through the loader as text, one char per byte (every value
// 0..255 kept as it is), so these work on std::string and never on wide text.
// Positions in a record count from 1, as the record's field table does.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "platform/vb_types.h"

namespace fc {

// `count` characters of `text` from the 1-based `position`; shorter (or empty)
// where the text ends first, so a missing field reads as no digits at all.
inline std::string_view fieldAt(std::string_view text, std::size_t position, std::size_t count) {
    if (position == 0 || position > text.size())
        return {};
    return text.substr(position - 1, count);
}

namespace hex_detail {

// The value of every character as a hex digit of either case; -1 for the rest.
constexpr std::array<signed char, 256> digitValues() {
    std::array<signed char, 256> values{};
    for (int c = 0; c < 256; ++c) {
        values[c] = c >= '0' && c <= '9'   ? static_cast<signed char>(c - '0')
                    : c >= 'A' && c <= 'F' ? static_cast<signed char>(c - 'A' + 10)
                    : c >= 'a' && c <= 'f' ? static_cast<signed char>(c - 'a' + 10)
                                           : static_cast<signed char>(-1);
    }
    return values;
}
inline constexpr std::array<signed char, 256> kDigitValue = digitValues();

inline int digit(char c) {
    return kDigitValue[static_cast<unsigned char>(c)];
}

// ValHex of a text of more than eight characters, which may overflow.
Long valHexLong(std::string_view text);

}  // namespace hex_detail

// The one rule for reading hex text. Digits (either case) are taken from the
// start up to the first other character; no digit gives 0. A value that fits
// in 16 bits is read as a signed 16-bit number ("FFFF" is -1, "8000" -32768),
// a larger one as a signed 32-bit number ("10000" is 65536). More than 32 bits
// of value is an overflow (RuntimeError 6).
//
// Fields of a record are a few digits long and read by the million in a
// large file: eight digits or fewer cannot overflow, and are read here
// without the test.
inline Long ValHex(std::string_view text) {
    if (text.size() > 8)
        return hex_detail::valHexLong(text);
    std::uint32_t value = 0;
    for (char c : text) {
        const int d = hex_detail::digit(c);
        if (d < 0)
            break;
        value = value * 16 + static_cast<std::uint32_t>(d);
    }
    if (value <= 0xFFFFu)
        return static_cast<Integer>(static_cast<std::uint16_t>(value));
    return static_cast<Long>(value);
}

// ValHex of the field of `count` characters at the 1-based `position`.
inline Long ValHexAt(std::string_view text, std::size_t position, std::size_t count) {
    return ValHex(fieldAt(text, position, count));
}

// The value of hex text without prefix, by ValHex.
Long CHex2Lng(const std::string& texto);

// Half of `count`, a half going to the even neighbour (3 -> 2, 5 -> 2,
// 7 -> 4), as the run time rounds a division by two.
std::size_t halfRoundedToEven(std::size_t count);

// One character per hex pair, the character having the pair's code. An odd
// length is told in a box and the call carries on; the count of pairs is half
// the length rounded half to even, and the last pair may be one digit short.
std::string DameHex(const std::string& texto, Dialogs& dialogs);
// DameHex of `texto` added to the end of `out`.
void appendDameHex(std::string& out, std::string_view texto, Dialogs& dialogs);

// The two upper-case digits that complete the checksum of the hex pairs in
// `texto` (no ":" and no checksum of its own). Only "0"-"9" and "A"-"F" are
// digits here; any other character repeats the previous digit value. An odd
// length is told in a box and answers "00".
std::string DameCheckSum(const std::string& texto, Dialogs& dialogs);

// Four upper-case hex digits of `valor`, computed by repeated subtraction on
// the caller's own variable: afterwards it holds what was left of it (the low
// digit for 0..0x7FFF; a negative value is left untouched).
std::string to_hex(Integer& valor);

// One upper-case hex digit for 0..15; empty text for any other value.
std::string to_cadena(Byte valor);

// Two upper-case hex digits of a byte.
std::string char_hex(Byte valor);

}  // namespace fc
