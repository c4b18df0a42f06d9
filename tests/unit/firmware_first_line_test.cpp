// The two tests of a first line, side by side: the serial load counts the
// data pairs a line holds, the Ethernet preparation its digits exactly.
#include "firmware/first_line_checks.h"

#include <gtest/gtest.h>

#include "firmware/hex_text.h"

namespace fc {
namespace {

TEST(HalfRoundedToEven, AnEvenCountIsHalvedAndAHalfGoesToTheEvenNeighbour) {
    EXPECT_EQ(halfRoundedToEven(0), 0u);
    EXPECT_EQ(halfRoundedToEven(1), 0u);
    EXPECT_EQ(halfRoundedToEven(3), 2u);
    EXPECT_EQ(halfRoundedToEven(5), 2u);
    EXPECT_EQ(halfRoundedToEven(7), 4u);
    EXPECT_EQ(halfRoundedToEven(8), 4u);
    EXPECT_EQ(halfRoundedToEven(9), 4u);
}

TEST(FirstLineChecks, ASoundRecordFitsBoth) {
    const std::string line = ":020000040000FA";  // two data bytes, 15 characters
    EXPECT_TRUE(firstLineFitsSerialLoad(line));
    EXPECT_TRUE(firstLineFitsEthernetMessages(line));
}

TEST(FirstLineChecks, NeitherTakesALineShorterThanARecordOrWithoutItsColon) {
    for (const std::string& line : {std::string(":00000001F"), std::string("S00000001FF"),
                                    std::string(), std::string("020000040000FA:")}) {
        EXPECT_FALSE(firstLineFitsSerialLoad(line)) << line;
        EXPECT_FALSE(firstLineFitsEthernetMessages(line)) << line;
    }
}

TEST(FirstLineChecks, ALineOneDigitLongFitsTheSerialLoadOnlyWhenItsPairsRoundToTheLength) {
    // 16 characters: five digits after the header, rounded to two pairs.
    const std::string line = ":020000040000FA0";
    EXPECT_TRUE(firstLineFitsSerialLoad(line));
    EXPECT_FALSE(firstLineFitsEthernetMessages(line));
    // 18 characters: seven digits round to four pairs, not two.
    EXPECT_FALSE(firstLineFitsSerialLoad(":020000040000FA012"));
}

TEST(FirstLineChecks, ALengthFieldThatDisagreesWithTheDataFitsNeither) {
    const std::string line = ":030000040000FA";
    EXPECT_FALSE(firstLineFitsSerialLoad(line));
    EXPECT_FALSE(firstLineFitsEthernetMessages(line));
}

}  // namespace
}  // namespace fc
