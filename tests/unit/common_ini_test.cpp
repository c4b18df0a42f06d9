#include <gtest/gtest.h>

#include "common/ini.h"
#include "tests/unit/common_fixture.h"

namespace fc {
namespace {

using commontest::CommonRig;
using commontest::readAll;
using commontest::writeAll;
using Items = std::vector<std::string>;

struct IniRig : CommonRig {
    std::string ini() const { return home.str() + "\\config.ini"; }
    void file(const std::string& text) const { writeAll(home / "config.ini", text); }
    std::string text() const { return readAll(home / "config.ini"); }
};

TEST(LeeClaveIni, AKeyThatHoldsAnEmptyValueGivesTheDefault) {
    IniRig rig;
    rig.file("[Balanzas]\r\nNumero=\r\n");
    EXPECT_EQ(LeeClaveIni(rig.c, rig.ini(), "Balanzas", "Numero", "default"), "default");
}

TEST(LeeClaveIni, GivesTheValueOfTheKey) {
    IniRig rig;
    rig.file("[Puertos]\r\nTx = 3001\r\n");
    EXPECT_EQ(LeeClaveIni(rig.c, rig.ini(), "puertos", "TX", ""), "3001");
}

TEST(LeeClaveIni, AMissingFileSectionOrKeyGivesTheDefault) {
    IniRig rig;
    EXPECT_EQ(LeeClaveIni(rig.c, rig.ini(), "Puertos", "Tx", "3000"), "3000");
    rig.file("[Puertos]\r\n");
    EXPECT_EQ(LeeClaveIni(rig.c, rig.ini(), "Puertos", "Tx", "3000"), "3000");
    EXPECT_EQ(LeeClaveIni(rig.c, rig.ini(), "Other", "Tx", "3000"), "3000");
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(LeeClaveIni, AValueLongerThanTheBufferIsCutTo254Characters) {
    IniRig rig;
    rig.file("[s]\r\nk=" + std::string(400, '7') + "\r\n");
    EXPECT_EQ(LeeClaveIni(rig.c, rig.ini(), "s", "k", ""), std::string(254, '7'));
}

TEST(EscribeClaveIni, CreatesTheFileAndTheSectionAndIsReadBack) {
    IniRig rig;
    EscribeClaveIni(rig.c, rig.ini(), "Balanzas", "Numero", "2");
    EscribeClaveIni(rig.c, rig.ini(), "Direcciones", "dir1", "10.0.0.1");
    EscribeClaveIni(rig.c, rig.ini(), "Balanzas", "Numero", "3");
    EXPECT_EQ(rig.text(), "[Balanzas]\r\nNumero=3\r\n[Direcciones]\r\ndir1=10.0.0.1\r\n");
    EXPECT_EQ(LeeClaveIni(rig.c, rig.ini(), "Balanzas", "Numero", ""), "3");
}

TEST(BorraClaveIni, WithAKeyDeletesThatKeyOnly) {
    IniRig rig;
    rig.file("[Direcciones]\r\ndir1=a\r\ndir2=b\r\n");
    BorraClaveIni(rig.c, rig.ini(), "Direcciones", "dir1");
    EXPECT_EQ(rig.text(), "[Direcciones]\r\ndir2=b\r\n");
}

TEST(BorraClaveIni, WithAnEmptyKeyDeletesTheWholeSection) {
    IniRig rig;
    rig.file(
        "[Balanzas]\r\nNumero=2\r\n[Direcciones]\r\ndir1=a\r\ndir2=b\r\n[Puertos]\r\nTx=3000\r\n");
    BorraClaveIni(rig.c, rig.ini(), "Direcciones", "");
    EXPECT_EQ(rig.text(), "[Balanzas]\r\nNumero=2\r\n[Puertos]\r\nTx=3000\r\n");
    EXPECT_EQ(LeeSeccionIni(rig.c, rig.ini(), "Direcciones"), std::nullopt);
}

TEST(LeeSeccionIni, AMissingSectionReturnsNothing) {
    IniRig rig;
    rig.file("[Balanzas]\r\nNumero=2\r\n");
    EXPECT_EQ(LeeSeccionIni(rig.c, rig.ini(), "Direcciones"), std::nullopt);
    EXPECT_EQ(LeeSeccionIni(rig.c, rig.home.str() + "\\missing.ini", "Direcciones"), std::nullopt);
}

TEST(LeeSeccionIni, AnEmptySectionReturnsNothing) {
    IniRig rig;
    rig.file("[Direcciones]\r\n; nothing yet\r\n\r\n[Puertos]\r\n");
    EXPECT_EQ(LeeSeccionIni(rig.c, rig.ini(), "Direcciones"), std::nullopt);
}

TEST(LeeSeccionIni, GivesKeyThenValueInFileOrder) {
    IniRig rig;
    rig.file("[Direcciones]\r\ndir3=10.0.0.3\r\ndir1 = 10.0.0.1\r\n");
    EXPECT_EQ(LeeSeccionIni(rig.c, rig.ini(), "direcciones"),
              (Items{"dir3", "10.0.0.3", "dir1", "10.0.0.1"}));
}

TEST(LeeSeccionIni, AnEntryWithoutEqualsIsSkipped) {
    IniRig rig;
    rig.file("[Direcciones]\r\ndir1=10.0.0.1\r\nno equals here\r\ndir2=10.0.0.2\r\n");
    EXPECT_EQ(LeeSeccionIni(rig.c, rig.ini(), "Direcciones"),
              (Items{"dir1", "10.0.0.1", "dir2", "10.0.0.2"}));
}

TEST(LeeSeccionIni, ASectionOfOnlyEntriesWithoutEqualsIsAnEmptyCollection) {
    IniRig rig;
    rig.file("[Direcciones]\r\njunk\r\n");
    EXPECT_EQ(LeeSeccionIni(rig.c, rig.ini(), "Direcciones"), Items{});
}

}  // namespace
}  // namespace fc
