// The UDP transport on real loopback sockets: the test plays the visor's end
// with a plain datagram socket of its own. Waits are short polls bounded by a
// patience that only a broken build exhausts.
#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "platform/linux/linux_udp_transport.h"
#include "platform/linux/socket_address.h"
#include "platform/socket_errors.h"
#include "support/byte_values.h"

namespace fc {
namespace {

// A safety net against a hung test, not a speed requirement.
constexpr int kPatienceMs = 5000;
// The largest payload one IPv4 datagram carries.
constexpr std::size_t kLargestIpv4Payload = 65507;
const Ipv4 kLoopback{127, 0, 0, 1};

sockaddr_in loopbackAddress(int port) {
    return socketAddress(kLoopback, port);
}

// The far end: a datagram socket bound to a free loopback port.
class Peer {
  public:
    Peer() {
        fd_ = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        sockaddr_in a = loopbackAddress(0);
        bind(fd_, reinterpret_cast<sockaddr*>(&a), sizeof a);
        socklen_t length = sizeof a;
        getsockname(fd_, reinterpret_cast<sockaddr*>(&a), &length);
        port_ = ntohs(a.sin_port);
    }
    ~Peer() { close(fd_); }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    int port() const { return port_; }

    bool sendTo(int port, const std::string& bytes) {
        sockaddr_in to = loopbackAddress(port);
        ssize_t n =
            sendto(fd_, bytes.data(), bytes.size(), 0, reinterpret_cast<sockaddr*>(&to), sizeof to);
        return n == static_cast<ssize_t>(bytes.size());
    }

    // The next datagram and the port it came from; false after the patience.
    bool receive(std::string& bytes, int& fromPort) {
        pollfd p{fd_, POLLIN, 0};
        if (poll(&p, 1, kPatienceMs) != 1)
            return false;
        std::vector<char> buffer(65536);
        sockaddr_in from{};
        socklen_t length = sizeof from;
        ssize_t n = recvfrom(fd_, buffer.data(), buffer.size(), MSG_DONTWAIT,
                             reinterpret_cast<sockaddr*>(&from), &length);
        if (n < 0)
            return false;
        bytes.assign(buffer.data(), static_cast<std::size_t>(n));
        fromPort = ntohs(from.sin_port);
        return true;
    }

