#include "common/section_split.h"

namespace fc {

namespace {

// The run time's LTrim: leading blanks only, tabs stay.
std::string leftTrim(const std::string& s) {
    std::size_t first = s.find_first_not_of(' ');
    return first == std::string::npos ? "" : s.substr(first);
}

}  // namespace

std::vector<std::string> splitSectionBlock(const std::string& buffer) {
    const std::string block = buffer.substr(0, buffer.find(std::string(2, '\0')));
    std::vector<std::string> items;
    std::size_t start = 0;
    while (start < block.size()) {
        std::size_t nul = block.find('\0', start);
        std::size_t end = nul == std::string::npos ? block.size() : nul;
        std::string entry = leftTrim(block.substr(start, end - start));
        start = end + 1;
        std::size_t equals = entry.find('=');
        if (entry.empty() || equals == std::string::npos)
            continue;
        items.push_back(entry.substr(0, equals));
        items.push_back(leftTrim(entry.substr(equals + 1)));
    }
    return items;
}

}  // namespace fc
