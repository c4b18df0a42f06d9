#include "firmware/first_line_checks.h"

#include <algorithm>

#include "firmware/hex_text.h"

namespace fc {

namespace {

bool looksLikeARecord(const std::string& line) {
    return line.size() >= 11 && line[0] == ':';
}

}  // namespace

bool firstLineFitsSerialLoad(const std::string& line) {
    if (!looksLikeARecord(line))
        return false;
    const auto pairs = static_cast<Long>(halfRoundedToEven(line.size() - 11));
    const auto available = static_cast<Long>(line.size()) - 9;
    return std::min(pairs, available) == CHex2Lng(line.substr(1, 2));
}

bool firstLineFitsEthernetMessages(const std::string& line) {
    if (!looksLikeARecord(line))
        return false;
    const auto digits = static_cast<Long>(line.size()) - 11;
    return CHex2Lng(line.substr(1, 2)) * 2 == digits;
}

}  // namespace fc
