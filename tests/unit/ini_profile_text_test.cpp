#include <gtest/gtest.h>

#include "platform/profile_text.h"

namespace fc {
namespace {

TEST(ProfileText, SectionAndKeyNamesAreComparedWithoutRegardToCase) {
    ProfileText t("[Balanzas]\r\nNumero=3\r\n");
    EXPECT_EQ(t.value("BALANZAS", "numero"), "3");
    EXPECT_EQ(t.value("balanzas", "NUMERO"), "3");
}

TEST(ProfileText, KeysAndValuesAreTrimmed) {
    ProfileText t("[s]\n  key  =  some value \t\n");
    EXPECT_EQ(t.value("s", "key"), "some value");
}

TEST(ProfileText, TheSectionNameIsTrimmedAndEndsAtTheLastBracket) {
    ProfileText t("  [ Puertos ]  \n Tx=3000\n[a]b] trailing\nk=v\n");
    EXPECT_EQ(t.value("Puertos", "Tx"), "3000");
    EXPECT_EQ(t.value("a]b", "k"), "v");
}

TEST(ProfileText, AValueKeepsEverythingAfterTheFirstEquals) {
    ProfileText t("[s]\nk=a=b ; not a comment\n");
    EXPECT_EQ(t.value("s", "k"), "a=b ; not a comment");
}

TEST(ProfileText, CommentLinesStartWithASemicolon) {
    ProfileText t("[s]\n;k=commented\n  ; also=commented\n#k=not a comment\n");
    EXPECT_EQ(t.value("s", "k"), std::nullopt);
    EXPECT_EQ(t.value("s", "#k"), "not a comment");
    EXPECT_EQ(t.entries("s"), (std::vector<std::string>{"#k=not a comment"}));
}

TEST(ProfileText, ALineWithoutEqualsIsAKeyWithoutValue) {
    ProfileText t("[Direcciones]\ndir1=10.0.0.1\ngarbage\n");
    EXPECT_EQ(t.value("Direcciones", "garbage"), std::nullopt);
    EXPECT_EQ(t.entries("Direcciones"), (std::vector<std::string>{"dir1=10.0.0.1", "garbage"}));
    EXPECT_EQ(t.keyNames("Direcciones"), (std::vector<std::string>{"dir1", "garbage"}));
}

TEST(ProfileText, AnEntryWithAnEmptyKeyIsLeftOutOfTheSection) {
    ProfileText t("[s]\n=value\nk=v\n");
    EXPECT_EQ(t.entries("s"), (std::vector<std::string>{"k=v"}));
}

TEST(ProfileText, LinesBeforeTheFirstSectionBelongToNone) {
    ProfileText t("k=v\n[s]\nx=1\n");
    EXPECT_EQ(t.value("", "k"), std::nullopt);
    EXPECT_EQ(t.sectionNames(), (std::vector<std::string>{"s"}));
}

TEST(ProfileText, ASectionEndsAtTheNextHeader) {
    ProfileText t("[a]\nk=1\n[b]\nk=2\n");
    EXPECT_EQ(t.value("a", "k"), "1");
    EXPECT_EQ(t.value("b", "k"), "2");
    EXPECT_EQ(t.value("c", "k"), std::nullopt);
    EXPECT_EQ(t.entries("c"), std::nullopt);
}

TEST(ProfileText, TheFirstOfTwoSectionsOfOneNameAnswers) {
    ProfileText t("[s]\nk=first\n[S]\nk=second\nonly=here\n");
    EXPECT_EQ(t.value("s", "k"), "first");
    EXPECT_EQ(t.value("s", "only"), std::nullopt);
}

TEST(ProfileText, TheFirstOfTwoKeysOfOneNameAnswers) {
    ProfileText t("[s]\nk=first\nK=second\n");
    EXPECT_EQ(t.value("s", "k"), "first");
}

TEST(ProfileText, SettingAnExistingKeyChangesOnlyItsLine) {
    std::string text =
        "; header comment\r\n[Balanzas]\r\n; a note\r\n  NUMERO = 3\r\nodd "
        "line\r\n\r\n[Puertos]\nTx=3000\n";
    ProfileText t(text);
    t.setValue("balanzas", "Numero", "5");
    EXPECT_EQ(t.text(),
              "; header comment\r\n[Balanzas]\r\n; a note\r\nNUMERO=5\r\nodd "
              "line\r\n\r\n[Puertos]\nTx=3000\n");
}

TEST(ProfileText, ANewKeyGoesAfterTheSectionsLastLineThatIsNotBlank) {
    ProfileText t("[a]\r\nk=1\r\n\r\n[b]\r\n");
    t.setValue("a", "new", "2");
    EXPECT_EQ(t.text(), "[a]\r\nk=1\r\nnew=2\r\n\r\n[b]\r\n");
}

TEST(ProfileText, ANewKeyInASectionWithOnlyItsHeaderFollowsTheHeader) {
    ProfileText t("[a]\n[b]\n");
    t.setValue("a", "k", "v");
    EXPECT_EQ(t.text(), "[a]\nk=v\r\n[b]\n");
}

TEST(ProfileText, ANewSectionGoesAtTheEndWithCrLf) {
    ProfileText t("[a]\r\nk=1\r\n");
    t.setValue("Direcciones", "dir1", "10.0.0.1");
    EXPECT_EQ(t.text(), "[a]\r\nk=1\r\n[Direcciones]\r\ndir1=10.0.0.1\r\n");
}

TEST(ProfileText, ALastLineWithoutItsEndGetsOneBeforeANewLine) {
    ProfileText t("[a]\r\nk=1");
    t.setValue("a", "m", "2");
    EXPECT_EQ(t.text(), "[a]\r\nk=1\r\nm=2\r\n");
}

TEST(ProfileText, AnEmptyTextGetsTheSectionAndTheKey) {
    ProfileText t;
    t.setValue("Puertos", "Tx", "3000");
    EXPECT_EQ(t.text(), "[Puertos]\r\nTx=3000\r\n");
}

TEST(ProfileText, DeletingAKeyRemovesOnlyItsLine) {
    ProfileText t("[s]\r\n; keep\r\na=1\r\nb=2\r\n");
    EXPECT_TRUE(t.deleteKey("S", "A"));
    EXPECT_EQ(t.text(), "[s]\r\n; keep\r\nb=2\r\n");
    EXPECT_FALSE(t.deleteKey("s", "a"));
    EXPECT_FALSE(t.deleteKey("missing", "b"));
}

TEST(ProfileText, DeletingASectionRemovesEverySectionOfThatNameWithItsLines) {
    ProfileText t("[Direcciones]\ndir1=a\n; note\n[Puertos]\nTx=1\n[DIRECCIONES]\ndir2=b\n");
    EXPECT_TRUE(t.deleteSection("direcciones"));
    EXPECT_EQ(t.text(), "[Puertos]\nTx=1\n");
    EXPECT_FALSE(t.deleteSection("direcciones"));
}

TEST(ProfileText, AnUntouchedTextIsGivenBackAsItCame) {
    std::string text = "junk\n[a]\r\n k = v \r\n\r\n;c\n[b]\nx";
    EXPECT_EQ(ProfileText(text).text(), text);
}

}  // namespace
}  // namespace fc
