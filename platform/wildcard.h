// File name patterns as the Windows file search reads them: "*" any run of
// characters, "?" any one character, letters matched without regard to case.
// A pattern ending in ".*" also matches a name without any dot, so "*.*"
// matches every name and "RX_*.*" matches "RX_1" as well as "RX_1.TXT".
#pragma once

#include <string_view>

namespace fc {

bool matchesWildcard(std::string_view pattern, std::string_view name);

// True when the text holds "*" or "?".
bool hasWildcard(std::string_view text);

}  // namespace fc
