#include "ethernet/inet_addr.h"

#include <cctype>
#include <cstdint>
#include <vector>

namespace fc {

namespace {

int digitValue(char ch, int base) {
    int value = -1;
    if (std::isdigit(static_cast<unsigned char>(ch)))
        value = ch - '0';
    else if (std::isxdigit(static_cast<unsigned char>(ch)))
        value = std::tolower(static_cast<unsigned char>(ch)) - 'a' + 10;
    return value < base ? value : -1;
}

// Reads one part at `pos` in its base; false when it is empty or too big.
bool readPart(const std::string& t, size_t& pos, std::uint64_t& out) {
    int base = 10;
    if (pos < t.size() && t[pos] == '0') {
        base = 8;
        if (pos + 1 < t.size() && (t[pos + 1] == 'x' || t[pos + 1] == 'X')) {
            base = 16;
            pos += 2;
        }
    }
    size_t start = pos;
    std::uint64_t value = 0;
    for (int d; pos < t.size() && (d = digitValue(t[pos], base)) >= 0; ++pos) {
        value = value * base + d;
        if (value > 0xFFFFFFFFu)
            return false;
    }
    // "0x" with no digits is no part; a lone "0" read as octal is.
    if (pos == start && base != 8)
        return false;
    out = value;
    return true;
}

}  // namespace

std::optional<Ipv4> inet_addr(const std::string& texto) {
    std::vector<std::uint64_t> parts;
    size_t pos = 0;
    while (true) {
        std::uint64_t part = 0;
        if (!readPart(texto, pos, part))
            return std::nullopt;
        parts.push_back(part);
        if (pos < texto.size() && texto[pos] == '.' && parts.size() < 4) {
            ++pos;
            continue;
        }
        break;
    }
    // What follows the address may only be blanks.
    for (; pos < texto.size(); ++pos) {
        if (!std::isspace(static_cast<unsigned char>(texto[pos])))
            return std::nullopt;
    }
    std::uint64_t value = 0;
    size_t n = parts.size();
    for (size_t i = 0; i + 1 < n; ++i) {
        if (parts[i] > 0xFF)
            return std::nullopt;
        value |= parts[i] << (24 - 8 * i);
    }
    std::uint64_t lastLimit = 0xFFFFFFFFull >> (8 * (n - 1));
    if (parts[n - 1] > lastLimit)
        return std::nullopt;
    value |= parts[n - 1];
    if (value == 0xFFFFFFFFull)
        return std::nullopt;
    return Ipv4{static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
                static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

}  // namespace fc