  private:
    int fd_ = -1;
    int port_ = 0;
};

// The next datagram the transport has, waiting on its descriptor.
bool waitForDatagram(LinuxUdpTransport& t, Datagram& out) {
    auto giveUp = std::chrono::steady_clock::now() + std::chrono::milliseconds(kPatienceMs);
    while (!t.receive(out)) {
        if (std::chrono::steady_clock::now() >= giveUp)
            return false;
        pollfd p{t.wakeFd(), POLLIN, 0};
        poll(&p, 1, 1);
    }
    return true;
}

TEST(LinuxUdpTransport, NoSocketBeforeBindingOrSending) {
    LinuxUdpTransport t;
    EXPECT_EQ(t.handle(), -1);
    EXPECT_EQ(t.localPort(), 0);
    Datagram d;
    EXPECT_FALSE(t.receive(d));
    t.close();
    EXPECT_EQ(t.handle(), -1);
}

TEST(LinuxUdpTransport, BindsToAFreePort) {
    LinuxUdpTransport t;
    ASSERT_EQ(t.bind(0), 0);
    EXPECT_GE(t.handle(), 0);
    EXPECT_GT(t.localPort(), 0);
    EXPECT_NE(fcntl(t.handle(), F_GETFL) & O_NONBLOCK, 0);
    EXPECT_NE(fcntl(t.handle(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST(LinuxUdpTransport, BindsToTheChosenPortAndReceivesThere) {
    int port = 0;
    {
        LinuxUdpTransport probe;  // finds a port that is free now
        ASSERT_EQ(probe.bind(0), 0);
        port = probe.localPort();
    }
    LinuxUdpTransport t;
    ASSERT_EQ(t.bind(port), 0);
    EXPECT_EQ(t.localPort(), port);
    Peer peer;
    ASSERT_TRUE(peer.sendTo(port, "U"));
    Datagram d;
    ASSERT_TRUE(waitForDatagram(t, d));
    EXPECT_EQ(d.bytes, "U");
}

TEST(LinuxUdpTransport, APortInUseIsAddressInUse) {
    Peer holder;
    LinuxUdpTransport t;
    EXPECT_EQ(t.bind(holder.port()), sck::kAddressInUse);
    EXPECT_EQ(t.localPort(), 0);
}

TEST(LinuxUdpTransport, BindingTwiceIsAnInvalidOperation) {
    LinuxUdpTransport t;
    ASSERT_EQ(t.bind(0), 0);
    int port = t.localPort();
    EXPECT_EQ(t.bind(0), sck::kInvalidOp);
    EXPECT_EQ(t.localPort(), port);
}

TEST(LinuxUdpTransport, APortOutsideTheRangeIsAnInvalidArgument) {
    LinuxUdpTransport t;
    EXPECT_EQ(t.bind(-1), sck::kInvalidArg);
    EXPECT_EQ(t.bind(65536), sck::kInvalidArg);
    EXPECT_EQ(t.sendTo(kLoopback, 0, "x"), sck::kInvalidArg);
}

TEST(LinuxUdpTransport, EveryByteValuePassesBothWays) {
    LinuxUdpTransport t;
    ASSERT_EQ(t.bind(0), 0);
    Peer peer;

    const std::string values = allByteValues();
    ASSERT_EQ(t.sendTo(kLoopback, peer.port(), values), 0);
    std::string got;
    int fromPort = 0;
    ASSERT_TRUE(peer.receive(got, fromPort));
    EXPECT_EQ(got, values);
    EXPECT_EQ(fromPort, t.localPort());

    const std::string back(values.rbegin(), values.rend());
    ASSERT_TRUE(peer.sendTo(t.localPort(), back));
    Datagram d;
    ASSERT_TRUE(waitForDatagram(t, d));
    EXPECT_EQ(d.bytes, back);
    EXPECT_EQ(d.from, kLoopback);
    EXPECT_EQ(d.fromPort, peer.port());
}

TEST(LinuxUdpTransport, TheFirstSendBindsToAFreePort) {
    LinuxUdpTransport t;
    Peer peer;
    ASSERT_EQ(t.sendTo(kLoopback, peer.port(), "ping"), 0);
    EXPECT_GT(t.localPort(), 0);
    std::string got;
    int fromPort = 0;
    ASSERT_TRUE(peer.receive(got, fromPort));
    EXPECT_EQ(got, "ping");
    EXPECT_EQ(fromPort, t.localPort());

    // The answer comes back to the port the send chose.
    ASSERT_TRUE(peer.sendTo(fromPort, "pong"));
    Datagram d;
    ASSERT_TRUE(waitForDatagram(t, d));
    EXPECT_EQ(d.bytes, "pong");
}

TEST(LinuxUdpTransport, EachReceiveTakesOneWholeDatagram) {
    LinuxUdpTransport t;
    ASSERT_EQ(t.bind(0), 0);
    Peer peer;
    const std::vector<std::string> sent{":00000001FF\r\n", std::string("\0", 1), "",
                                        std::string(kLargestIpv4Payload, '\xA5')};
    for (const std::string& bytes : sent) ASSERT_TRUE(peer.sendTo(t.localPort(), bytes));

    for (const std::string& bytes : sent) {
        Datagram d;
        ASSERT_TRUE(waitForDatagram(t, d));
        EXPECT_EQ(d.bytes.size(), bytes.size());
        EXPECT_EQ(d.bytes, bytes);
    }
    Datagram none;
    EXPECT_FALSE(t.receive(none));
}

TEST(LinuxUdpTransport, ADatagramTooLongForIpv4IsAnInvalidArgument) {
    LinuxUdpTransport t;
    Peer peer;
    EXPECT_EQ(t.sendTo(kLoopback, peer.port(), std::string(kLargestIpv4Payload + 1, 'x')),
              sck::kInvalidArg);
}

TEST(LinuxUdpTransport, CloseReleasesThePort) {
    LinuxUdpTransport t;
    ASSERT_EQ(t.bind(0), 0);
    int port = t.localPort();
    t.close();
    EXPECT_EQ(t.handle(), -1);
    EXPECT_EQ(t.localPort(), 0);
    LinuxUdpTransport again;
    EXPECT_EQ(again.bind(port), 0);
}

}  // namespace
}  // namespace fc
