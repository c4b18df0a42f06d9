// firmcast-batch loading a visor from end to end, the visor being
// firmcast-sim in its own process: over a real pseudo-terminal, and over UDP
// on the loopback (the answers come to port 3001, which must be free). The
// boxes and the "label:" line are read on standard output.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "integration/batch_run.h"
#include "support/first_line_process.h"
#include "support/intel_hex.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const std::string kBin = FIRMCAST_BIN_DIR;

FirstLineProcess visorSim(std::vector<std::string> arguments) {
    std::vector<std::string> all{kBin + "/firmcast-sim", "--device", "visor", "--erase-ms", "100"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return FirstLineProcess(all);
}

// A firmware file of 1 KB from address 0.
std::string firmware(const TempFolder& folder) {
    std::vector<std::string> lines;
    const auto bytes = patternBytes(2, 1024);
    for (int at = 0; at < 1024; at += 16)
        lines.push_back(
            intelRecord(at, 0, std::vector<int>(bytes.begin() + at, bytes.begin() + at + 16)));
    lines.push_back(endRecord());
    return folder.write("visor.hex", hexFile(lines));
}

std::vector<std::string> args(const std::string& way, const std::string& file) {
    std::vector<std::string> words{"--model", "7"};
    std::istringstream in(way);
    for (std::string w; in >> w;) words.push_back(w);
    words.push_back("--file");
    words.push_back(file);
    return words;
}

TEST(BatchVisor, LoadsAVisorOverARealPtyAndSaysFirmcastOk) {
    TempFolder home;
    FirstLineProcess sim = visorSim({});
    ASSERT_FALSE(sim.firstLine().empty()) << "firmcast-sim gave no tty";
    BatchResult r = runBatchProcess(
        args("--com 1", firmware(home)),
        {{"FIRMCAST_COM1", sim.firstLine()}, {"FIRMCAST_HOME", home.path().string()}});
    EXPECT_EQ(r.status, 0) << r.said();
    EXPECT_EQ(r.out, "label: Firmcast OK\n") << r.said();
}

TEST(BatchVisor, AWrongByteInTheVisorIsCaughtByTheVerifyWithExit1) {
    TempFolder home;
    FirstLineProcess slow = visorSim({"--baud", "9600", "--wrong-dump-byte-at", "0x300"});
    ASSERT_FALSE(slow.firstLine().empty());
    BatchResult s = runBatchProcess(
        args("--com 1 --speed 9600", firmware(home)),
        {{"FIRMCAST_COM1", slow.firstLine()}, {"FIRMCAST_HOME", home.path().string()}});
    EXPECT_EQ(s.status, 1) << s.said();
    EXPECT_EQ(s.out, "msgbox: Bad answer from the visor\nlabel: Please Wait, verifying.\n")
        << s.said();
}

TEST(BatchVisor, LoadsAVisorOverUdpOnTheLoopback) {
    TempFolder home;
    FirstLineProcess sim = visorSim({"--udp", "0", "--split-dump", "3"});
    const std::string first = sim.firstLine();
    ASSERT_THAT(first, HasSubstr("listening on ")) << first;
    const std::string port = first.substr(std::string("listening on ").size());
    BatchResult r = runBatchProcess(args("--udp 127.0.0.1:" + port, firmware(home)),
                                    {{"FIRMCAST_HOME", home.path().string()}});
    EXPECT_EQ(r.status, 0) << r.said();
    EXPECT_EQ(r.out, "label: Firmcast OK\n") << r.said();
}

TEST(BatchVisor, TheVisorIsReachedByComOrUdpAndNothingElse) {
    TempFolder home;
    const std::string file = firmware(home);
    EXPECT_EQ(runBatchProcess(args("--ethernet", file)).status, 2);
    EXPECT_EQ(runBatchProcess(args("--com 1 --udp 10.0.0.1", file)).status, 2);
    EXPECT_EQ(runBatchProcess(args("--udp 10.0.0.1 --speed 9600", file)).status, 2);
    EXPECT_EQ(runBatchProcess({"--model", "1", "--udp", "10.0.0.1", "--file", file}).status, 2);
    EXPECT_EQ(runBatchProcess(args("--com 1 --passes 2", file)).status, 2);
    EXPECT_EQ(runBatchProcess(args("--com 1 --serial 123", file)).status, 2);
    BatchResult none = runBatchProcess(args("", file));
    EXPECT_EQ(none.status, 2);
    EXPECT_THAT(none.err, HasSubstr("give either --com N or --udp IP[:PORT]"));
}

}  // namespace
}  // namespace fc::test
