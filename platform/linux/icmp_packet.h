// ICMP echo messages as bytes: the request the echo sends and the reply it
// waits for. Kept apart from the socket so that they can be checked on
// packets made by hand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace fc {

// The Internet checksum (RFC 1071) of `length` bytes: the one's complement of
// their one's complement sum, taken as 16-bit words in network order.
std::uint16_t internetChecksum(const std::uint8_t* bytes, std::size_t length);

// An echo request (type 8) with its checksum, carrying the 32 letters that
// Windows' echo carries.
std::vector<std::uint8_t> echoRequest(std::uint16_t identifier, std::uint16_t sequence);

struct EchoReply {
    std::uint16_t identifier = 0;
    std::uint16_t sequence = 0;
};

// Reads an echo reply (type 0, code 0, good checksum). A raw socket hands over
// the IP header in front (`withIpHeader`); a datagram socket only the ICMP
// message. False for anything else, other ICMP messages included.
bool readEchoReply(const std::uint8_t* bytes, std::size_t length, bool withIpHeader,
                   EchoReply& reply);

}  // namespace fc
