// The look at a firmware file that the file step shows: records, bytes, the
// addresses, and the first line that is not sound.
#include "firmware/file_check.h"

#include <gtest/gtest.h>

#include "support/firmware_files.h"
#include "support/intel_hex.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

FileCheck checkOf(const std::string& content) {
    TempFolder folder;
    return checkFirmwareFile(folder.write("f", content));
}

TEST(FileCheck, AnIntelHexFileIsCountedWithItsSegmentBase) {
    FileCheck check =
        checkOf(hexFile({bankRecord(0x1000), intelRecord(0x0000, 0, patternBytes(1, 16)),
                         intelRecord(0x0010, 0, patternBytes(2, 16)), endRecord()}));
    EXPECT_TRUE(check.readable);
    EXPECT_EQ(check.records, 2);
    EXPECT_EQ(check.bytes, 32);
    EXPECT_EQ(check.lowest, 0x10000);
    EXPECT_EQ(check.highest, 0x1001F);
    EXPECT_EQ(check.firstBadLine, 0);
    EXPECT_EQ(fileCheckText(check),
              "File check: 2 records, 32 bytes at 0x010000-0x01001F, every checksum good");
}

TEST(FileCheck, SRecordsAreCountedByTheirAddressWidth) {
    FileCheck check = checkOf(sRecordFile(consecutive(0x7F00, 3)));
    EXPECT_EQ(check.records, 3);
    EXPECT_EQ(check.bytes, 48);
    EXPECT_EQ(check.lowest, 0x7F00);
    EXPECT_EQ(check.highest, 0x7F2F);
    EXPECT_EQ(check.firstBadLine, 0);
}

TEST(FileCheck, TheFirstBadChecksumOrFormIsNamedByItsLine) {
    std::string bad = intelRecord(0x0010, 0, patternBytes(2, 16));
    bad.back() = bad.back() == '0' ? '1' : '0';
    FileCheck check =
        checkOf(hexFile({intelRecord(0, 0, patternBytes(1, 16)), "", bad, endRecord()}));
    EXPECT_EQ(check.firstBadLine, 3) << "a blank line is passed over but counted";
    EXPECT_EQ(fileCheckText(check),
              "File check: line 3 is not a sound record (its form or its checksum is wrong)");
    EXPECT_EQ(checkOf("hello\r\n").firstBadLine, 1);
    EXPECT_EQ(checkOf(":0100000000\r\n").firstBadLine, 1) << "a length the line does not hold";
}

TEST(FileCheck, AFileThatCannotBeReadSaysSo) {
    FileCheck check = checkFirmwareFile("/nonexistent/fw.hex");
    EXPECT_FALSE(check.readable);
    EXPECT_EQ(fileCheckText(check), "File check: the file cannot be read");
}

TEST(FileCheck, AFileWithoutDataRecordsHasNoRange) {
    FileCheck check = checkOf(hexFile({endRecord()}));
    EXPECT_EQ(check.records, 0);
    EXPECT_EQ(fileCheckText(check), "File check: 0 records, 0 bytes, every checksum good");
}

}  // namespace
}  // namespace fc::test
