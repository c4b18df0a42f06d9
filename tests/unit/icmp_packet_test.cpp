#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/linux/icmp_packet.h"

namespace fc {
namespace {

using Bytes = std::vector<std::uint8_t>;

// The reply a host makes of a request: type 0, the rest as it came, the
// checksum made again.
Bytes replyTo(Bytes request) {
    request[0] = 0;
    request[2] = request[3] = 0;
    std::uint16_t sum = internetChecksum(request.data(), request.size());
    request[2] = static_cast<std::uint8_t>(sum >> 8);
    request[3] = static_cast<std::uint8_t>(sum & 0xFF);
    return request;
}

// An IPv4 header of `words` 32-bit words in front of `icmp`.
Bytes withIpHeader(const Bytes& icmp, int words = 5) {
    Bytes packet(static_cast<std::size_t>(words) * 4, 0);
    packet[0] = static_cast<std::uint8_t>(0x40 | words);
    packet[9] = 1;
    packet.insert(packet.end(), icmp.begin(), icmp.end());
    return packet;
}

TEST(IcmpPacket, ChecksumOfTheWorkedExample) {
    // RFC 1071's example: the one's complement sum is ddf2.
    const Bytes bytes{0x00, 0x01, 0xf2, 0x03, 0xf4, 0xf5, 0xf6, 0xf7};

    EXPECT_EQ(internetChecksum(bytes.data(), bytes.size()), 0x220d);
}

TEST(IcmpPacket, ChecksumPadsAnOddByteWithZero) {
    const Bytes odd{0x12, 0x34, 0x56};
    const Bytes padded{0x12, 0x34, 0x56, 0x00};

    EXPECT_EQ(internetChecksum(odd.data(), odd.size()),
              internetChecksum(padded.data(), padded.size()));
    EXPECT_EQ(internetChecksum(odd.data(), odd.size()), static_cast<std::uint16_t>(~0x6834));
}

TEST(IcmpPacket, RequestCarriesItsNumbersAndData) {
    Bytes request = echoRequest(0x1234, 0xabcd);

    ASSERT_EQ(request.size(), 8u + 32u);
    EXPECT_EQ(request[0], 8);
    EXPECT_EQ(request[1], 0);
    EXPECT_EQ(request[4], 0x12);
    EXPECT_EQ(request[5], 0x34);
    EXPECT_EQ(request[6], 0xab);
    EXPECT_EQ(request[7], 0xcd);
    EXPECT_EQ(std::string(request.begin() + 8, request.end()), "abcdefghijklmnopqrstuvwabcdefghi");
    EXPECT_EQ(internetChecksum(request.data(), request.size()), 0);
}

TEST(IcmpPacket, ReplyReadsItsIdentifierAndSequence) {
    Bytes reply = replyTo(echoRequest(0x0102, 0x0304));
    EchoReply read;

    ASSERT_TRUE(readEchoReply(reply.data(), reply.size(), false, read));

    EXPECT_EQ(read.identifier, 0x0102);
    EXPECT_EQ(read.sequence, 0x0304);
}

TEST(IcmpPacket, ReplyBehindAnIpHeaderIsRead) {
    for (int words : {5, 6, 15}) {
        Bytes packet = withIpHeader(replyTo(echoRequest(7, 9)), words);
        EchoReply read;

        ASSERT_TRUE(readEchoReply(packet.data(), packet.size(), true, read)) << words;

        EXPECT_EQ(read.identifier, 7);
        EXPECT_EQ(read.sequence, 9);
    }
}

TEST(IcmpPacket, IpHeaderLongerThanThePacketIsNoReply) {
    Bytes packet = withIpHeader(Bytes{0, 0, 0xff, 0xff}, 15);
    packet.resize(40);
    EchoReply read;

    EXPECT_FALSE(readEchoReply(packet.data(), packet.size(), true, read));
}

TEST(IcmpPacket, PacketWithoutItsIpHeaderIsNoReplyWhereOneIsExpected) {
    Bytes reply = replyTo(echoRequest(7, 9));
    EchoReply read;

    EXPECT_FALSE(readEchoReply(reply.data(), reply.size(), true, read));
}

TEST(IcmpPacket, RequestIsNoReply) {
    Bytes request = echoRequest(7, 9);
    EchoReply read;

    EXPECT_FALSE(readEchoReply(request.data(), request.size(), false, read));
}

TEST(IcmpPacket, DestinationUnreachableIsNoReply) {
    Bytes unreachable = replyTo(echoRequest(7, 9));
    unreachable[0] = 3;
    unreachable[1] = 1;
    unreachable[2] = unreachable[3] = 0;
    std::uint16_t sum = internetChecksum(unreachable.data(), unreachable.size());
    unreachable[2] = static_cast<std::uint8_t>(sum >> 8);
    unreachable[3] = static_cast<std::uint8_t>(sum & 0xFF);
    EchoReply read;

    EXPECT_FALSE(readEchoReply(unreachable.data(), unreachable.size(), false, read));
}

TEST(IcmpPacket, DamagedReplyIsNoReply) {
    Bytes reply = replyTo(echoRequest(7, 9));
    reply[20] ^= 0x01;
    EchoReply read;

    EXPECT_FALSE(readEchoReply(reply.data(), reply.size(), false, read));
}

TEST(IcmpPacket, ReplyCutBeforeItsNumbersIsNoReply) {
    Bytes reply = replyTo(echoRequest(7, 9));
    EchoReply read;

    EXPECT_FALSE(readEchoReply(reply.data(), 7, false, read));
}

}  // namespace
}  // namespace fc
