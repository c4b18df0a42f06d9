#include "platform/linux/icmp_packet.h"

#include <algorithm>

namespace fc {

namespace {

constexpr std::uint8_t kEchoReply = 0;
constexpr std::uint8_t kEchoRequest = 8;
constexpr std::size_t kHeaderLength = 8;
constexpr std::size_t kIpHeaderMinimum = 20;
constexpr char kEchoData[] = "abcdefghijklmnopqrstuvwabcdefghi";

std::uint16_t wordAt(const std::uint8_t* bytes, std::size_t at) {
    return static_cast<std::uint16_t>(bytes[at] << 8 | bytes[at + 1]);
}

void putWord(std::vector<std::uint8_t>& bytes, std::size_t at, std::uint16_t word) {
    bytes[at] = static_cast<std::uint8_t>(word >> 8);
    bytes[at + 1] = static_cast<std::uint8_t>(word & 0xFF);
}

// Where the ICMP message starts after a raw socket's IP header; 0 when the
// header does not hold together.
std::size_t icmpStart(const std::uint8_t* bytes, std::size_t length) {
    if (length < kIpHeaderMinimum || bytes[0] >> 4 != 4)
        return 0;
    std::size_t headerLength = static_cast<std::size_t>(bytes[0] & 0x0F) * 4;
    if (headerLength < kIpHeaderMinimum || headerLength > length)
        return 0;
    return headerLength;
}

}  // namespace

std::uint16_t internetChecksum(const std::uint8_t* bytes, std::size_t length) {
    std::uint32_t sum = 0;
    for (std::size_t at = 0; at + 1 < length; at += 2) sum += wordAt(bytes, at);
    if (length % 2 != 0)
        sum += static_cast<std::uint32_t>(bytes[length - 1]) << 8;
    while (sum >> 16 != 0) sum = (sum & 0xFFFF) + (sum >> 16);
    return static_cast<std::uint16_t>(~sum & 0xFFFF);
}

std::vector<std::uint8_t> echoRequest(std::uint16_t identifier, std::uint16_t sequence) {
    // The header and the data in one allocation, the data copied in place.
    std::vector<std::uint8_t> bytes(kHeaderLength + sizeof kEchoData - 1);
    bytes[0] = kEchoRequest;
    putWord(bytes, 4, identifier);
    putWord(bytes, 6, sequence);
    std::copy(kEchoData, kEchoData + sizeof kEchoData - 1, bytes.begin() + kHeaderLength);
    putWord(bytes, 2, internetChecksum(bytes.data(), bytes.size()));
    return bytes;
}

bool readEchoReply(const std::uint8_t* bytes, std::size_t length, bool withIpHeader,
                   EchoReply& reply) {
    if (withIpHeader) {
        std::size_t start = icmpStart(bytes, length);
        if (start == 0)
            return false;
        bytes += start;
        length -= start;
    }
    if (length < kHeaderLength || bytes[0] != kEchoReply || bytes[1] != 0)
        return false;
    if (internetChecksum(bytes, length) != 0)
        return false;
    reply.identifier = wordAt(bytes, 4);
    reply.sequence = wordAt(bytes, 6);
    return true;
}

}  // namespace fc
