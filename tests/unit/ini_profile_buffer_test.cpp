#include <gtest/gtest.h>

#include "platform/profile_buffer.h"
#include "platform/profile_text.h"

namespace fc {
namespace {

using namespace std::string_literals;

TEST(ProfileBuffer, AValueFillsAtMostTheBufferLessOne) {
    ProfileText t("[s]\nk=" + std::string(300, 'v') + "\n");
    EXPECT_EQ(profileString(t, "s"s, "k"s, "", 255), std::string(254, 'v'));
    EXPECT_EQ(profileString(t, "s"s, "k"s, "", 1), "");
    EXPECT_EQ(profileString(t, "s"s, "k"s, "", 0), "");
}

TEST(ProfileBuffer, OnePairOfMatchingQuotesIsRemovedFromAValue) {
    ProfileText t("[s]\na=\"quoted\"\nb='single'\nc=\"unmatched'\nd=\"\ne=\"\"\n");
    EXPECT_EQ(profileString(t, "s"s, "a"s, "", 255), "quoted");
    EXPECT_EQ(profileString(t, "s"s, "b"s, "", 255), "single");
    EXPECT_EQ(profileString(t, "s"s, "c"s, "", 255), "\"unmatched'");
    EXPECT_EQ(profileString(t, "s"s, "d"s, "", 255), "\"");
    EXPECT_EQ(profileString(t, "s"s, "e"s, "", 255), "");
}

TEST(ProfileBuffer, AMissingKeyGivesTheDefaultWithoutTrailingBlanks) {
    ProfileText t("[s]\n");
    EXPECT_EQ(profileString(t, "s"s, "k"s, "def  ", 255), "def");
    EXPECT_EQ(profileString(t, "x"s, "k"s, "  lead", 255), "  lead");
}

TEST(ProfileBuffer, AKeyWithoutEqualsGivesTheDefault) {
    ProfileText t("[s]\nk\n");
    EXPECT_EQ(profileString(t, "s"s, "k"s, "def", 255), "def");
}

TEST(ProfileBuffer, AValueEndsAtANul) {
    ProfileText t("[s]\nk=ab\0cd\n"s);
    EXPECT_EQ(profileString(t, "s"s, "k"s, "", 255), "ab");
}

TEST(ProfileBuffer, ANullKeyListsTheKeysOfTheSection) {
    ProfileText t("[s]\na=1\n;c=3\nb=2\n");
    EXPECT_EQ(profileString(t, "s"s, std::nullopt, "", 255), "a\0b\0"s);
    EXPECT_EQ(profileString(t, "none"s, std::nullopt, "def", 255), "");
}

TEST(ProfileBuffer, ANullSectionListsTheSections) {
    ProfileText t("[a]\n[b]\n");
    EXPECT_EQ(profileString(t, std::nullopt, std::nullopt, "", 255), "a\0b\0"s);
}

TEST(ProfileBuffer, ASectionComesAsNulEndedEntriesWithTheirQuotes) {
    ProfileText t("[Direcciones]\ndir1 = 10.0.0.1\n; skipped\n\ndir2=\"x\"\nbare\n");
    EXPECT_EQ(profileSection(t, "direcciones", 32767), "dir1=10.0.0.1\0dir2=\"x\"\0bare\0"s);
    EXPECT_EQ(profileSection(t, "missing", 32767), "");
}

TEST(ProfileBuffer, ATooLongListIsCutToTheBufferLessTwo) {
    ProfileText t("[s]\nabc=1\ndef=2\n");
    // "abc=1\0def=2\0" and the final NUL need 13 characters.
    EXPECT_EQ(profileSection(t, "s", 13), "abc=1\0def=2\0"s);
    EXPECT_EQ(profileSection(t, "s", 12), "abc=1\0def="s);
    EXPECT_EQ(profileSection(t, "s", 2), "");
    EXPECT_EQ(profileSection(t, "s", 0), "");
}

}  // namespace
}  // namespace fc
