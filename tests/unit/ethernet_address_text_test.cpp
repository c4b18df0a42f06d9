#include <gtest/gtest.h>

#include "ethernet/address_text.h"

namespace fc {
namespace {

TEST(IpATexto, JoinsTheBytesInDecimalWithNoTrailingPoint) {
    EXPECT_EQ(IpATexto({10, 77, 0, 11}, 4), "10.77.0.11");
}

TEST(IpATexto, WritesNoLeadingZeros) {
    EXPECT_EQ(IpATexto({192, 168, 1, 7}, 4), "192.168.1.7");
    EXPECT_EQ(IpATexto({0, 0, 0, 0}, 4), "0.0.0.0");
}

TEST(IpATexto, TakesOnlyTheCountGiven) {
    EXPECT_EQ(IpATexto({255, 1, 2, 3}, 2), "255.1");
    EXPECT_EQ(IpATexto({9, 8, 7, 6}, 1), "9");
}

TEST(IpATexto, NoBytesGiveAnEmptyText) {
    EXPECT_EQ(IpATexto({1, 2, 3, 4}, 0), "");
}

TEST(MacATexto, AnEmptySeparatorGivesTwelveUpperCaseHexDigits) {
    EXPECT_EQ(MacATexto({0x02, 0xC0, 0xDE, 0x0a, 0xbc, 0x0f}, ""), "02C0DE0ABC0F");
}

TEST(MacATexto, TheSeparatorStandsBetweenPairsOnly) {
    EXPECT_EQ(MacATexto({0x00, 0x1b, 0x2c, 0x3d, 0x4e, 0x5f}, "-"), "00-1B-2C-3D-4E-5F");
}

TEST(MacATexto, BytesBeyondTheSixthAreNotWritten) {
    EXPECT_EQ(MacATexto({1, 2, 3, 4, 5, 6, 7, 8}, ""), "010203040506");
}

TEST(MacATexto, FewerThanSixBytesGiveTheErrorText) {
    EXPECT_EQ(MacATexto({1, 2, 3, 4, 5}, ""), "(error building MAC address)");
    EXPECT_EQ(MacATexto({}, ":"), "(error building MAC address)");
}

}  // namespace
}  // namespace fc
