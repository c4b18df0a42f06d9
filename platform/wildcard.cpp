#include "platform/wildcard.h"

#include <cctype>

namespace fc {

namespace {

bool sameLetter(char a, char b) {
    return std::toupper(static_cast<unsigned char>(a)) ==
           std::toupper(static_cast<unsigned char>(b));
}

// Plain glob match, iterative with one backtrack point: linear in practice and
// never recursive, whatever the pattern.
bool globMatch(std::string_view pattern, std::string_view name) {
    std::size_t p = 0, n = 0;
    std::size_t starP = std::string_view::npos, starN = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            starP = p++;
            starN = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || sameLetter(pattern[p], name[n]))) {
            ++p;
            ++n;
        } else if (starP != std::string_view::npos) {
            p = starP + 1;
            n = ++starN;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

}  // namespace

bool matchesWildcard(std::string_view pattern, std::string_view name) {
    if (globMatch(pattern, name))
        return true;
    // "x.*" also stands for "x" with no extension at all.
    if (pattern.size() >= 2 && pattern.substr(pattern.size() - 2) == ".*") {
        return globMatch(pattern.substr(0, pattern.size() - 2), name);
    }
    return false;
}

bool hasWildcard(std::string_view text) {
    return text.find_first_of("*?") != std::string_view::npos;
}

}  // namespace fc
