// The loader as an unprivileged user on the bed: without a capability and
// with no ICMP datagram socket allowed, it clears the address table and gets
// its echoes through the network helper, the one program granted the
// capabilities; without the helper it goes on, and its log says once what it
// may not do.
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "bed_fixture.h"
#include "ethernet/address_table.h"
#include "ethernet/address_text.h"
#include "loader_world.h"
#include "platform/linux/icmp_echo.h"
#include "platform/linux/neighbour_table.h"

namespace fc::netbed {
namespace {

constexpr uid_t kNobody = 65534;
constexpr int kCouldNotBecomeNobody = 120;

// Runs `work` in a child that has become the user nobody, with no
// capability left; its result (0 to 119), or -1 when it did not end normally.
int asNobody(const std::function<int()>& work) {
    std::fflush(nullptr);
    pid_t child = fork();
    if (child < 0)
        return -1;
    if (child == 0) {
        if (setgroups(0, nullptr) != 0 || setresgid(kNobody, kNobody, kNobody) != 0 ||
            setresuid(kNobody, kNobody, kNobody) != 0 || geteuid() != kNobody)
            _exit(kCouldNotBecomeNobody);
        _exit(work());
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

// The rows of `ip` as anyone may read them.
std::size_t rowCount(const Ipv4& ip) {
    std::vector<NeighbourRow> rows;
    if (readNeighbourTable(rows) != NetResult::Done)
        return 1000;
    std::size_t count = 0;
    for (const NeighbourRow& row : rows) count += row.ip == ip ? 1 : 0;
    return count;
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream in(file);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

class HelperOnBed : public BedTest {
  protected:
    void SetUp() override {
        BedTest::SetUp();
        if (IsSkipped())
            return;
        // A copy of the helper that nobody may run, granted as the run command
        // grants it.
        chmod(folder_.c_str(), 0755);
        helper_ = folder_ + "/firmcast-net-helper";
        std::filesystem::copy_file(std::string(FIRMCAST_BIN_DIR) + "/firmcast-net-helper", helper_);
        chmod(helper_.c_str(), 0755);
        if (!run("setcap cap_net_admin,cap_net_raw+ep " + helper_))
            GTEST_SKIP() << "the helper's copy could not be granted its capabilities";
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string folder_ = [] {
        char name[] = "/tmp/fc-helper-XXXXXX";
        return std::string(mkdtemp(name));
    }();
    std::string helper_;
};

TEST_F(HelperOnBed, AnUnprivilegedLoaderClearsTheTableAndGetsItsEchoesThroughTheHelper) {
    PingGroupRange closed(PingGroupRange::kClosed);
    const BedScale& scale = bed.scales[0];
    const BedScale& other = bed.scales[1];
    ASSERT_TRUE(echo(scale.ip));
    ASSERT_TRUE(echo(other.ip));
    ASSERT_EQ(rowCount(other.ip), 1u);

    int outcome = asNobody([&] {
        // On its own the process may do neither.
        std::vector<NeighbourRow> rows;
        if (readNeighbourTable(rows) != NetResult::Done || rows.empty())
            return 10;
        if (deleteNeighbourEntry(rows[0]) != NetResult::NotPermitted)
            return 11;
        bool answered = false;
        if (sendIcmpEcho(scale.ip, 500, answered) != NetResult::NotPermitted)
            return 12;
        // Through the helper: the table cleared, the echo answered, the
        // scale's MAC read back.
        LoaderWorld world(helper_);
        world.m.tiempoEco = kAnsweredTimeoutMs;
        std::string mac;
        if (!DameMacPorPing(world.m, text(scale.ip), mac))
            return 20;
        if (mac != MacATexto(std::vector<Byte>(scale.mac.begin(), scale.mac.end()), ""))
            return 21;
        if (rowCount(other.ip) != 0)
            return 22;
        if (!world.network.helper().running())
            return 23;
        // Nothing was refused, so the log has nothing to say.
        if (std::filesystem::exists(world.home / "Balanza_Logs/Errores.log"))
            return 24;
        return 0;
    });

    EXPECT_EQ(outcome, 0);
}

TEST_F(HelperOnBed, WithoutTheHelperTheLoaderGoesOnAndItsLogSaysOnceWhatItMayNotDo) {
    PingGroupRange closed(PingGroupRange::kClosed);
    const BedScale& scale = bed.scales[0];
    ASSERT_TRUE(echo(scale.ip));

    int outcome = asNobody([&] {
        LoaderWorld world(folder_ + "/no-such-helper");
        world.m.tiempoEco = 500;
        std::string mac;
        for (int i = 0; i < 2; ++i) {
            if (DameMacPorPing(world.m, text(scale.ip), mac))
                return 30;
        }
        if (rowCount(scale.ip) != 1)
            return 31;
        std::string log = contentOf(world.home / "Balanza_Logs/Errores.log");
        auto count = [&log](const std::string& what) {
            std::size_t n = 0;
            for (auto at = log.find(what); at != std::string::npos; at = log.find(what, at + 1))
                ++n;
            return n;
        };
        if (count("may not delete entries of the address table") != 1)
            return 32;
        if (count("may not send an echo request") != 1)
            return 33;
        return 0;
    });

    EXPECT_EQ(outcome, 0);
}

}  // namespace
}  // namespace fc::netbed
