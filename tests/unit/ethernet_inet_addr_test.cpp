#include <gtest/gtest.h>

#include "ethernet/inet_addr.h"

namespace fc {
namespace {

Ipv4 ip(int a, int b, int c, int d) {
    return Ipv4{static_cast<std::uint8_t>(a), static_cast<std::uint8_t>(b),
                static_cast<std::uint8_t>(c), static_cast<std::uint8_t>(d)};
}

TEST(InetAddr, ReadsFourDecimalParts) {
    EXPECT_EQ(inet_addr("10.77.0.11"), ip(10, 77, 0, 11));
}

TEST(InetAddr, ALeadingZeroMakesAPartOctal) {
    EXPECT_EQ(inet_addr("10.77.0.011"), ip(10, 77, 0, 9));
    EXPECT_FALSE(inet_addr("10.77.0.09").has_value());
}

TEST(InetAddr, ALeading0xMakesAPartHex) {
    EXPECT_EQ(inet_addr("0x0A.77.0.0xff"), ip(10, 77, 0, 255));
}

TEST(InetAddr, TheLastPartFillsTheBytesThatAreLeft) {
    EXPECT_EQ(inet_addr("10.77.11"), ip(10, 77, 0, 11));
    EXPECT_EQ(inet_addr("10.257"), ip(10, 0, 1, 1));
    EXPECT_EQ(inet_addr("167772171"), ip(10, 0, 0, 11));
}

TEST(InetAddr, APartTooBigForItsPlaceIsNoAddress) {
    EXPECT_FALSE(inet_addr("10.77.0.256").has_value());
    EXPECT_FALSE(inet_addr("256.1.1.1").has_value());
    EXPECT_FALSE(inet_addr("10.77.65536").has_value());
}

TEST(InetAddr, TextThatIsNoAddressGivesNothing) {
    EXPECT_FALSE(inet_addr("").has_value());
    EXPECT_FALSE(inet_addr("scale1").has_value());
    EXPECT_FALSE(inet_addr("10..0.1").has_value());
    EXPECT_FALSE(inet_addr("10.77.0.1.5").has_value());
    EXPECT_FALSE(inet_addr("10.77.0.1x").has_value());
}

TEST(InetAddr, TrailingBlanksAreAllowed) {
    EXPECT_EQ(inet_addr("10.77.0.11  "), ip(10, 77, 0, 11));
}

TEST(InetAddr, TheBroadcastAddressCannotBeToldFromAFailure) {
    EXPECT_FALSE(inet_addr("255.255.255.255").has_value());
}

}  // namespace
}  // namespace fc
