// Feeds arbitrary bytes to the reader of one dumped neighbour-table entry, as
// the kernel's answers reach it: whatever comes, it reads inside the message
// and gives a row only with a destination and a 6-byte hardware address.
#include <cstddef>
#include <cstdint>

#include "platform/linux/neighbour_message.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fc::NeighbourRow row;
    if (fc::readNeighbourMessage(data, size, row) && row.physicalLength != 6)
        __builtin_trap();
    return 0;
}
