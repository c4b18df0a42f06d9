// Feeds arbitrary packets to the reader of an echo reply, with and without an
// IP header in front, as a raw and a datagram socket hand them over.
#include <cstddef>
#include <cstdint>

#include "platform/linux/icmp_packet.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fc::EchoReply reply;
    fc::readEchoReply(data, size, false, reply);
    fc::readEchoReply(data, size, true, reply);
    return 0;
}
