// Slices and runs of text with the run time's rules, for code that takes
// fields out of a record by position. Positions count from 1. A start below 1
// or a negative length or count is an invalid call (RuntimeError 5), which is
// how a malformed record makes the reading procedure fail; a slice past the
// end of the text is simply short.
#pragma once

#include <string>

#include "platform/vb_types.h"

namespace fc {

// `length` chars of `text` from `start`.
std::string Mid(const std::string& text, Long start, Long length);
// Everything of `text` from `start`.
std::string Mid(const std::string& text, Long start);
// The first `length` chars of `text`.
std::string Left(const std::string& text, Long length);
// `count` times the char `c`.
std::string String(Long count, char c);
// Upper-case hex digits of a value, as few as it takes (negative values as
// their 32-bit pattern).
std::string Hex(Long value);

}  // namespace fc
