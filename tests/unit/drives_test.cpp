#include "platform/drives.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

#include "platform/linux/environment_drives.h"
#include "platform/text_case.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Drives, ALetterThatStandsForNothingDoesNotExist) {
    TempFolder c;
    Drives drives({{'c', c.path().string()}});
    EXPECT_TRUE(drives.driveExists('c'));
    EXPECT_FALSE(drives.driveExists('t'));
    EXPECT_EQ(drives.hostPath("t:\\Programas"), "");
    EXPECT_THAT(drives.listFiles("t:\\"), IsEmpty());
}

TEST(Drives, ALetterNamesTheSameDriveInEitherCase) {
    TempFolder t;
    Drives drives({{'T', t.path().string()}});
    EXPECT_TRUE(drives.driveExists('t'));
    EXPECT_TRUE(drives.driveExists('T'));
    EXPECT_EQ(drives.hostPath("t:\\"), t.path().string());
}

TEST(Drives, AFolderThatIsGoneIsADriveThatDoesNotExist) {
    std::optional<TempFolder> t(std::in_place);
    Drives drives({{'t', t->path().string()}});
    EXPECT_THAT(drives.existingDrives(), ElementsAre('t'));
    t.reset();
    EXPECT_FALSE(drives.driveExists('t'));
    EXPECT_THAT(drives.existingDrives(), IsEmpty());
}

TEST(Drives, ExistingDrivesComeInTheOrderOfTheirLetters) {
    TempFolder c, s, t;
    Drives drives({{'t', t.path().string()}, {'C', c.path().string()}, {'s', s.path().string()}});
    EXPECT_THAT(drives.existingDrives(), ElementsAre('c', 's', 't'));
}

TEST(Drives, APathResolvesComponentByComponentWhateverTheCase) {
    TempFolder t;
    t.write("PROGRAMAS/balanzas/Serie_N/n.hex", "");
    Drives drives({{'t', t.path().string()}});
    EXPECT_EQ(drives.hostPath("T:\\Programas\\Balanzas\\serie_n\\N.HEX"),
              (t.path() / "PROGRAMAS" / "balanzas" / "Serie_N" / "n.hex").string());
    EXPECT_EQ(drives.hostPath("t:/programas/balanzas"),
              (t.path() / "PROGRAMAS" / "balanzas").string());
}

TEST(Drives, AMissingComponentResolvesToNothingUnlessItIsTheLastAndMayBeMissing) {
    TempFolder c;
    c.write("Logs/old.txt", "");
    Drives drives({{'c', c.path().string()}});
    EXPECT_EQ(drives.hostPath("c:\\Logs\\new.txt"), "");
    EXPECT_EQ(drives.hostPath("c:\\Logs\\new.txt", true), (c.path() / "Logs" / "new.txt").string());
    EXPECT_EQ(drives.hostPath("c:\\Nowhere\\new.txt", true), "");
}

TEST(Drives, ATextThatIsNoDrivePathResolvesToNothing) {
    TempFolder c;
    Drives drives({{'c', c.path().string()}});
    EXPECT_EQ(drives.hostPath("/tmp"), "");
    EXPECT_EQ(drives.hostPath("c"), "");
    EXPECT_EQ(drives.hostPath("1:\\x"), "");
}

TEST(Drives, FoldersAndFilesAreListedApartSortedWithoutRegardToCase) {
    TempFolder c;
    c.write("fw/b.HEX", "");
    c.write("fw/A.hex", "");
    c.write("fw/notes.txt", "");
    c.write("fw/Zeta/x", "");
    c.write("fw/alpha/x", "");
    Drives drives({{'c', c.path().string()}});
    EXPECT_THAT(drives.listFolders("C:\\fw"), ElementsAre("alpha", "Zeta"));
    EXPECT_THAT(drives.listFiles("C:\\fw"), ElementsAre("A.hex", "b.HEX", "notes.txt"));
    EXPECT_THAT(drives.listFiles("c:\\FW", "*.hex"), ElementsAre("A.hex", "b.HEX"));
}

TEST(NormaliseWindowsPath, UpperCaseLetterBackSlashesAndNoTrailingSlashButOnTheRoot) {
    EXPECT_EQ(normaliseWindowsPath("c:"), "C:\\");
    EXPECT_EQ(normaliseWindowsPath("t:/Programas//Balanzas/"), "T:\\Programas\\Balanzas");
    EXPECT_EQ(normaliseWindowsPath("relative\\path"), "relative\\path");
}

TEST(TextCase, EntriesAreFoundExactlyFirstThenWhateverTheirCase) {
    TempFolder folder;
    folder.write("Gseries", "");
    EXPECT_EQ(lowerCase("GSeries.EXE"), "gseries.exe");
    EXPECT_EQ(entryIgnoringCase(folder.path(), "Gseries"), "Gseries");
    EXPECT_EQ(entryIgnoringCase(folder.path(), "GSERIES"), "Gseries");
    EXPECT_EQ(entryIgnoringCase(folder.path(), "Gseries2"), "");
    EXPECT_EQ(entryIgnoringCase(folder.path() / "missing", "Gseries"), "");
}

// The one place that reads drives from the environment is tested through it.
class ScopedVariable {
  public:
    ScopedVariable(const char* name, const std::string& value) : name_(name) {
        if (const char* old = std::getenv(name))
            old_ = old;
        setenv(name, value.c_str(), 1);
    }
    ~ScopedVariable() {
        if (old_)
            setenv(name_, old_->c_str(), 1);
        else
            unsetenv(name_);
    }

  private:
    const char* name_;
    std::optional<std::string> old_;
};

TEST(DrivesFromEnvironment, CIsTheRootUnlessNamedAndAnotherLetterExistsOnlyWhenNamed) {
    if (std::getenv("FIRMCAST_DRIVE_C") || std::getenv("FIRMCAST_DRIVE_Q"))
        GTEST_SKIP() << "the environment of this run names drive C: or Q: already";
    EXPECT_EQ(drivesFromEnvironment().hostPath("c:\\"), "/");
    EXPECT_FALSE(drivesFromEnvironment().driveExists('q'));
    TempFolder q, c;
    ScopedVariable namedQ("FIRMCAST_DRIVE_Q", q.path().string());
    ScopedVariable namedC("FIRMCAST_DRIVE_C", c.path().string());
    Drives drives = drivesFromEnvironment();
    EXPECT_EQ(drives.hostPath("q:\\"), q.path().string());
    EXPECT_EQ(drives.hostPath("C:\\"), c.path().string());
}

TEST(DrivesFromEnvironment, ACNamedEmptyDoesNotExist) {
    ScopedVariable emptyC("FIRMCAST_DRIVE_C", "");
    EXPECT_FALSE(drivesFromEnvironment().driveExists('c'));
}

}  // namespace
}  // namespace fc::test
