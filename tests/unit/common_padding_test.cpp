#include <gtest/gtest.h>

#include "common/padding.h"

namespace fc {
namespace {

TEST(RellenarIzquierda, ZeroSevenThreeGivesZeroZeroSeven) {
    EXPECT_EQ(RellenarIzquierda("0", "7", 3), "007");
}

TEST(RellenarIzquierda, ABlankFillGivesTwoBlanksForEachMissingCharacter) {
    EXPECT_EQ(RellenarIzquierda(" ", "7", 3), "    7");
}

TEST(RellenarIzquierda, AnEmptyFillCountsAsBlank) {
    EXPECT_EQ(RellenarIzquierda("", "ab", 4), "    ab");
}

TEST(RellenarIzquierda, ALongerTextIsDiscardedNotCut) {
    EXPECT_EQ(RellenarIzquierda("0", "1234", 3), "000");
}

TEST(RellenarIzquierda, ALongerTextWithABlankFillGivesSingleBlanks) {
    EXPECT_EQ(RellenarIzquierda(" ", "1234", 3), "   ");
}

TEST(RellenarIzquierda, TheFirstCharacterOfTheFillIsUsed) {
    EXPECT_EQ(RellenarIzquierda("xy", "7", 3), "xx7");
}

TEST(RellenarIzquierda, ATextOfTheFullLengthStaysAsItIs) {
    EXPECT_EQ(RellenarIzquierda("0", "49", 2), "49");
}

TEST(RellenarIzquierda, ATabIsNotBlankAndFillsSingly) {
    EXPECT_EQ(RellenarIzquierda("\t", "7", 3), "\t\t7");
}

TEST(RellenarIzquierda, ErrorsAreIgnoredAndLeaveTheResultEmpty) {
    EXPECT_EQ(RellenarIzquierda("", "1234", 3), "");  // nothing to repeat
    EXPECT_EQ(RellenarIzquierda("0", "", -1), "");    // a negative count
}

}  // namespace
}  // namespace fc
