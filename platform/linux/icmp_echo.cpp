#include "platform/linux/icmp_echo.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <vector>

#include "platform/linux/icmp_packet.h"
#include "platform/linux/socket_address.h"

namespace fc {

namespace {

using Clock = std::chrono::steady_clock;

std::uint16_t nextSequence() {
    static std::atomic<std::uint16_t> sequence{1};
    return sequence++;
}

// A raw socket sees every echo reply that reaches the machine, so its
// requests carry an identifier of this process; a datagram socket's
// identifier is chosen by the kernel, which delivers only the replies to it.
std::uint16_t rawIdentifier() {
    return static_cast<std::uint16_t>(getpid() & 0xFFFF);
}

class EchoSocket {
  public:
    EchoSocket() = default;
    EchoSocket(const EchoSocket&) = delete;
    EchoSocket& operator=(const EchoSocket&) = delete;
    ~EchoSocket() {
        if (fd_ >= 0)
            ::close(fd_);
    }

    // 0, or the error number of the raw socket when neither kind can be had.
    int open() {
        fd_ = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_ICMP);
        if (fd_ >= 0)
            return 0;
        raw_ = true;
        fd_ = socket(AF_INET, SOCK_RAW | SOCK_CLOEXEC, IPPROTO_ICMP);
        return fd_ >= 0 ? 0 : errno;
    }

    // 0, or the error number of the send.
    int send(const sockaddr_in& to, std::uint16_t sequence) {
        std::vector<std::uint8_t> request = echoRequest(raw_ ? rawIdentifier() : 0, sequence);
        ssize_t sent = sendto(fd_, request.data(), request.size(), 0,
                              reinterpret_cast<const sockaddr*>(&to), sizeof to);
        if (sent < 0)
            return errno;
        identifier_ = raw_ ? rawIdentifier() : boundIdentifier();
        return 0;
    }

    // Waits until `deadline` for the reply to `sequence` from `from`.
    bool awaitReply(const sockaddr_in& from, std::uint16_t sequence, Clock::time_point deadline) {
        for (;;) {
            auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
            if (left.count() <= 0)
                return false;
            pollfd wait{fd_, POLLIN, 0};
            int ready = poll(&wait, 1, static_cast<int>(left.count()));
            if (ready < 0 && errno != EINTR)
                return false;
            if (ready > 0 && isReply(from, sequence))
                return true;
        }
    }

  private:
    // The kernel gives a datagram socket the identifier of its local port.
    std::uint16_t boundIdentifier() const {
        sockaddr_in local{};
        socklen_t length = sizeof local;
        if (getsockname(fd_, reinterpret_cast<sockaddr*>(&local), &length) != 0)
            return 0;
        return ntohs(local.sin_port);
    }

    // Reads one packet. Errors reported on the socket (an unreachable host
    // announced later) are taken off it here and the wait goes on.
    bool isReply(const sockaddr_in& from, std::uint16_t sequence) {
        std::uint8_t packet[1500];
        sockaddr_in source{};
        socklen_t sourceLength = sizeof source;
        ssize_t got = recvfrom(fd_, packet, sizeof packet, MSG_DONTWAIT,
                               reinterpret_cast<sockaddr*>(&source), &sourceLength);
        if (got <= 0 || source.sin_addr.s_addr != from.sin_addr.s_addr)
            return false;
        EchoReply reply;
        return readEchoReply(packet, static_cast<std::size_t>(got), raw_, reply) &&
               reply.identifier == identifier_ && reply.sequence == sequence;
    }

    int fd_ = -1;
    bool raw_ = false;
    std::uint16_t identifier_ = 0;
};

bool isUnreachable(int error) {
    return error == EHOSTUNREACH || error == ENETUNREACH || error == EHOSTDOWN || error == ENETDOWN;
}

}  // namespace

NetResult sendIcmpEcho(const Ipv4& address, int timeoutMs, bool& answered) {
    answered = false;
    Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    EchoSocket echo;
    if (int error = echo.open(); error != 0)
        return error == EPERM || error == EACCES ? NetResult::NotPermitted : NetResult::Failed;
    sockaddr_in to = socketAddress(address);
    std::uint16_t sequence = nextSequence();
    if (int error = echo.send(to, sequence); error != 0)
        return isUnreachable(error) ? NetResult::Done : NetResult::Failed;
    answered = echo.awaitReply(to, sequence, deadline);
    return NetResult::Done;
}

}  // namespace fc
