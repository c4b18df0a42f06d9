#include "platform/linux/linux_tcp_transport.h"

#include <arpa/inet.h>
#include <linux/sockios.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/linux/socket_address.h"
#include "platform/socket_errors.h"

namespace fc {

namespace {

constexpr int kLastPort = 65535;
constexpr std::size_t kReadChunk = 16384;

// The control's number for a connection that has failed with `error`.
int connectionError(int error) {
    switch (error) {
        case ECONNREFUSED:
            return sck::kConnectionRefused;
        case ETIMEDOUT:
            return sck::kTimedOut;
        case ENETUNREACH:
        case EHOSTUNREACH:
            return sck::kNetworkUnreachable;
        case ECONNRESET:
            return sck::kConnectionReset;
        default:  // ECONNABORTED, EPIPE and whatever else ends a connection
            return sck::kConnectAborted;
    }
}

// The control's number for a connect() refused before anything was sent.
int immediateError(int error) {
    switch (error) {
        case EADDRINUSE:
        case EADDRNOTAVAIL:
            return sck::kAddressInUse;
        case EINVAL:
        case EAFNOSUPPORT:
            return sck::kInvalidArg;
        default:
            return connectionError(error);
    }
}

bool wouldBlock(int error) {
    return error == EAGAIN || error == EWOULDBLOCK;
}

}  // namespace

LinuxTcpTransport::LinuxTcpTransport(std::chrono::milliseconds connectLimit)
    : connectLimit_(connectLimit) {}

LinuxTcpTransport::~LinuxTcpTransport() {
    if (fd_ >= 0)
        ::close(fd_);
}

int LinuxTcpTransport::startConnect(const Ipv4& address, int port) {
    if (fd_ >= 0)
        return sck::kInvalidOp;
    if (port < 1 || port > kLastPort)
        return sck::kInvalidArg;
    status_ = TcpStatus{};
    queue_.clear();
    received_.clear();
    stranded_ = 0;
    int number = beginConnect(address, port);
    if (number != 0)
        fail(number);
    return number;
}

int LinuxTcpTransport::beginConnect(const Ipv4& address, int port) {
    fd_ = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (fd_ < 0)
        return connectionError(errno);
    connectDeadline_ = std::chrono::steady_clock::now() + connectLimit_;
    sockaddr_in to = socketAddress(address, port);
    if (::connect(fd_, reinterpret_cast<const sockaddr*>(&to), sizeof to) == 0) {
        status_.connected = true;
        return 0;
    }
    // Interrupted, a non-blocking connect goes on just the same.
    if (errno == EINPROGRESS || errno == EINTR) {
        status_.connecting = true;
        return 0;
    }
    return immediateError(errno);
}

void LinuxTcpTransport::send(const std::string& bytes) {
    queue_ += bytes;
    // Handing the bytes over now saves a turn of the pump on every message.
    if (status_.connected)
        flushQueue();
}

long LinuxTcpTransport::unacknowledged() {
    long inSocket = fd_ >= 0 ? socketUnacknowledged() : stranded_;
    return static_cast<long>(queue_.size()) + inSocket;
}

long LinuxTcpTransport::socketUnacknowledged() const {
    int count = 0;
    if (fd_ < 0 || ::ioctl(fd_, SIOCOUTQ, &count) != 0)
        return 0;
    return count;
}

std::string LinuxTcpTransport::receive() {
    std::string out;
    out.swap(received_);
    return out;
}

void LinuxTcpTransport::service() {
    if (fd_ < 0)
        return;
    if (status_.connecting)
        finishConnecting();
    if (status_.connected)
        flushQueue();
    if (status_.connected && !status_.peerClosed)
        takeArrivals();
}

void LinuxTcpTransport::finishConnecting() {
    pollfd p{fd_, POLLOUT, 0};
    if (::poll(&p, 1, 0) <= 0) {
        if (std::chrono::steady_clock::now() >= connectDeadline_)
            fail(sck::kTimedOut);
        return;
    }
    int error = 0;
    socklen_t length = sizeof error;
    if (::getsockopt(fd_, SOL_SOCKET, SO_ERROR, &error, &length) != 0)
        error = errno;
    if (error != 0) {
        fail(connectionError(error));
    } else if ((p.revents & POLLOUT) == 0) {
        fail(sck::kConnectAborted);
    } else {
        status_.connecting = false;
        status_.connected = true;
    }
}

void LinuxTcpTransport::flushQueue() {
    std::size_t sent = 0;
    int error = 0;
    while (sent < queue_.size()) {
        ssize_t n =
            ::send(fd_, queue_.data() + sent, queue_.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (n > 0) {
            sent += static_cast<std::size_t>(n);
        } else if (n < 0 && errno == EINTR) {
            continue;
        } else {
            error = n < 0 && !wouldBlock(errno) ? errno : 0;
            break;
        }
    }
    queue_.erase(0, sent);
    if (error != 0)
        fail(connectionError(error));
}

void LinuxTcpTransport::takeArrivals() {
    char buffer[kReadChunk];
    for (;;) {
        ssize_t n = ::recv(fd_, buffer, sizeof buffer, MSG_DONTWAIT);
        if (n > 0) {
            received_.append(buffer, static_cast<std::size_t>(n));
        } else if (n == 0) {
            status_.peerClosed = true;
            return;
        } else if (errno != EINTR) {
            if (!wouldBlock(errno))
                fail(connectionError(errno));
            return;
        }
    }
}

// A send can meet the error before the bytes that came ahead of it are read:
// those are taken in before the socket goes.
void LinuxTcpTransport::fail(int number) {
    char buffer[kReadChunk];
    ssize_t n;
    while (fd_ >= 0 && (n = ::recv(fd_, buffer, sizeof buffer, MSG_DONTWAIT)) > 0)
        received_.append(buffer, static_cast<std::size_t>(n));
    stranded_ = socketUnacknowledged();
    status_.connecting = false;
    status_.connected = false;
    status_.error = number;
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
}

void LinuxTcpTransport::close() {
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
    status_ = TcpStatus{};
    queue_.clear();
    stranded_ = 0;
}

int LinuxTcpTransport::wakeFd() const {
    bool listening = (status_.connecting || status_.connected) && !status_.peerClosed;
    return listening ? fd_ : -1;
}

}  // namespace fc
