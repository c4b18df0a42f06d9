#include "bed_fixture.h"

#include <net/if.h>

#include <cstdlib>
#include <fstream>

#include "platform/linux/icmp_echo.h"
#include "platform/linux/neighbour_table.h"

namespace fc::netbed {

namespace {

constexpr const char* kPingGroupRange = "/proc/sys/net/ipv4/ping_group_range";

std::string readLine(const char* path) {
    std::ifstream in(path);
    std::string line;
    std::getline(in, line);
    return line;
}

bool writeLine(const char* path, const std::string& line) {
    std::ofstream out(path);
    out << line << '\n';
    out.close();
    return !out.fail();
}

}  // namespace

std::string programFolder() {
    const char* bin = std::getenv("FIRMCAST_NETBED_BIN");
    return bin ? bin : FIRMCAST_BIN_DIR;
}

std::vector<std::string> simInScale(const BedScale& scale, int port,
                                    const std::vector<std::string>& options) {
    std::vector<std::string> words{"ip",
                                   "netns",
                                   "exec",
                                   scale.ns,
                                   programFolder() + "/firmcast-sim",
                                   "--tcp",
                                   std::to_string(port)};
    words.insert(words.end(), options.begin(), options.end());
    return words;
}

void BedTest::SetUp() {
    std::string whyNot;
    std::optional<TestBed> found = currentBed(whyNot);
    if (!found)
        GTEST_SKIP() << whyNot;
    bed = *found;
    clearTable();
}

std::vector<NeighbourRow> BedTest::table() {
    std::vector<NeighbourRow> rows;
    EXPECT_EQ(readNeighbourTable(rows), NetResult::Done);
    return rows;
}

std::vector<NeighbourRow> BedTest::rowsOf(const Ipv4& ip) {
    std::vector<NeighbourRow> found;
    for (const NeighbourRow& row : table()) {
        if (row.ip == ip)
            found.push_back(row);
    }
    return found;
}

void BedTest::clearTable() {
    for (const NeighbourRow& row : table())
        EXPECT_EQ(deleteNeighbourEntry(row), NetResult::Done) << text(row.ip);
}

bool BedTest::echo(const Ipv4& ip, int timeoutMs) {
    bool answered = false;
    EXPECT_EQ(sendIcmpEcho(ip, timeoutMs, answered), NetResult::Done) << text(ip);
    return answered;
}

std::uint32_t BedTest::lanIndex() const {
    return if_nametoindex(kLanInterface);
}

PingGroupRange::PingGroupRange(const std::string& range) : old_(readLine(kPingGroupRange)) {
    EXPECT_TRUE(writeLine(kPingGroupRange, range)) << kPingGroupRange;
}

PingGroupRange::~PingGroupRange() {
    writeLine(kPingGroupRange, old_);
}

}  // namespace fc::netbed
