// Line Input on a file opened for input: the three line ends, the bytes in
// between kept as they are, the end of the file and the read past it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/file_table.h"
#include "platform/runtime_error.h"
#include "support/scenario_rig.h"

namespace fc {
namespace {

class FileTableLines : public ::testing::Test {
  protected:
    // Opens `content` as file 1 for input.
    void openText(const std::string& content) {
        files.open(1, folder.write("lines.txt", content), FileTable::Mode::Input);
    }
    // Every line to the end of the file, as a reader's loop takes them.
    std::vector<std::string> allLines() {
        std::vector<std::string> lines;
        while (!files.eof(1)) lines.push_back(files.lineInput(1));
        return lines;
    }

    test::TempFolder folder;
    FileTable files;
};

TEST_F(FileTableLines, CrLfLfAndALoneCrEachEndALine) {
    openText("one\r\ntwo\nthree\rfour\r\n");
    EXPECT_EQ(allLines(), (std::vector<std::string>{"one", "two", "three", "four"}));
}

TEST_F(FileTableLines, EmptyLinesAreLinesOfNothing) {
    openText("\r\n\n\ra\r\n\r\n");
    EXPECT_EQ(allLines(), (std::vector<std::string>{"", "", "", "a", ""}));
}

TEST_F(FileTableLines, TheLastLineNeedsNoEnd) {
    openText("first\r\nlast");
    EXPECT_EQ(allLines(), (std::vector<std::string>{"first", "last"}));
}

TEST_F(FileTableLines, ACrAtTheVeryEndEndsTheLastLine) {
    openText("first\r\nlast\r");
    EXPECT_EQ(allLines(), (std::vector<std::string>{"first", "last"}));
}

TEST_F(FileTableLines, ACrFollowedByCrIsTwoLineEnds) {
    openText("a\r\rb\n\nc");
    EXPECT_EQ(allLines(), (std::vector<std::string>{"a", "", "b", "", "c"}));
}

TEST_F(FileTableLines, EveryOtherByteValueIsKeptAsItIs) {
    std::string bytes;
    for (int v = 0; v < 256; ++v) {
        if (v != '\r' && v != '\n')
            bytes += static_cast<char>(v);
    }
    openText(bytes + "\r\n" + bytes);
    std::vector<std::string> lines = allLines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_TRUE(lines[0] == bytes);
    EXPECT_TRUE(lines[1] == bytes);
}

TEST_F(FileTableLines, ALineLongerThanAnyBufferComesWhole) {
    std::string longLine;
    for (int i = 0; i < 100'000; ++i) longLine += static_cast<char>('A' + i % 26);
    openText(":short\r\n" + longLine + "\r\n:after\n");
    std::vector<std::string> lines = allLines();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], ":short");
    EXPECT_TRUE(lines[1] == longLine);
    EXPECT_EQ(lines[2], ":after");
}

TEST_F(FileTableLines, TheEndIsSeenRightAfterTheLastLineEnd) {
    openText("a\r\nb\r\n");
    EXPECT_FALSE(files.eof(1));
    EXPECT_EQ(files.lineInput(1), "a");
    EXPECT_FALSE(files.eof(1));
    EXPECT_EQ(files.lineInput(1), "b");
    EXPECT_TRUE(files.eof(1));
}

TEST_F(FileTableLines, AReadPastTheEndIsError62) {
    openText("only\r\n");
    EXPECT_EQ(files.lineInput(1), "only");
    try {
        files.lineInput(1);
        ADD_FAILURE() << "no error reading past the end";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::kInputPastEndOfFile);
    }
}

TEST_F(FileTableLines, AnEmptyFileIsAtItsEndAtOnce) {
    openText("");
    EXPECT_TRUE(files.eof(1));
    EXPECT_THROW(files.lineInput(1), RuntimeError);
}

TEST_F(FileTableLines, AFileOpenForOutputCannotBeReadByLine) {
    files.open(2, (folder.path() / "out.txt").string(), FileTable::Mode::Output);
    try {
        files.lineInput(2);
        ADD_FAILURE() << "a file open for output was read";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::kBadFileMode);
    }
}

}  // namespace
}  // namespace fc
