#include "sim/host/tcp_device_host.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <stdexcept>

#include "platform/pump.h"

namespace fc {

namespace {

constexpr long kReadChunk = 4096;
constexpr int kReadsPerRun = 16;  // then others get their turn
// How often a device that has stopped reading is looked at again.
constexpr Micros kIdleLook = 10'000;
constexpr Micros kOutputRetry = 1'000;

void setInt(int fd, int level, int option, int value) {
    ::setsockopt(fd, level, option, &value, sizeof value);
}

[[noreturn]] void fail(const std::string& what, int fd) {
    int error = errno;
    if (fd >= 0)
        ::close(fd);
    throw std::runtime_error(what + ": " + std::strerror(error));
}

}  // namespace

TcpDeviceHost::TcpDeviceHost(Pump& pump, TcpDevice& device, const std::string& address, int port)
    : pump_(pump), device_(device) {
    sockaddr_in where{};
    where.sin_family = AF_INET;
    where.sin_port = htons(static_cast<std::uint16_t>(port));
    if (inet_pton(AF_INET, address.c_str(), &where.sin_addr) != 1)
        throw std::runtime_error("not an IPv4 address: " + address);
    listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (listener_ < 0)
        fail("no socket", -1);
    setInt(listener_, SOL_SOCKET, SO_REUSEADDR, 1);
    // Before listen, so that every accepted connection has it from its start.
    setInt(listener_, SOL_SOCKET, SO_RCVBUF, device.receiveBuffer);
    if (::bind(listener_, reinterpret_cast<sockaddr*>(&where), sizeof where) != 0)
        fail("cannot listen on " + address + ":" + std::to_string(port), listener_);
    if (::listen(listener_, 1) != 0)
        fail("listen failed", listener_);
    socklen_t length = sizeof where;
    getsockname(listener_, reinterpret_cast<sockaddr*>(&where), &length);
    port_ = ntohs(where.sin_port);
    pump_.add(*this);
}

TcpDeviceHost::~TcpDeviceHost() {
    pump_.remove(*this);
    if (connection_ >= 0)
        ::close(connection_);
    if (listener_ >= 0)
        ::close(listener_);
}

Micros TcpDeviceHost::now() const {
    return pump_.nowMicros();
}

// Read only when the device would: reading, and with a full bucket at its
// pace, so that reads come in slices and the pump is not woken for nothing.
bool TcpDeviceHost::mayRead() const {
    if (connection_ < 0 || !device_.reading || device_.readLimit() == 0)
        return false;
    return pace_.readyAt(0, LONG_MAX, device_.readBytesPerSecond) <= pump_.nowMicros();
}

int TcpDeviceHost::wakeFd() const {
    if (connection_ < 0)
        return listener_;
    return mayRead() ? connection_ : -1;
}

Micros TcpDeviceHost::nextDue() const {
    Micros next = actions_.empty() ? kNever : actions_.begin()->first;
    if (connection_ < 0)
        return next;
    if (!output_.empty())
        next = std::min(next, lastRun_ + kOutputRetry);
    if (!device_.reading || device_.readLimit() == 0) {
        next = std::min(next, lastRun_ + kIdleLook);
    } else {
        Micros paced = pace_.readyAt(0, LONG_MAX, device_.readBytesPerSecond);
        if (paced > pump_.nowMicros())
            next = std::min(next, paced);
    }
    return next;
}

void TcpDeviceHost::runDue(Micros now) {
    lastRun_ = now;
    if (connection_ < 0)
        acceptOne(now);
    if (connection_ >= 0) {
        flushOutput();
        readAtPace(now);
    }
    runDueActions(now);
}

void TcpDeviceHost::acceptOne(Micros now) {
    int fd = ::accept4(listener_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (fd < 0)
        return;
    connection_ = fd;
    // A device's answers are small and go at once.
    setInt(fd, IPPROTO_TCP, TCP_NODELAY, 1);
    pace_.restart(now);
    device_.onConnect(*this);
}

void TcpDeviceHost::readAtPace(Micros now) {
    for (int i = 0; i < kReadsPerRun && mayRead(); ++i) {
        if (!readOnce(now))
            return;
    }
}

long TcpDeviceHost::nextReadSize(Micros now) {
    long size = kReadChunk;
    long allowed = pace_.allowance(now, device_.readBytesPerSecond);
    if (allowed >= 0)
        size = std::min(size, allowed);
    long limit = device_.readLimit();
    if (limit >= 0)
        size = std::min(size, limit);
    return size;
}

// One read; false when there is nothing more to read now.
bool TcpDeviceHost::readOnce(Micros now) {
    long size = nextReadSize(now);
    if (size <= 0)
        return false;
    char buffer[kReadChunk];
    ssize_t n = ::recv(connection_, buffer, static_cast<size_t>(size), 0);
    if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR))
        return false;
    if (n <= 0) {
        // The program closed its side, or its connection broke.
        endConnection();
        device_.onProgramClosed();
        return false;
    }
    pace_.take(n);
    // The acknowledgement goes now, not after the delayed-ACK timer: the
    // sender's pace is the device's reading.
    setInt(connection_, IPPROTO_TCP, TCP_QUICKACK, 1);
    device_.onReceive(std::string(buffer, static_cast<size_t>(n)));
    return connection_ >= 0;
}

void TcpDeviceHost::deviceSend(const std::string& bytes) {
    if (connection_ < 0)
        return;
    output_ += bytes;
    flushOutput();
}

void TcpDeviceHost::flushOutput() {
    while (!output_.empty() && connection_ >= 0) {
        ssize_t n = ::send(connection_, output_.data(), output_.size(), MSG_NOSIGNAL);
        if (n > 0) {
            output_.erase(0, static_cast<size_t>(n));
        } else if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
            return;
        } else if (n < 0 && errno != EINTR) {
            output_.clear();  // the connection is gone; the next read tells
        }
    }
}

void TcpDeviceHost::deviceClose() {
    if (connection_ < 0)
        return;
    flushOutput();
    char buffer[kReadChunk];
    while (::recv(connection_, buffer, sizeof buffer, 0) > 0) {
    }
    endConnection();
}

void TcpDeviceHost::deviceReset() {
    if (connection_ < 0)
        return;
    linger abort{};
    abort.l_onoff = 1;
    abort.l_linger = 0;
    ::setsockopt(connection_, SOL_SOCKET, SO_LINGER, &abort, sizeof abort);
    endConnection();
}

void TcpDeviceHost::endConnection() {
    ::close(connection_);
    connection_ = -1;
    output_.clear();
    actions_.clear();
}

void TcpDeviceHost::deviceAfter(Micros delay, std::function<void()> action) {
    if (connection_ >= 0)
        actions_.emplace(now() + std::max<Micros>(0, delay), std::move(action));
}

void TcpDeviceHost::runDueActions(Micros now) {
    while (!actions_.empty() && actions_.begin()->first <= now) {
        std::function<void()> action = std::move(actions_.begin()->second);
        actions_.erase(actions_.begin());
        action();
    }
}

}  // namespace fc
