#include <gtest/gtest.h>

#include "common/section_split.h"

namespace fc {
namespace {

using namespace std::string_literals;
using Items = std::vector<std::string>;

TEST(SplitSection, AlternatesKeyAndValueInOrder) {
    EXPECT_EQ(splitSectionBlock("a=1\0b=2\0\0"s), (Items{"a", "1", "b", "2"}));
}

TEST(SplitSection, TheBlockEndsAtTheFirstDoubleNul) {
    EXPECT_EQ(splitSectionBlock("a=1\0\0b=2\0\0"s), (Items{"a", "1"}));
}

TEST(SplitSection, ALastEntryWithoutItsNulCountsToo) {
    EXPECT_EQ(splitSectionBlock("a=1\0b=2"s), (Items{"a", "1", "b", "2"}));
}

TEST(SplitSection, EntriesAndValuesAreLeftTrimmedOfBlanksOnly) {
    EXPECT_EQ(splitSectionBlock("   a = 1 \0\tb=2\0\0"s), (Items{"a ", "1 ", "\tb", "2"}));
}

TEST(SplitSection, AValueKeepsLaterEqualsSigns) {
    EXPECT_EQ(splitSectionBlock("a==b=c\0\0"s), (Items{"a", "=b=c"}));
}

TEST(SplitSection, EmptyEntriesAndEntriesWithoutEqualsAreSkipped) {
    EXPECT_EQ(splitSectionBlock("   \0junk\0k=\0\0"s), (Items{"k", ""}));
    EXPECT_EQ(splitSectionBlock("=v\0\0"s), (Items{"", "v"}));
    EXPECT_EQ(splitSectionBlock(""s), Items{});
    EXPECT_EQ(splitSectionBlock("\0\0"s), Items{});
}

}  // namespace
}  // namespace fc
