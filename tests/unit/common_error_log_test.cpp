#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <limits>

#include "common/error_log.h"
#include "common/standard_handler.h"
#include "platform/dialogs.h"
#include "tests/unit/common_fixture.h"

namespace fc {
namespace {

using commontest::CommonRig;
using commontest::entry;
using commontest::readAll;
using commontest::writeAll;
namespace fs = std::filesystem;

TEST(EscribirLog, FirstEntryEverCreatesTheFolderAndTheFile) {
    CommonRig rig;
    ASSERT_FALSE(fs::exists(rig.logFolder()));
    EscribirLog(rig.c, "CerrarKorvaCOM", "File not found", 53);
    EXPECT_TRUE(fs::is_directory(rig.logFolder()));
    EXPECT_EQ(readAll(rig.logFile()),
              entry("21/03/2005  10:42  CerrarKorvaCOM", "53 - File not found"));
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(EscribirLog, EntryIsDateTwoBlanksTimeTwoBlanksNameThenNumberAndDescriptionThenAsterisks) {
    CommonRig rig;
    rig.pump.sleep((23 * 60 + 25) * 60 * 1000);  // to 22/03/2005 10:07
    EscribirLog(rig.c, "NombrarBD", "Overflow", 6);
    std::string expected =
        "22/03/2005  10:07  NombrarBD\r\n"
        "                 6 - Overflow\r\n"
        "                 *****************************************************\r\n";
    EXPECT_EQ(readAll(rig.logFile()), expected);
}

TEST(EscribirLog, NumberZeroGivesASecondLineWithoutNumberAndWithoutDash) {
    CommonRig rig;
    EscribirLog(rig.c, "Source", "Something the program raised", 0);
    EXPECT_EQ(readAll(rig.logFile()),
              entry("21/03/2005  10:42  Source", "Something the program raised"));
}

TEST(EscribirLog, NegativeNumbersAreWrittenInDecimal) {
    CommonRig rig;
    EscribirLog(rig.c, "X", "Automation error", -2147467259);
    EXPECT_EQ(readAll(rig.logFile()),
              entry("21/03/2005  10:42  X", "-2147467259 - Automation error"));
}

TEST(EscribirLog, LaterEntriesAreAppended) {
    CommonRig rig;
    EscribirLog(rig.c, "A", "one", 1);
    rig.pump.sleep(60 * 1000);
    EscribirLog(rig.c, "B", "two", 2);
    EXPECT_EQ(readAll(rig.logFile()),
              entry("21/03/2005  10:42  A", "1 - one") + entry("21/03/2005  10:43  B", "2 - two"));
}

TEST(EscribirLog, AFileOfExactly51712BytesIsAppendedTo) {
    CommonRig rig;
    const std::string old(51712, 'x');
    writeAll(rig.logFile(), old);
    writeAll(rig.logFolder() / "RX_1.TXT", "trace");
    EscribirLog(rig.c, "A", "one", 1);
    EXPECT_EQ(readAll(rig.logFile()), old + entry("21/03/2005  10:42  A", "1 - one"));
    EXPECT_TRUE(fs::exists(rig.logFolder() / "RX_1.TXT"));
}

TEST(EscribirLog, AFileOf51713BytesIsEmptiedAndTheTracesRemoved) {
    CommonRig rig;
    writeAll(rig.logFile(), std::string(51713, 'x'));
    writeAll(rig.logFolder() / "RX_1.TXT", "trace");
    writeAll(rig.logFolder() / "rx_2", "trace without extension");
    writeAll(rig.logFolder() / "TX_1.TXT", "not a reception trace");
    writeAll(rig.logFolder() / "ARX_1.TXT", "not one either");
    fs::create_directories(rig.logFolder() / "RX_folder");
    EscribirLog(rig.c, "A", "one", 1);
    EXPECT_EQ(readAll(rig.logFile()), entry("21/03/2005  10:42  A", "1 - one"));
    EXPECT_FALSE(fs::exists(rig.logFolder() / "RX_1.TXT"));
    EXPECT_FALSE(fs::exists(rig.logFolder() / "rx_2"));
    EXPECT_TRUE(fs::exists(rig.logFolder() / "TX_1.TXT"));
    EXPECT_TRUE(fs::exists(rig.logFolder() / "ARX_1.TXT"));
    EXPECT_TRUE(fs::is_directory(rig.logFolder() / "RX_folder"));
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(EscribirLog, AFileOf52224BytesIs51KilobytesAndIsEmptied) {
    CommonRig rig;
    writeAll(rig.logFile(), std::string(52224, 'x'));
    EscribirLog(rig.c, "A", "one", 1);
    EXPECT_EQ(readAll(rig.logFile()), entry("21/03/2005  10:42  A", "1 - one"));
}

TEST(EscribirLog, EachEntryCountsInBothCountersAndEmptyingResetsTheSecond) {
    CommonRig rig;
    EscribirLog(rig.c, "A", "one", 1);
    EscribirLog(rig.c, "B", "two", 2);
    EXPECT_EQ(rig.c.contador_log, 2);
    EXPECT_EQ(rig.c.contador_log_rotacion, 2);
    writeAll(rig.logFile(), std::string(60000, 'x'));
    EscribirLog(rig.c, "C", "three", 3);
    EXPECT_EQ(rig.c.contador_log, 3);
    EXPECT_EQ(rig.c.contador_log_rotacion, 0);
    EscribirLog(rig.c, "D", "four", 4);
    EXPECT_EQ(rig.c.contador_log_rotacion, 1);
}

TEST(EscribirLog, ACounterAtItsLimitOverflowsIntoTheHandlerAndTheEntryIsLost) {
    CommonRig rig;
    rig.c.contador_log = std::numeric_limits<Long>::max();
    EscribirLog(rig.c, "A", "one", 1);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "6 - Overflow");
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "EscribirLog");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, mb::kExclamation);
    EXPECT_FALSE(fs::exists(rig.logFile()));
}

TEST(EscribirLog, AFolderAndFileNamedInAnotherCaseAreTheLog) {
    CommonRig rig;
    // The folder test compares upper-cased names: "BALANZA_LOGS" is the
    // log folder, and no "Balanza_Logs" is made beside it.
    writeAll(rig.home / "BALANZA_LOGS/errores.LOG", "old\r\n");
    writeAll(rig.home / "BALANZA_LOGS/RX_1", "trace");
    EscribirLog(rig.c, "A", "one", 1);
    EXPECT_FALSE(fs::exists(rig.logFolder()));
    EXPECT_EQ(readAll(rig.home / "BALANZA_LOGS/errores.LOG"),
              "old\r\n" + entry("21/03/2005  10:42  A", "1 - one"));
    EXPECT_TRUE(rig.dialogs.boxes().empty());
    BorrarFicherosRX(rig.c);
    EXPECT_FALSE(fs::exists(rig.home / "BALANZA_LOGS/RX_1"));
}

TEST(EscribirLog, AFileNamedBalanzaLogsCountsAsTheFolderAndTheWriteFailsIntoItsHandler) {
    CommonRig rig;
    writeAll(rig.home / "Balanza_Logs", "a file, not a folder");
    EscribirLog(rig.c, "A", "one", 1);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "EscribirLog");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, mb::kExclamation);
    EXPECT_EQ(readAll(rig.home / "Balanza_Logs"), "a file, not a folder");
    EXPECT_FALSE(rig.files.isOpen(1));
}

