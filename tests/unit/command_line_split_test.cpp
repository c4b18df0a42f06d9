// Taking a Windows command line apart, and finding its program on Linux.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/linux/process_launcher.h"
#include "platform/process_launcher.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(SplitCommandLine, TheProgramEndsAfterExeAndTheDigitFollows) {
    CommandLine line = splitCommandLine("/opt/firm cast\\Gseries.exe 2");
    EXPECT_EQ(line.program, "/opt/firm cast\\Gseries.exe");
    EXPECT_THAT(line.arguments, ElementsAre("2"));
}

TEST(SplitCommandLine, ExeInsideAFolderNameDoesNotEndTheProgram) {
    CommandLine line = splitCommandLine("C:\\a.exefiles\\Tool.EXE  one   two");
    EXPECT_EQ(line.program, "C:\\a.exefiles\\Tool.EXE");
    EXPECT_THAT(line.arguments, ElementsAre("one", "two"));
}

TEST(SplitCommandLine, AQuotedProgramAndAQuotedArgumentAreKeptWhole) {
    CommandLine line = splitCommandLine("  \"C:\\My Tools\\korvacom.exe\" \"a b\" c");
    EXPECT_EQ(line.program, "C:\\My Tools\\korvacom.exe");
    EXPECT_THAT(line.arguments, ElementsAre("a b", "c"));
}

TEST(SplitCommandLine, WithoutExeTheProgramEndsAtTheFirstBlank) {
    CommandLine line = splitCommandLine("/usr/bin/true x");
    EXPECT_EQ(line.program, "/usr/bin/true");
    EXPECT_THAT(line.arguments, ElementsAre("x"));
    EXPECT_THAT(splitCommandLine("/usr/bin/true").arguments, IsEmpty());
}

TEST(HostProgram, BackSlashesBecomeSlashesAndExeGoes) {
    TempFolder folder;
    folder.write("Gseries", "");
    std::string program = folder.path().string() + "\\Gseries.exe";
    EXPECT_EQ(LinuxProcessLauncher(Drives()).hostProgram(program),
              (folder.path() / "Gseries").string());
}

TEST(HostProgram, TheNameIsFoundWhateverItsCase) {
    TempFolder folder;
    folder.write("gseries", "");
    std::string program = folder.path().string() + "\\GSERIES.exe";
    EXPECT_EQ(LinuxProcessLauncher(Drives()).hostProgram(program),
              (folder.path() / "gseries").string());
}

TEST(HostProgram, ADrivePathResolvesUnderItsDrive) {
    TempFolder drive;
    drive.write("Tools/Gseries", "");
    Drives drives({{'t', drive.path().string()}});
    EXPECT_EQ(LinuxProcessLauncher(drives).hostProgram("t:\\tools\\Gseries.exe"),
              (drive.path() / "Tools" / "Gseries").string());
}

TEST(ProcessLauncher, AProgramThatDoesNotExistIsNotStarted) {
    TempFolder folder;
    Drives none;
    LinuxProcessLauncher launcher(none);
    EXPECT_EQ(launcher.start(folder.path().string() + "\\NoSuchTool.exe 1"), 0);
}

}  // namespace
}  // namespace fc::test
