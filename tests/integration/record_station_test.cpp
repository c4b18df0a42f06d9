// This machine's record station: the digest of a real file, the time and
// host name, and a record file that many processes append to at once, each
// line whole.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "integration/batch_run.h"
#include "platform/linux/linux_record_station.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

TEST(RecordStation, TheDigestOfAFileIsItsSha256AndItsSizeItsLength) {
    TempFolder folder;
    LinuxRecordStation station;
    std::optional<FileFacts> facts = station.fileFacts(folder.write("abc.txt", "abc"));
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->size, 3);
    EXPECT_EQ(facts->sha256, "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_FALSE(station.fileFacts((folder.path() / "missing").string()));
}

TEST(RecordStation, TheTimeIsUtcToTheMillisecondAndTheStationIsTheHostName) {
    LinuxRecordStation station;
    EXPECT_TRUE(
        std::regex_match(station.utcNow(), std::regex(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)")))
        << station.utcNow();
    char host[256] = {};
    gethostname(host, sizeof host - 1);
    EXPECT_EQ(station.stationName(), host);
}

TEST(RecordStation, AFileThatCannotBeMadeIsRefusedWithTheSystemsReason) {
    TempFolder folder;
    LinuxRecordStation station;
    std::string why;
    EXPECT_FALSE(station.appendLine((folder.path() / "no" / "r.jsonl").string(), "{}", why));
    EXPECT_EQ(why, "No such file or directory");
}

// Eight processes append 200 lines of 20 KB each, at the same time: every
// line arrives whole, once, and nothing else does.
TEST(RecordStation, ProcessesAppendingAtOnceNeverSplitEachOthersLines) {
    TempFolder folder;
    const std::string file = (folder.path() / "r.jsonl").string();
    constexpr int kProcesses = 8, kLines = 200;
    std::vector<pid_t> children;
    for (int p = 0; p < kProcesses; ++p) {
        pid_t pid = fork();
        if (pid == 0) {
            LinuxRecordStation station;
            std::string why;
            for (int l = 0; l < kLines; ++l) {
                std::string line = std::to_string(p) + ":" + std::to_string(l) + ":" +
                                   std::string(20000, static_cast<char>('a' + p));
                if (!station.appendLine(file, line, why))
                    _exit(1);
            }
            _exit(0);
        }
        children.push_back(pid);
    }
    for (pid_t pid : children) {
        int status = 0;
        waitpid(pid, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    std::istringstream in(contentOfFile(file));
    std::set<std::string> seen;
    int lines = 0;
    for (std::string line; std::getline(in, line); ++lines) {
        const std::size_t first = line.find(':'), second = line.find(':', first + 1);
        ASSERT_NE(second, std::string::npos) << lines;
        const int p = std::stoi(line.substr(0, first));
        EXPECT_EQ(line.substr(second + 1), std::string(20000, static_cast<char>('a' + p)))
            << "line " << lines << " is not whole";
        EXPECT_TRUE(seen.insert(line.substr(0, second)).second);
    }
    EXPECT_EQ(lines, kProcesses * kLines);
}

}  // namespace
}  // namespace fc::test
