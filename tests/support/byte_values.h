// Test data that every transport must carry unchanged.
#pragma once

#include <string>

namespace fc {

// Every byte value, 0 to 255, once and in order.
inline std::string allByteValues() {
    std::string bytes;
    for (int v = 0; v < 256; ++v) bytes += static_cast<char>(v);
    return bytes;
}

}  // namespace fc
