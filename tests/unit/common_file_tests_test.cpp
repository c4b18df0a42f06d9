#include <gtest/gtest.h>

#include "common/file_tests.h"
#include "platform/wildcard.h"
#include "tests/unit/common_fixture.h"

namespace fc {
namespace {

using commontest::CommonRig;
using commontest::writeAll;

TEST(ExisteFichero, AFileThatIsThereIsTrue) {
    CommonRig rig;
    writeAll(rig.home / "config.ini", "");
    EXPECT_EQ(ExisteFichero(rig.c, rig.home.str() + "/config.ini"), kTrue);
    EXPECT_EQ(ExisteFichero(rig.c, rig.home.str() + "\\config.ini"), kTrue);
}

TEST(ExisteFichero, AMissingFileIsFalse) {
    CommonRig rig;
    EXPECT_EQ(ExisteFichero(rig.c, rig.home.str() + "\\config.ini"), kFalse);
    EXPECT_EQ(ExisteFichero(rig.c, rig.home.str() + "\\nowhere\\config.ini"), kFalse);
}

TEST(ExisteFichero, AlsoMatchesAFolder) {
    CommonRig rig;
    std::filesystem::create_directories(rig.home / "korvacom");
    EXPECT_EQ(ExisteFichero(rig.c, rig.home.str() + "\\korvacom"), kTrue);
}

TEST(ExisteFichero, TakesWildCards) {
    CommonRig rig;
    writeAll(rig.home / "Balanza_Logs/RX_20050321.TXT", "");
    EXPECT_EQ(ExisteFichero(rig.c, rig.home.str() + "\\Balanza_Logs\\RX_*.*"), kTrue);
    EXPECT_EQ(ExisteFichero(rig.c, rig.home.str() + "\\Balanza_Logs\\TX_*.*"), kFalse);
    EXPECT_EQ(ExisteFichero(rig.c, rig.home.str() + "\\Balanza_Logs\\RX_2005032?.TXT"), kTrue);
}

TEST(ExisteFichero, MatchesNamesWithoutRegardToCase) {
    CommonRig rig;
    writeAll(rig.home / "korvacom/TX.TXT", "");
    EXPECT_EQ(ExisteFichero(rig.c, rig.home.str() + "\\korvacom\\tx.txt"), kTrue);
}

TEST(ExisteFichero, AnEmptyFolderStillHoldsItsDotEntries) {
    CommonRig rig;
    std::filesystem::create_directories(rig.home / "empty");
    EXPECT_EQ(ExisteFichero(rig.c, rig.home.str() + "\\empty\\*.*"), kTrue);
    EXPECT_EQ(ExisteFichero(rig.c, rig.home.str() + "\\empty\\*.TXT"), kFalse);
}

TEST(NombrarBD, IsTheProgramsFolderThenTheFolderThenTheName) {
    CommonRig rig;
    EXPECT_EQ(NombrarBD(rig.c, "\\Database\\", "KorvaFirmcast.mdb"),
              rig.home.str() + "\\Database\\KorvaFirmcast.mdb");
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(Wildcard, StarDotStarMatchesEveryName) {
    EXPECT_TRUE(matchesWildcard("*.*", "README"));
    EXPECT_TRUE(matchesWildcard("*.*", "a.b.c"));
    EXPECT_TRUE(matchesWildcard("*.*", "."));
}

TEST(Wildcard, ATrailingDotStarAlsoMatchesANameWithoutExtension) {
    EXPECT_TRUE(matchesWildcard("RX_*.*", "RX_1"));
    EXPECT_TRUE(matchesWildcard("RX_*.*", "rx_1.txt"));
    EXPECT_FALSE(matchesWildcard("RX_*.*", "TX_1.txt"));
    EXPECT_FALSE(matchesWildcard("RX_*.*", "ARX_1.txt"));
}

TEST(Wildcard, AQuestionMarkIsExactlyOneCharacter) {
    EXPECT_TRUE(matchesWildcard("a?c", "abc"));
    EXPECT_FALSE(matchesWildcard("a?c", "ac"));
    EXPECT_FALSE(matchesWildcard("a?c", "abbc"));
}

TEST(Wildcard, ANameWithoutWildCardsMatchesOnlyItselfInAnyCase) {
    EXPECT_TRUE(matchesWildcard("Errores.log", "ERRORES.LOG"));
    EXPECT_FALSE(matchesWildcard("Errores.log", "Errores.log2"));
    EXPECT_FALSE(matchesWildcard("", "x"));
}

}  // namespace
}  // namespace fc