// A program folder nobody may write in, root included: a read-only tmpfs
// mounted over a scratch folder, or plain permissions for anyone else.
class ReadOnlyFolder {
  public:
    explicit ReadOnlyFolder(const std::string& path) : path_(path) {
        if (geteuid() != 0) {
            ok_ = chmod(path.c_str(), 0555) == 0;
            reason_ = "chmod failed";
            return;
        }
        mounted_ = mount("tmpfs", path.c_str(), "tmpfs", MS_RDONLY, "size=64k") == 0;
        ok_ = mounted_;
        reason_ =
            "running as root, and a read-only tmpfs cannot be mounted here (no CAP_SYS_ADMIN)";
    }
    ~ReadOnlyFolder() {
        if (mounted_)
            umount(path_.c_str());
        chmod(path_.c_str(), 0755);
    }
    bool ok() const { return ok_; }
    const std::string& reason() const { return reason_; }

  private:
    std::string path_;
    bool ok_ = false;
    bool mounted_ = false;
    std::string reason_;
};

TEST(EscribirLog, ALogInAReadOnlyFolderShowsOneMessageBoxPerEntryAndDoesNotLoop) {
    CommonRig rig;
    ReadOnlyFolder readOnly(rig.home.str());
    if (!readOnly.ok())
        GTEST_SKIP() << readOnly.reason();
    EscribirLog(rig.c, "A", "one", 1);
    EscribirLog(rig.c, "B", "two", 2);
    EscribirLog(rig.c, "C", "three", 3);
    ASSERT_EQ(rig.dialogs.boxes().size(), 3u);
    for (const ShownBox& box : rig.dialogs.boxes()) {
        EXPECT_EQ(box.title, "EscribirLog");
        EXPECT_EQ(box.style, mb::kExclamation);
        EXPECT_EQ(box.text, "75 - Path/File access error");
    }
    EXPECT_FALSE(fs::exists(rig.logFolder()));
}

