#include "platform/linux/linux_udp_transport.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/linux/socket_address.h"
#include "platform/socket_errors.h"

namespace fc {

namespace {

constexpr int kLastPort = 65535;
constexpr std::size_t kLargestDatagram = 65535;
// A full send buffer empties within microseconds on any working interface;
// one that stays full this long is a failure, not a wait.
constexpr int kSendRoomWaitMs = 1000;

int datagramError(int error) {
    switch (error) {
        case EADDRINUSE:
            return sck::kAddressInUse;
        case ENETUNREACH:
        case EHOSTUNREACH:
            return sck::kNetworkUnreachable;
        case ECONNREFUSED:
            return sck::kConnectionRefused;
        case EINVAL:
        case EMSGSIZE:
            return sck::kInvalidArg;
        default:
            return sck::kConnectAborted;
    }
}

}  // namespace

LinuxUdpTransport::~LinuxUdpTransport() {
    if (fd_ >= 0)
        ::close(fd_);
}

int LinuxUdpTransport::openSocket() {
    if (fd_ >= 0)
        return 0;
    fd_ = ::socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    return fd_ >= 0 ? 0 : datagramError(errno);
}

int LinuxUdpTransport::bind(int localPort) {
    if (bound_)
        return sck::kInvalidOp;
    if (localPort < 0 || localPort > kLastPort)
        return sck::kInvalidArg;
    if (int number = openSocket(); number != 0)
        return number;
    sockaddr_in local = socketAddress(Ipv4{0, 0, 0, 0}, localPort);
    if (::bind(fd_, reinterpret_cast<const sockaddr*>(&local), sizeof local) != 0)
        return datagramError(errno);
    bound_ = true;
    return 0;
}

int LinuxUdpTransport::sendTo(const Ipv4& address, int port, const std::string& bytes) {
    if (port < 1 || port > kLastPort)
        return sck::kInvalidArg;
    if (!bound_) {
        if (int number = bind(0); number != 0)
            return number;
    }
    int number = sendOnce(address, port, bytes);
    if (number == EAGAIN || number == EWOULDBLOCK) {
        pollfd p{fd_, POLLOUT, 0};
        ::poll(&p, 1, kSendRoomWaitMs);
        number = sendOnce(address, port, bytes);
    }
    return number == 0 ? 0 : datagramError(number);
}

// The errno of one attempt, 0 when the datagram went.
int LinuxUdpTransport::sendOnce(const Ipv4& address, int port, const std::string& bytes) {
    sockaddr_in to = socketAddress(address, port);
    for (;;) {
        ssize_t n = ::sendto(fd_, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL,
                             reinterpret_cast<const sockaddr*>(&to), sizeof to);
        if (n >= 0)
            return 0;
        if (errno != EINTR)
            return errno;
    }
}

bool LinuxUdpTransport::receive(Datagram& out) {
    if (fd_ < 0)
        return false;
    buffer_.resize(kLargestDatagram);
    sockaddr_in from{};
    socklen_t length = sizeof from;
    ssize_t n;
    do {
        n = ::recvfrom(fd_, buffer_.data(), buffer_.size(), MSG_DONTWAIT,
                       reinterpret_cast<sockaddr*>(&from), &length);
    } while (n < 0 && errno == EINTR);
    if (n < 0)
        return false;
    out.from = addressBytes(from);
    out.fromPort = ntohs(from.sin_port);
    out.bytes.assign(buffer_.data(), static_cast<std::size_t>(n));
    return true;
}

int LinuxUdpTransport::localPort() const {
    sockaddr_in local{};
    socklen_t length = sizeof local;
    if (!bound_ || ::getsockname(fd_, reinterpret_cast<sockaddr*>(&local), &length) != 0)
        return 0;
    return ntohs(local.sin_port);
}

void LinuxUdpTransport::close() {
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
    bound_ = false;
}

}  // namespace fc
