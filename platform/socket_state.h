// The states of a socket control, by the numbers its `State` property gives.
#pragma once

#include "platform/vb_types.h"

namespace fc::sck {

constexpr Integer kClosed = 0;
constexpr Integer kOpen = 1;
constexpr Integer kConnecting = 6;
constexpr Integer kConnected = 7;
// The peer has closed its side; the program's Close ends it.
constexpr Integer kClosing = 8;
// The connection failed or broke; the program's Close ends it.
constexpr Integer kError = 9;

}  // namespace fc::sck
