// firmcast-sim --tcp: a scale's Ethernet boot loader in a process of its own,
// reached over a real TCP connection on 127.0.0.1; its faults as a client
// sees them, its log, and its end on a signal.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <linux/sockios.h>
#include <netinet/in.h>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "platform/linux/socket_address.h"
#include "support/first_line_process.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

const std::string kBin = FIRMCAST_BIN_DIR;
// A guard against hanging, not a measure of speed.
constexpr int kPatienceMs = 10'000;

// firmcast-sim in TCP mode; its first line names the port.
class TcpSim {
  public:
    explicit TcpSim(const std::vector<std::string>& arguments) : process_(words(arguments)) {
        std::sscanf(firstLine().c_str(), "listening on %d", &port_);
    }
    int stop(int signal) { return process_.stop(signal); }
    const std::string& firstLine() const { return process_.firstLine(); }
    int port() const { return port_; }

  private:
    static std::vector<std::string> words(const std::vector<std::string>& arguments) {
        std::vector<std::string> all{kBin + "/firmcast-sim", "--tcp", "0"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return all;
    }
    FirstLineProcess process_;
    int port_ = 0;
};

// A blocking client with a patience on each wait.
class Client {
  public:
    explicit Client(int port) {
        fd_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in to = socketAddress(Ipv4{127, 0, 0, 1}, port);
        connected_ = ::connect(fd_, reinterpret_cast<sockaddr*>(&to), sizeof to) == 0;
    }
    ~Client() { ::close(fd_); }
    bool connected() const { return connected_; }
    bool write(const std::string& bytes) {
        return ::send(fd_, bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
               static_cast<ssize_t>(bytes.size());
    }
    void shutdownWriting() { ::shutdown(fd_, SHUT_WR); }
    // Reads until the peer ends the connection: 0 for an orderly end, else the
    // error met; -1 when nothing ended within the patience.
    int waitForEnd() {
        char buffer[4096];
        for (;;) {
            pollfd p{fd_, POLLIN, 0};
            if (poll(&p, 1, kPatienceMs) <= 0)
                return -1;
            ssize_t n = ::recv(fd_, buffer, sizeof buffer, 0);
            if (n == 0)
                return 0;
            if (n < 0)
                return errno;
        }
    }
    int unacknowledged() const {
        int queued = 0;
        ioctl(fd_, SIOCOUTQ, &queued);
        return queued;
    }

  private:
    int fd_ = -1;
    bool connected_ = false;
};

std::string contentOf(const std::string& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

// Waits until the simulator's log holds `line`, looking again every
// millisecond; false when it never came within the patience.
bool logSays(const std::string& path, const std::string& line) {
    for (int waited = 0; waited < kPatienceMs; ++waited) {
        if (contentOf(path).find(line) != std::string::npos)
            return true;
        usleep(1000);
    }
    return false;
}

TEST(FirmcastSimTcp, SaysItsPortFirstAndTakesWhatItIsSent) {
    TempFolder folder;
    std::string log = (folder.path() / "sim.log").string();
    TcpSim sim({"--log", log});
    ASSERT_GT(sim.port(), 0) << "first line: " << sim.firstLine();
    EXPECT_EQ(sim.firstLine(), "listening on " + std::to_string(sim.port()));
    {
        Client client(sim.port());
        ASSERT_TRUE(client.connected());
        ASSERT_TRUE(client.write(std::string(5000, 'f')));
        client.shutdownWriting();
        // The scale closes when the program has.
        EXPECT_EQ(client.waitForEnd(), 0);
    }
    EXPECT_EQ(sim.stop(SIGTERM), 0);
    std::string text = contentOf(log);
    EXPECT_NE(text.find(" ms connected total 0\n"), std::string::npos) << text;
    EXPECT_NE(text.find(" ms program closed total 5000\n"), std::string::npos) << text;
}

TEST(FirmcastSimTcp, ResetsAfterTheBytesItIsTold) {
    TempFolder folder;
    std::string log = (folder.path() / "sim.log").string();
    TcpSim sim({"--reset-after", "100", "--log", log});
    ASSERT_GT(sim.port(), 0);
    {
        Client client(sim.port());
        ASSERT_TRUE(client.connected());
        ASSERT_TRUE(client.write(std::string(1000, 'r')));
        EXPECT_EQ(client.waitForEnd(), ECONNRESET);
    }
    EXPECT_EQ(sim.stop(SIGTERM), 0);
    std::string text = contentOf(log);
    EXPECT_NE(text.find(" ms read 100 total 100\n"), std::string::npos) << text;
    EXPECT_NE(text.find(" ms reset total 100\n"), std::string::npos) << text;
}

TEST(FirmcastSimTcp, ClosesAfterTheBytesItIsTold) {
    TcpSim sim({"--close-after", "100"});
    ASSERT_GT(sim.port(), 0);
    Client client(sim.port());
    ASSERT_TRUE(client.connected());
    ASSERT_TRUE(client.write(std::string(1000, 'c')));
    EXPECT_EQ(client.waitForEnd(), 0);
}

TEST(FirmcastSimTcp, StopsReadingAndLeavesTheSenderUnacknowledged) {
    TempFolder folder;
    std::string log = (folder.path() / "sim.log").string();
    TcpSim sim({"--stop-reading-after", "100", "--receive-buffer", "1024", "--log", log});
    ASSERT_GT(sim.port(), 0);
    Client client(sim.port());
    ASSERT_TRUE(client.connected());
    ASSERT_TRUE(client.write(std::string(30000, 's')));
    // Once the scale has stopped, the rest stays with the sender.
    ASSERT_TRUE(logSays(log, " ms stopped reading total 100\n")) << contentOf(log);
    EXPECT_GT(client.unacknowledged(), 0);
    EXPECT_EQ(sim.stop(SIGTERM), 0);
    std::string text = contentOf(log);
    EXPECT_NE(text.find(" ms stopped reading total 100\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("total 101"), std::string::npos) << text;
}

TEST(FirmcastSimTcp, EndsOnInterrupt) {
    TcpSim sim({"--read-rate", "500"});
    ASSERT_GT(sim.port(), 0);
    EXPECT_EQ(sim.stop(SIGINT), 0);
}

TEST(FirmcastSimTcp, RefusesABadPortAndTellsTheUsage) {
    FILE* pipe = popen((kBin + "/firmcast-sim --tcp 70000 2>&1").c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string output;
    char buffer[512];
    while (fgets(buffer, sizeof buffer, pipe)) output += buffer;
    int raw = pclose(pipe);
    EXPECT_EQ(WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, 2);
    EXPECT_NE(output.find("--tcp PORT"), std::string::npos) << output;
    EXPECT_NE(output.find("--read-rate"), std::string::npos) << output;
}

}  // namespace
}  // namespace fc::test
