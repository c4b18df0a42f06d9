#include <gtest/gtest.h>

#include "platform/profile.h"
#include "tests/unit/common_fixture.h"

namespace fc {
namespace {

using commontest::readAll;
using commontest::ScratchFolder;
using commontest::writeAll;
using namespace std::string_literals;

TEST(ProfileFile, WritingCreatesTheFileAndTheSection) {
    ScratchFolder folder;
    std::string file = folder.str() + "\\config.ini";
    EXPECT_TRUE(writePrivateProfileString("Balanzas"s, "Numero"s, "2"s, file));
    EXPECT_EQ(readAll(folder / "config.ini"), "[Balanzas]\r\nNumero=2\r\n");
    EXPECT_EQ(getPrivateProfileString("balanzas"s, "numero"s, "", 255, file), "2");
}

TEST(ProfileFile, AFileInAMissingFolderIsNotWritten) {
    ScratchFolder folder;
    EXPECT_FALSE(writePrivateProfileString("s"s, "k"s, "v"s, folder.str() + "/none/config.ini"));
    EXPECT_FALSE(std::filesystem::exists(folder / "none"));
}

TEST(ProfileFile, DeletingFromAMissingFileCreatesNothing) {
    ScratchFolder folder;
    std::string file = folder.str() + "/config.ini";
    writePrivateProfileString("s"s, "k"s, std::nullopt, file);
    writePrivateProfileString("s"s, std::nullopt, std::nullopt, file);
    EXPECT_FALSE(std::filesystem::exists(folder / "config.ini"));
}

TEST(ProfileFile, ANullSectionWritesNothing) {
    ScratchFolder folder;
    std::string file = folder.str() + "/config.ini";
    EXPECT_FALSE(writePrivateProfileString(std::nullopt, "k"s, "v"s, file));
    EXPECT_FALSE(std::filesystem::exists(folder / "config.ini"));
}

TEST(ProfileFile, ARewriteKeepsCommentsAndUnknownLines) {
    ScratchFolder folder;
    writeAll(folder / "config.ini", "; site settings\n[Puertos]\nTx=3000\nwhatever this is\n");
    std::string file = folder.str() + "/config.ini";
    writePrivateProfileString("Puertos"s, "Tx"s, "3001"s, file);
    writePrivateProfileString("Balanzas"s, "Numero"s, "1"s, file);
    EXPECT_EQ(readAll(folder / "config.ini"),
              "; site settings\n[Puertos]\nTx=3001\nwhatever this is\n[Balanzas]\r\nNumero=1\r\n");
}

TEST(ProfileFile, AMissingFileReadsAsEmpty) {
    ScratchFolder folder;
    std::string file = folder.str() + "/config.ini";
    EXPECT_EQ(getPrivateProfileString("s"s, "k"s, "def", 255, file), "def");
    EXPECT_EQ(getPrivateProfileSection("s", 32767, file), "");
}

TEST(ProfileFile, ASectionIsReadWhole) {
    ScratchFolder folder;
    writeAll(folder / "config.ini", "[Direcciones]\r\ndir1=10.0.0.1\r\ndir2=10.0.0.2\r\n");
    EXPECT_EQ(getPrivateProfileSection("Direcciones", 32767, folder.str() + "/config.ini"),
              "dir1=10.0.0.1\0dir2=10.0.0.2\0"s);
}

}  // namespace
}  // namespace fc
