// firmcast-net-helper as the loader starts it: a process of its own on a
// socket pair, asked a line at a time. What it refuses and why, that the
// caller's environment changes nothing, that it ends with its pipe, and the
// loader's side that starts it once and keeps it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "platform/linux/icmp_echo.h"
#include "platform/linux/neighbour_table.h"
#include "platform/linux/net_helper_client.h"
#include "platform/linux/net_helper_protocol.h"

namespace fc {
namespace {

using ::testing::StartsWith;

const std::string kHelper = std::string(FIRMCAST_BIN_DIR) + "/firmcast-net-helper";
// A guard against hanging, not a measure of speed.
constexpr int kPatienceMs = 10'000;

// The helper on the other end of a socket pair, started with `environment`.
class HelperProcess {
  public:
    explicit HelperProcess(std::vector<std::string> environment = {}) {
        int ends[2];
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        std::string program = kHelper;
        char* argv[] = {program.data(), nullptr};
        std::vector<char*> envp;
        for (std::string& variable : environment) envp.push_back(variable.data());
        envp.push_back(nullptr);
        spawned_ = posix_spawn(&pid_, program.c_str(), &actions, nullptr, argv, envp.data()) == 0;
        posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
        fd_ = ends[0];
    }
    ~HelperProcess() {
        if (fd_ >= 0)
            ::close(fd_);
        if (spawned_)
            ::waitpid(pid_, nullptr, 0);
    }
    bool spawned() const { return spawned_; }

    // Sends `request` as one line and returns the answer line.
    std::string ask(const std::string& request) {
        std::string line = request + "\n";
        EXPECT_EQ(::send(fd_, line.data(), line.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(line.size()));
        std::string answer;
        char c;
        for (;;) {
            pollfd wait{fd_, POLLIN, 0};
            if (::poll(&wait, 1, kPatienceMs) <= 0 || ::recv(fd_, &c, 1, 0) != 1)
                return "(no answer)";
            if (c == '\n')
                return answer;
            answer.push_back(c);
        }
    }

    // Closes the pipe and returns the helper's exit status (-1 if it did not
    // end by itself within the patience).
    int closeAndWait() {
        ::close(fd_);
        fd_ = -1;
        for (int waited = 0; waited < kPatienceMs; ++waited) {
            int status = 0;
            if (::waitpid(pid_, &status, WNOHANG) == pid_) {
                spawned_ = false;
                return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            }
            ::usleep(1000);
        }
        return -1;
    }

  private:
    pid_t pid_ = -1;
    int fd_ = -1;
    bool spawned_ = false;
};

// What this test process itself gets from an echo to the loopback address:
// the helper, with no more privilege than its caller, must answer the same.
std::string ownEchoAnswer() {
    bool answered = false;
    NetResult result = sendIcmpEcho(Ipv4{127, 0, 0, 1}, 1000, answered);
    return echoAnswer(result, answered);
}

const std::vector<std::string> kBadRequests = {
    "route add default gw 10.0.0.1",
    "delete 1",
    "delete 0 10.77.0.11",
    "delete 1 10.77.0.300",
    "echo 127.0.0.1 0",
    "echo 127.0.0.1 600000",
    "echo ../../etc/passwd 100",
    std::string(5000, 'x'),
    "echo 127.0.0.1\x01 100",
};

TEST(NetHelper, RefusesEveryRequestButItsTwoAndSaysWhy) {
    HelperProcess helper;
    ASSERT_TRUE(helper.spawned()) << kHelper;
    for (const std::string& request : kBadRequests) {
        std::string why;
        std::string expected = std::string(helper_answer::kRefused);
        if (request.size() > kHelperLineLimit)
            expected += "the request is longer than 64 characters";
        else
            readHelperRequest(request, why), expected += why;
        EXPECT_EQ(helper.ask(request), expected) << request.substr(0, 40);
    }
    // It goes on serving after every refusal.
    EXPECT_EQ(helper.ask("echo 127.0.0.1 1000"), ownEchoAnswer());
}

TEST(NetHelper, AnswersTheSameWhateverEnvironmentItIsStartedWith) {
    std::vector<std::string> answersClean, answersHostile;
    std::vector<std::string> requests = kBadRequests;
    requests.push_back("echo 127.0.0.1 500");
    requests.push_back("delete 2147483647 10.77.0.11");  // no such interface
    {
        HelperProcess helper;
        ASSERT_TRUE(helper.spawned());
        for (const auto& r : requests) answersClean.push_back(helper.ask(r));
    }
    {
        HelperProcess helper({"LD_PRELOAD=/nonexistent/evil.so", "LD_LIBRARY_PATH=/tmp/evil",
                              "PATH=/nonexistent", "IFS=x", "LANG=xx_XX.UTF-8",
                              "LC_ALL=tr_TR.UTF-8", "MALLOC_CHECK_=3", "TZ=../../../etc/passwd",
                              "HOSTALIASES=/etc/shadow", "HUGE=" + std::string(100'000, 'h')});
        ASSERT_TRUE(helper.spawned());
        for (const auto& r : requests) answersHostile.push_back(helper.ask(r));
    }
    EXPECT_EQ(answersHostile, answersClean);
    // The delete of a row on an interface that is not there: what this
    // process gets itself, refused or failed.
    NeighbourRow row;
    row.interfaceIndex = 2147483647;
    row.ip = Ipv4{10, 77, 0, 11};
    EXPECT_EQ(answersClean.back(), deleteAnswer(deleteNeighbourEntry(row)));
}

TEST(NetHelper, EndsWhenItsPipeCloses) {
    HelperProcess helper;
    ASSERT_TRUE(helper.spawned());
    EXPECT_EQ(helper.ask("echo 127.0.0.1 100"), ownEchoAnswer());
    EXPECT_EQ(helper.closeAndWait(), 0);
}

TEST(NetHelperClient, AMissingHelperIsNotPermittedAndNotStartedAgain) {
    NetHelperClient client("/nonexistent/firmcast-net-helper");
    NeighbourRow row;
    row.interfaceIndex = 1;
    row.ip = Ipv4{10, 77, 0, 11};
    EXPECT_EQ(client.deleteNeighbour(row), NetResult::NotPermitted);
    bool answered = true;
    EXPECT_EQ(client.echo(Ipv4{127, 0, 0, 1}, 100, answered), NetResult::NotPermitted);
    EXPECT_FALSE(answered);
    EXPECT_FALSE(client.running());
}

TEST(NetHelperClient, StartsTheHelperOnceAndKeepsItForEveryRequest) {
    NetHelperClient client(kHelper);
    EXPECT_FALSE(client.running());
    bool answered = false;
    NetResult first = client.echo(Ipv4{127, 0, 0, 1}, 1000, answered);
    EXPECT_EQ(echoAnswer(first, answered), ownEchoAnswer());
    ASSERT_TRUE(client.running());
    pid_t helper = client.pid();
    for (int i = 0; i < 5; ++i) {
        client.echo(Ipv4{127, 0, 0, 1}, 200, answered);
        EXPECT_EQ(client.pid(), helper);
    }
}

}  // namespace
}  // namespace fc
