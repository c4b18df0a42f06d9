// The splitting of a section read whole from an INI file.
#pragma once

#include <string>
#include <vector>

namespace fc {

// Splits a buffer of NUL-ended "key=value" entries: the buffer is cut at its
// first double NUL; each entry is left-trimmed of blanks and skipped when
// empty or without "="; otherwise the text before the first "=" and the text
// after it, left-trimmed, are added in turn. The last entry counts too when
// no NUL ends it. The result alternates key, value, key, value, in order.
std::vector<std::string> splitSectionBlock(const std::string& buffer);

}  // namespace fc