TEST(EscribirLog, TheStandardHandlerInAReadOnlyFolderShowsItsBoxAndOneFromTheLog) {
    CommonRig rig;
    ReadOnlyFolder readOnly(rig.home.str());
    if (!readOnly.ok())
        GTEST_SKIP() << readOnly.reason();
    standardHandler(rig.c, "NombrarBD", RuntimeError(err::kOverflow));
    ASSERT_EQ(rig.dialogs.boxes().size(), 2u);
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "NombrarBD");
    EXPECT_EQ(rig.dialogs.boxes()[1].title, "EscribirLog");
}

// The kernel refuses to delete a file another process holds open; Linux does
// not, so a trace "in use" is one this file system will not delete.
class FileSystemWithBusyFile : public LinuxFileSystem {
  public:
    explicit FileSystemWithBusyFile(std::string busyName) : busy_(std::move(busyName)) {}
    void deleteFile(const std::string& path) override {
        if (path.size() >= busy_.size() && path.substr(path.size() - busy_.size()) == busy_) {
            throw RuntimeError(err::kPermissionDenied);
        }
        LinuxFileSystem::deleteFile(path);
    }

  private:
    std::string busy_;
};

TEST(BorrarFicherosRX, ATraceInUseIsShownAndLoggedAndTheEntryGoesOn) {
    FileSystemWithBusyFile busy("RX_busy.txt");
    CommonRig rig(&busy);
    writeAll(rig.logFile(), std::string(51713, 'x'));
    writeAll(rig.logFolder() / "RX_busy.txt", "held by the driver");
    EscribirLog(rig.c, "CerrarKorvaCOM", "File not found", 53);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "70 - Permission denied");
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "BorrarFicherosRX");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, mb::kExclamation);
    // Nothing of the old log is kept: the handler's entry, then the entry.
    EXPECT_EQ(readAll(rig.logFile()),
              entry("21/03/2005  10:42  BorrarFicherosRX", "70 - Permission denied") +
                  entry("21/03/2005  10:42  CerrarKorvaCOM", "53 - File not found"));
    EXPECT_TRUE(fs::exists(rig.logFolder() / "RX_busy.txt"));
    EXPECT_FALSE(rig.c.borrandoTrazas);
}

TEST(BorrarFicherosRX, DeletesOnlyTheReceptionTracesOfTheLogFolder) {
    CommonRig rig;
    writeAll(rig.logFolder() / "RX_A.TXT", "");
    writeAll(rig.logFolder() / "Errores.log", "kept");
    writeAll(rig.home / "RX_outside.TXT", "kept");
    BorrarFicherosRX(rig.c);
    EXPECT_FALSE(fs::exists(rig.logFolder() / "RX_A.TXT"));
    EXPECT_TRUE(fs::exists(rig.logFolder() / "Errores.log"));
    EXPECT_TRUE(fs::exists(rig.home / "RX_outside.TXT"));
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(BorrarFicherosRX, WithoutALogFolderDoesNothing) {
    CommonRig rig;
    BorrarFicherosRX(rig.c);
    EXPECT_TRUE(rig.dialogs.boxes().empty());
    EXPECT_FALSE(fs::exists(rig.logFolder()));
}

TEST(PonerLogsPanel, DoesNothingVisible) {
    CommonRig rig;
    PonerLogsPanel(rig.c);
    EXPECT_TRUE(rig.dialogs.boxes().empty());
    EXPECT_FALSE(fs::exists(rig.logFolder()));
}

TEST(LogRounding, HalvesGoToTheEvenNumber) {
    EXPECT_EQ(roundHalfEven(51712 / 1024.0), 50);  // 50.5
    EXPECT_EQ(roundHalfEven(51713 / 1024.0), 51);
    EXPECT_EQ(roundHalfEven(51.5), 52);
    EXPECT_EQ(roundHalfEven(50.4), 50);
    EXPECT_EQ(roundHalfEven(0.5), 0);
    EXPECT_EQ(roundHalfEven(1.5), 2);
}

}  // namespace
}  // namespace fc
