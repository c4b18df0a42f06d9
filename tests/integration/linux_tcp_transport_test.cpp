// The TCP transport on real loopback sockets: the test plays the scale with
// plain sockets of its own, in the same thread, without blocking. Each wait
// services the transport in short polls and gives up after a patience that
// only a broken build exhausts.
#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <functional>
#include <set>
#include <string>

#include "platform/linux/linux_tcp_transport.h"
#include "platform/linux/socket_address.h"
#include "platform/socket_errors.h"
#include "support/byte_values.h"

namespace fc {
namespace {

// A safety net against a hung test, not a speed requirement.
constexpr int kPatienceMs = 5000;
const Ipv4 kLoopback{127, 0, 0, 1};

std::string reversed(std::string s) {
    return std::string(s.rbegin(), s.rend());
}

// Every byte value over and over, `size` bytes.
std::string pattern(std::size_t size) {
    std::string s(size, '\0');
    for (std::size_t i = 0; i < size; ++i) s[i] = static_cast<char>(i * 7 % 256);
    return s;
}

std::chrono::steady_clock::time_point giveUpTime() {
    return std::chrono::steady_clock::now() + std::chrono::milliseconds(kPatienceMs);
}

// A descriptor closed with the object.
class Fd {
  public:
    explicit Fd(int fd = -1) : fd_(fd) {}
    ~Fd() { reset(); }
    Fd(Fd&& other) noexcept : fd_(other.fd_) { other.fd_ = -1; }
    Fd& operator=(Fd&& other) noexcept {
        reset();
        fd_ = other.fd_;
        other.fd_ = -1;
        return *this;
    }
    void reset() {
        if (fd_ >= 0)
            ::close(fd_);
        fd_ = -1;
    }
    int get() const { return fd_; }

