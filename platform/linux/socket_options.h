// The socket options the loader sets, by its own numbers (sockopt:: in
// platform/network.h), on a Linux socket.
#pragma once

#include <cstdint>

namespace fc {

// Sets one 32-bit option on `fd`. The pairs known: receive and send buffer
// sizes (Linux rounds a size below its minimum up to that minimum), no
// coalescing (TCP_NODELAY), and "don't linger", which with value 0 leaves the
// close to the platform's default (SO_LINGER off). Returns 0, or -1 when the
// pair is unknown or the call fails.
std::int32_t setLoaderSocketOption(int fd, std::int32_t level, std::int32_t option,
                                   std::int32_t value);

}  // namespace fc
