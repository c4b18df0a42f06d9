// The loader's socket options, by its own numbers, on real Linux sockets:
// each is read back with getsockopt.
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/linux/socket_options.h"
#include "platform/network.h"

namespace fc {
namespace {

using namespace sockopt;

class SocketOptions : public ::testing::Test {
  protected:
    SocketOptions() : fd(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {}
    ~SocketOptions() override { close(fd); }

    int intOption(int level, int option) const { return intOptionOf(fd, level, option); }

    static int intOptionOf(int socket, int level, int option) {
        int value = -1;
        socklen_t length = sizeof value;
        EXPECT_EQ(getsockopt(socket, level, option, &value, &length), 0);
        return value;
    }

    // What the kernel makes of a buffer size of 0 asked for directly: its
    // minimum for that buffer.
    static int kernelMinimum(int option) {
        int other = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        int zero = 0;
        setsockopt(other, SOL_SOCKET, option, &zero, sizeof zero);
        int minimum = intOptionOf(other, SOL_SOCKET, option);
        close(other);
        return minimum;
    }

    int fd;
};

TEST_F(SocketOptions, NoDelayTurnsCoalescingOffAndOn) {
    ASSERT_GE(fd, 0);
    ASSERT_EQ(intOption(IPPROTO_TCP, TCP_NODELAY), 0);
    EXPECT_EQ(setLoaderSocketOption(fd, kIpprotoTcp, kTcpNodelay, 1), 0);
    EXPECT_NE(intOption(IPPROTO_TCP, TCP_NODELAY), 0);
    EXPECT_EQ(setLoaderSocketOption(fd, kIpprotoTcp, kTcpNodelay, 0), 0);
    EXPECT_EQ(intOption(IPPROTO_TCP, TCP_NODELAY), 0);
}

TEST_F(SocketOptions, AReceiveBufferOfZeroIsTheKernelsSmallMinimum) {
    int before = intOption(SOL_SOCKET, SO_RCVBUF);
    EXPECT_EQ(setLoaderSocketOption(fd, kSolSocket, kSoRcvbuf, 0), 0);
    int after = intOption(SOL_SOCKET, SO_RCVBUF);
    EXPECT_EQ(after, kernelMinimum(SO_RCVBUF));
    EXPECT_GT(after, 0);
    EXPECT_LT(after, before);
}

TEST_F(SocketOptions, ASendBufferOfZeroIsTheKernelsSmallMinimum) {
    int before = intOption(SOL_SOCKET, SO_SNDBUF);
    EXPECT_EQ(setLoaderSocketOption(fd, kSolSocket, kSoSndbuf, 0), 0);
    int after = intOption(SOL_SOCKET, SO_SNDBUF);
    EXPECT_EQ(after, kernelMinimum(SO_SNDBUF));
    EXPECT_GT(after, 0);
    EXPECT_LT(after, before);
}

// Linux keeps twice the size asked for (room for its bookkeeping), so a size
// well inside its limits reads back doubled, and each on its own buffer.
TEST_F(SocketOptions, EachBufferSizeGoesToItsOwnBuffer) {
    EXPECT_EQ(setLoaderSocketOption(fd, kSolSocket, kSoRcvbuf, 6000), 0);
    EXPECT_EQ(setLoaderSocketOption(fd, kSolSocket, kSoSndbuf, 7000), 0);
    EXPECT_EQ(intOption(SOL_SOCKET, SO_RCVBUF), 12000);
    EXPECT_EQ(intOption(SOL_SOCKET, SO_SNDBUF), 14000);
}

TEST_F(SocketOptions, DontLingerWithZeroLeavesTheCloseToThePlatformsDefault) {
    linger on{1, 5};
    ASSERT_EQ(setsockopt(fd, SOL_SOCKET, SO_LINGER, &on, sizeof on), 0);
    EXPECT_EQ(setLoaderSocketOption(fd, kSolSocket, kSoDontlinger, 0), 0);
    linger now{};
    socklen_t length = sizeof now;
    ASSERT_EQ(getsockopt(fd, SOL_SOCKET, SO_LINGER, &now, &length), 0);
    EXPECT_EQ(now.l_onoff, 0);
}

TEST_F(SocketOptions, TheDontLingerNumberIsTheComplementOfLinger) {
    EXPECT_EQ(kSoDontlinger, ~0x80);
    EXPECT_EQ(static_cast<std::uint32_t>(kSoDontlinger), 0xFFFFFF7Fu);
}

TEST_F(SocketOptions, AnUnknownPairIsRefused) {
    int rcvbuf = intOption(SOL_SOCKET, SO_RCVBUF);
    EXPECT_EQ(setLoaderSocketOption(fd, kSolSocket, 0x1234, 0), -1);
    EXPECT_EQ(setLoaderSocketOption(fd, kIpprotoTcp, kSoRcvbuf, 0), -1);
    EXPECT_EQ(setLoaderSocketOption(fd, kSolSocket, kTcpNodelay, 1), -1);
    EXPECT_EQ(setLoaderSocketOption(fd, 17, kTcpNodelay, 1), -1);
    // Linux's own numbers are not the loader's.
    EXPECT_EQ(setLoaderSocketOption(fd, SOL_SOCKET, SO_RCVBUF, 0), -1);
    EXPECT_EQ(intOption(SOL_SOCKET, SO_RCVBUF), rcvbuf);
    EXPECT_EQ(intOption(IPPROTO_TCP, TCP_NODELAY), 0);
}

TEST_F(SocketOptions, ACallThatFailsIsRefused) {
    EXPECT_EQ(setLoaderSocketOption(-1, kIpprotoTcp, kTcpNodelay, 1), -1);
    EXPECT_EQ(setLoaderSocketOption(-1, kSolSocket, kSoRcvbuf, 0), -1);
    EXPECT_EQ(setLoaderSocketOption(-1, kSolSocket, kSoDontlinger, 0), -1);
    // TCP_NODELAY on a datagram socket is not a TCP option at all.
    int udp = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    EXPECT_EQ(setLoaderSocketOption(udp, kIpprotoTcp, kTcpNodelay, 1), -1);
    close(udp);
}

}  // namespace
}  // namespace fc