  private:
    int fd_;
};

sockaddr_in loopbackAddress(int port) {
    return socketAddress(kLoopback, port);
}

int boundPort(int fd) {
    sockaddr_in a{};
    socklen_t length = sizeof a;
    getsockname(fd, reinterpret_cast<sockaddr*>(&a), &length);
    return ntohs(a.sin_port);
}

int peerPort(int fd) {
    sockaddr_in a{};
    socklen_t length = sizeof a;
    getpeername(fd, reinterpret_cast<sockaddr*>(&a), &length);
    return ntohs(a.sin_port);
}

// A stream socket bound to a free loopback port; listening when asked.
Fd boundStreamSocket(int receiveBuffer = 0) {
    Fd fd(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    // Set before listening, so that connections accepted inherit it and the
    // window they announce is small from the start.
    if (receiveBuffer > 0)
        setsockopt(fd.get(), SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
    sockaddr_in a = loopbackAddress(0);
    if (bind(fd.get(), reinterpret_cast<sockaddr*>(&a), sizeof a) != 0)
        return Fd();
    return fd;
}

// Services the transport until `done`, waiting on its descriptor between turns.
bool pumpUntil(LinuxTcpTransport& t, const std::function<bool()>& done) {
    auto giveUp = giveUpTime();
    for (;;) {
        t.service();
        if (done())
            return true;
        if (std::chrono::steady_clock::now() >= giveUp)
            return false;
        pollfd p{t.wakeFd(), POLLIN, 0};
        poll(&p, 1, 1);
    }
}

// Whatever the peer socket holds now, without waiting.
std::string readAvailable(int fd, std::size_t most = 1 << 20) {
    std::string got;
    char buffer[4096];
    while (got.size() < most) {
        std::size_t want = std::min(sizeof buffer, most - got.size());
        ssize_t n = recv(fd, buffer, want, MSG_DONTWAIT);
        if (n <= 0)
            break;
        got.append(buffer, static_cast<std::size_t>(n));
    }
    return got;
}

bool writeAll(int fd, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        ssize_t n = send(fd, bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL);
        if (n <= 0)
            return false;
        done += static_cast<std::size_t>(n);
    }
    return true;
}

class LinuxTcpLoopback : public ::testing::Test {
  protected:
    // A listener on a free loopback port; `backlog` connections may wait.
    void listenOn(int receiveBuffer = 0, int backlog = 8) {
        listener_ = boundStreamSocket(receiveBuffer);
        ASSERT_GE(listener_.get(), 0);
        ASSERT_EQ(listen(listener_.get(), backlog), 0);
        port_ = boundPort(listener_.get());
    }

    // The next connection the listener has taken, non-blocking.
    Fd acceptPeer() {
        pollfd p{listener_.get(), POLLIN, 0};
        if (poll(&p, 1, kPatienceMs) <= 0)
            return Fd();
        return Fd(accept4(listener_.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    }

    // Connects the transport to the listener and accepts the peer's end.
    void connectPeer(int receiveBuffer = 0) {
        listenOn(receiveBuffer);
        ASSERT_EQ(transport.startConnect(kLoopback, port_), 0);
        ASSERT_TRUE(pumpUntil(transport, [&] { return transport.status().connected; }));
        peer = acceptPeer();
        ASSERT_GE(peer.get(), 0);
    }

    // Reads from the peer, servicing the transport, until `count` bytes came.
    std::string peerReads(std::size_t count) {
        std::string got;
        pumpUntil(transport, [&] {
            got += readAvailable(peer.get(), count - got.size());
            return got.size() >= count;
        });
        return got;
    }

    LinuxTcpTransport transport;
    Fd listener_;
    int port_ = 0;
    Fd peer;
};

TEST_F(LinuxTcpLoopback, NoSocketBeforeConnecting) {
    EXPECT_EQ(transport.handle(), -1);
    EXPECT_EQ(transport.wakeFd(), -1);
    TcpStatus s = transport.status();
    EXPECT_FALSE(s.connecting);
    EXPECT_FALSE(s.connected);
    EXPECT_EQ(s.error, 0);
    transport.close();  // harmless on a transport that never connected
    EXPECT_EQ(transport.handle(), -1);
}

TEST_F(LinuxTcpLoopback, ConnectsToAListeningPeer) {
    listenOn();
    ASSERT_EQ(transport.startConnect(kLoopback, port_), 0);
    EXPECT_GE(transport.handle(), 0);
    EXPECT_TRUE(transport.status().connecting || transport.status().connected);
    ASSERT_TRUE(pumpUntil(transport, [&] { return transport.status().connected; }));
    EXPECT_FALSE(transport.status().connecting);
    EXPECT_EQ(transport.status().error, 0);
    EXPECT_EQ(transport.wakeFd(), transport.handle());

    peer = acceptPeer();
    ASSERT_GE(peer.get(), 0);
    EXPECT_EQ(peerPort(peer.get()), boundPort(transport.handle()));
}

TEST_F(LinuxTcpLoopback, TheSocketIsNonBlockingAndClosedOnExec) {
    listenOn();
    ASSERT_EQ(transport.startConnect(kLoopback, port_), 0);
    int fd = transport.handle();
    ASSERT_GE(fd, 0);
    EXPECT_NE(fcntl(fd, F_GETFL) & O_NONBLOCK, 0);
    EXPECT_NE(fcntl(fd, F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(LinuxTcpLoopback, CloseReleasesTheSocketAndThePeerSeesTheEnd) {
    connectPeer();
    transport.close();
    EXPECT_EQ(transport.handle(), -1);
    EXPECT_FALSE(transport.status().connected);
    pollfd p{peer.get(), POLLIN, 0};
    ASSERT_EQ(poll(&p, 1, kPatienceMs), 1);
    char c;
    EXPECT_EQ(recv(peer.get(), &c, 1, 0), 0);
    transport.close();  // a second close is harmless
}

TEST_F(LinuxTcpLoopback, AClosedPortRefusesTheConnection) {
    Fd reserved = boundStreamSocket();  // bound, never listening: the port answers with a reset
    ASSERT_GE(reserved.get(), 0);
    int at = transport.startConnect(kLoopback, boundPort(reserved.get()));
    EXPECT_TRUE(at == 0 || at == sck::kConnectionRefused) << at;
    ASSERT_TRUE(pumpUntil(transport, [&] { return transport.status().error != 0; }));
    EXPECT_EQ(transport.status().error, sck::kConnectionRefused);
    EXPECT_FALSE(transport.status().connected);
    EXPECT_FALSE(transport.status().connecting);
    EXPECT_EQ(transport.handle(), -1);
}

TEST_F(LinuxTcpLoopback, AnAttemptThatIsNeverAnsweredTimesOut) {
    // A listener whose one-place queue is taken drops further connection
    // requests, so the next attempt waits for an answer that never comes.
    listenOn(0, 0);
    Fd filler(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in to = loopbackAddress(port_);
    ASSERT_EQ(connect(filler.get(), reinterpret_cast<sockaddr*>(&to), sizeof to), 0);

    LinuxTcpTransport limited(std::chrono::milliseconds(200));
    ASSERT_EQ(limited.startConnect(kLoopback, port_), 0);
    limited.service();
    if (limited.status().connected)
        GTEST_SKIP() << "this kernel took a connection beyond the listen queue";
    EXPECT_TRUE(limited.status().connecting);
    ASSERT_TRUE(pumpUntil(limited, [&] { return limited.status().error != 0; }));
    EXPECT_EQ(limited.status().error, sck::kTimedOut);
    EXPECT_FALSE(limited.status().connecting);
    EXPECT_FALSE(limited.status().connected);
}

TEST_F(LinuxTcpLoopback, TheClassicClientsConnectLimitIs21Seconds) {
    EXPECT_EQ(LinuxTcpTransport::kClassicConnectLimit, std::chrono::milliseconds(21000));
}

TEST_F(LinuxTcpLoopback, ConnectingTwiceIsAnInvalidOperation) {
    connectPeer();
    int fd = transport.handle();
    EXPECT_EQ(transport.startConnect(kLoopback, port_), sck::kInvalidOp);
    EXPECT_EQ(transport.handle(), fd);
    EXPECT_TRUE(transport.status().connected);
}

TEST_F(LinuxTcpLoopback, APortOutsideTheRangeIsAnInvalidArgument) {
    EXPECT_EQ(transport.startConnect(kLoopback, 0), sck::kInvalidArg);
    EXPECT_EQ(transport.startConnect(kLoopback, 65536), sck::kInvalidArg);
    EXPECT_EQ(transport.handle(), -1);
}

TEST_F(LinuxTcpLoopback, EveryByteValuePassesBothWays) {
    connectPeer();
    const std::string out = allByteValues();
    transport.send(out);
    EXPECT_EQ(peerReads(out.size()), out);
    ASSERT_TRUE(pumpUntil(transport, [&] { return transport.unacknowledged() == 0; }));

    const std::string in = reversed(allByteValues());
    ASSERT_TRUE(writeAll(peer.get(), in));
    ASSERT_TRUE(pumpUntil(transport, [&] { return transport.available() == 256; }));
    EXPECT_EQ(transport.receive(), in);
    EXPECT_EQ(transport.available(), 0);
    EXPECT_EQ(transport.receive(), "");
}

TEST_F(LinuxTcpLoopback, BytesSentWhileConnectingLeaveOnceConnected) {
    listenOn();
    ASSERT_EQ(transport.startConnect(kLoopback, port_), 0);
    transport.send("first line\r\n");
    ASSERT_TRUE(pumpUntil(transport, [&] { return transport.status().connected; }));
    peer = acceptPeer();
    ASSERT_GE(peer.get(), 0);
    EXPECT_EQ(peerReads(12), "first line\r\n");
}

TEST_F(LinuxTcpLoopback, UnacknowledgedFallsAsASlowPeerReads) {
    connectPeer(1);  // the smallest receive buffer the kernel gives
    const std::string payload = pattern(128 * 1024);
    transport.send(payload);
    transport.service();
    long previous = transport.unacknowledged();
    ASSERT_GT(previous, 0);
    EXPECT_LE(previous, static_cast<long>(payload.size()));

    std::string got;
    std::set<long> seen{previous};
    bool neverRose = true;
    auto giveUp = giveUpTime();
    while (got.size() < payload.size() && std::chrono::steady_clock::now() < giveUp) {
        pollfd p{peer.get(), POLLIN, 0};
        poll(&p, 1, 1);
        got += readAvailable(peer.get(), 1024);
        transport.service();
        long now = transport.unacknowledged();
        neverRose = neverRose && now <= previous;
        previous = now;
        seen.insert(now);
    }
    ASSERT_EQ(got.size(), payload.size());
    EXPECT_EQ(got, payload);
    EXPECT_TRUE(neverRose);
    EXPECT_GT(seen.size(), 3u) << "the count should fall step by step, not at once";
    ASSERT_TRUE(pumpUntil(transport, [&] { return transport.unacknowledged() == 0; }));
}

TEST_F(LinuxTcpLoopback, UnacknowledgedStaysAboveZeroWhileThePeerDoesNotRead) {
    connectPeer(1);
    const std::string payload = pattern(128 * 1024);
    transport.send(payload);
    std::string got = peerReads(4096);
    ASSERT_EQ(got.size(), 4096u);

    // The peer reads no more: whatever the transport does, the bytes beyond
    // the peer's small window are not acknowledged.
    auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
    long least = transport.unacknowledged();
    while (std::chrono::steady_clock::now() < until) {
        transport.service();
        least = std::min(least, transport.unacknowledged());
        poll(nullptr, 0, 1);  // a pump turn: nothing arrives to end it sooner
    }
    EXPECT_GT(least, 0);
    EXPECT_TRUE(transport.status().connected);
    EXPECT_EQ(transport.status().error, 0);
}

TEST_F(LinuxTcpLoopback, APeerThatClosesLeavesItsBytesReadable) {
    connectPeer();
    const std::string last = std::string("goodbye\0\xff", 9);
    ASSERT_TRUE(writeAll(peer.get(), last));
    peer.reset();
    ASSERT_TRUE(pumpUntil(transport, [&] { return transport.status().peerClosed; }));
    EXPECT_EQ(transport.status().error, 0);
    EXPECT_EQ(transport.available(), static_cast<long>(last.size()));
    EXPECT_EQ(transport.receive(), last);
    // At end of stream the socket would wake the pump for ever.
    EXPECT_EQ(transport.wakeFd(), -1);
    EXPECT_GE(transport.handle(), 0);
}

TEST_F(LinuxTcpLoopback, APeerResetIsConnectionReset) {
    connectPeer();
    ASSERT_TRUE(writeAll(peer.get(), "hello"));
    ASSERT_TRUE(pumpUntil(transport, [&] { return transport.available() == 5; }));
    linger abortive{1, 0};
    ASSERT_EQ(setsockopt(peer.get(), SOL_SOCKET, SO_LINGER, &abortive, sizeof abortive), 0);
    peer.reset();
    ASSERT_TRUE(pumpUntil(transport, [&] { return transport.status().error != 0; }));
    EXPECT_EQ(transport.status().error, sck::kConnectionReset);
    EXPECT_FALSE(transport.status().connected);
    EXPECT_FALSE(transport.status().peerClosed);
    EXPECT_EQ(transport.receive(), "hello");
    EXPECT_EQ(transport.handle(), -1);
}

TEST_F(LinuxTcpLoopback, BytesThatNeverGotThroughStayUnacknowledgedAfterAReset) {
    connectPeer(1);
    transport.send(pattern(64 * 1024));
    transport.service();
    ASSERT_GT(transport.unacknowledged(), 0);
    linger abortive{1, 0};
    ASSERT_EQ(setsockopt(peer.get(), SOL_SOCKET, SO_LINGER, &abortive, sizeof abortive), 0);
    peer.reset();
    ASSERT_TRUE(pumpUntil(transport, [&] { return transport.status().error != 0; }));
    EXPECT_EQ(transport.status().error, sck::kConnectionReset);
    EXPECT_GT(transport.unacknowledged(), 0);
    transport.close();
    EXPECT_EQ(transport.unacknowledged(), 0);
}

}  // namespace
}  // namespace fc
