// The two tests of a firmware file's first line, one for each way of loading.
// Both want an Intel HEX record: at least 11 characters, a ":" first, and its
// length field in agreement with the data the line holds. They count that
// data differently, and on purpose, for each reproduces its own loader:
// - the serial load counts the pairs of data the line holds, an odd digit
//   rounded to the even pair count, and no more pairs than there are
//   characters after the header, so a line one digit short or long can pass;
// - the Ethernet preparation wants exactly two digits for each byte of the
//   length field, so only a line of 11 + 2 x length characters passes.
#pragma once

#include <string>

namespace fc {

// The first line that the serial load of a numbered or boot-ROM scale, or of
// the visor, accepts.
bool firstLineFitsSerialLoad(const std::string& line);

// The first line that the preparation of the Ethernet messages accepts.
bool firstLineFitsEthernetMessages(const std::string& line);

}  // namespace fc
