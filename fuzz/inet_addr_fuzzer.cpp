// Feeds arbitrary text to the two readers of an address text: the classic
// conversion the echo uses, and the dotted form a socket's RemoteHost takes.
// A plain dotted address (no leading zeros) must read the same in both.
#include <cstddef>
#include <cstdint>
#include <string>

#include "ethernet/inet_addr.h"
#include "platform/ipv4_text.h"

namespace {
bool hasLeadingZero(const std::string& text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        bool startsPart = i == 0 || text[i - 1] == '.';
        if (startsPart && text[i] == '0' && text[i + 1] != '.')
            return true;
    }
    return false;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    std::optional<fc::Ipv4> classic = fc::inet_addr(text);
    std::optional<fc::Ipv4> dotted = fc::parseDottedIpv4(text);
    bool broadcast = dotted && *dotted == fc::Ipv4{255, 255, 255, 255};
    if (dotted && !broadcast && !hasLeadingZero(text) && classic != dotted)
        __builtin_trap();
    return 0;
}
