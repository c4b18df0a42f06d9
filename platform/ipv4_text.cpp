#include "platform/ipv4_text.h"

#include <cctype>

namespace fc {

namespace {

// Reads one decimal number, 0 to 255, at `pos`; false when there is none.
bool readPart(const std::string& text, size_t& pos, std::uint8_t& out) {
    size_t start = pos;
    int value = 0;
    while (pos < text.size() && std::isdigit(static_cast<unsigned char>(text[pos]))) {
        value = value * 10 + (text[pos] - '0');
        if (value > 255 || pos - start >= 3)
            return false;
        ++pos;
    }
    out = static_cast<std::uint8_t>(value);
    return pos > start;
}

}  // namespace

std::optional<Ipv4> parseDottedIpv4(const std::string& text) {
    Ipv4 address{};
    size_t pos = 0;
    for (size_t part = 0; part < address.size(); ++part) {
        if (part > 0) {
            if (pos >= text.size() || text[pos] != '.')
                return std::nullopt;
            ++pos;
        }
        if (!readPart(text, pos, address[part]))
            return std::nullopt;
    }
    if (pos != text.size())
        return std::nullopt;
    return address;
}

}  // namespace fc
