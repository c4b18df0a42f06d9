// The states of a socket control, by the numbers its `State` property gives.
#pragma once

#include "platform/vb_types.h"

namespace fc::sck {

constexpr Integer kClosed = 0;
constexpr Integer kOpen = 1;
constexpr Integer kConnecting = 6;
constexpr Integer kConnected = 7;

}  // namespace fc::sck
