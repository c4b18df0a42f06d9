#include "virtual/virtual_tcp_connection.h"

#include <algorithm>

#include "platform/socket_errors.h"
#include "virtual/virtual_host.h"
#include "virtual/virtual_network.h"

namespace fc {

VirtualTcpConnection::VirtualTcpConnection(VirtualNetwork& network, VirtualHost* host, int port)
    : network_(network), host_(host), port_(port) {}

VirtualTcpConnection::~VirtualTcpConnection() = default;

Micros VirtualTcpConnection::now() const {
    return network_.now();
}

// The SYN leaves; a host that is up answers it, else nothing comes back and
// the attempt times out.
void VirtualTcpConnection::start() {
    status_.connecting = true;
    if (host_ && host_->up())
        network_.learn(*host_);
    auto self = shared_from_this();
    network_.at(now() + network_.halfTrip(), [self] { self->synArrives(); });
    network_.at(now() + kConnectTimeout, [self] {
        if (self->status_.connecting && !self->programClosed_)
            self->breakWith(sck::kTimedOut);
    });
}

void VirtualTcpConnection::synArrives() {
    if (programClosed_ || !host_ || !host_->up())
        return;
    std::unique_ptr<TcpDevice> device = host_->makeDevice(port_);
    if (device) {
        accept(std::move(device));
        return;
    }
    auto self = shared_from_this();
    network_.at(now() + network_.halfTrip(), [self] { self->breakWith(sck::kConnectionRefused); });
}

void VirtualTcpConnection::accept(std::unique_ptr<TcpDevice> device) {
    device_ = std::move(device);
    deviceOpen_ = true;
    pace_.restart(now());
    auto self = shared_from_this();
    host_->adopt(self);
    network_.at(now() + network_.halfTrip(), [self] {
        if (self->programGone())
            return;
        self->status_.connecting = false;
        self->status_.connected = true;
    });
    device_->onConnect(*this);
    fillDeviceBuffer();
}

void VirtualTcpConnection::programSend(const std::string& bytes) {
    if (programGone())
        return;
    queued_ += bytes;
    fillDeviceBuffer();
}

// Moves queued bytes into the device's buffer as far as it has room; each
// byte's acknowledgement reaches the program half a round trip later.
void VirtualTcpConnection::fillDeviceBuffer() {
    if (queued_.empty() || cut_ || !device_)
        return;
    if (deviceClosed_) {
        answerDataWithReset();
        return;
    }
    if (!deviceOpen_)
        return;
    long room =
        std::max(0L, static_cast<long>(device_->receiveBuffer) - static_cast<long>(buffer_.size()));
    long moved = std::min(room, static_cast<long>(queued_.size()));
    if (moved == 0)
        return;
    if (buffer_.empty())
        bufferedAt_ = now();
    buffer_.append(queued_, 0, static_cast<size_t>(moved));
    queued_.erase(0, static_cast<size_t>(moved));
    inFlight_ += moved;
    auto self = shared_from_this();
    network_.at(now() + network_.halfTrip(), [self, moved] { self->inFlight_ -= moved; });
}

// Data reaching a device that has closed is answered with a reset, as a
// closed socket's stack does; the bytes are never acknowledged.
void VirtualTcpConnection::answerDataWithReset() {
    if (resetSent_)
        return;
    resetSent_ = true;
    auto self = shared_from_this();
    network_.at(now() + network_.roundTrip, [self] { self->breakWith(sck::kConnectionReset); });
}

void VirtualTcpConnection::breakWith(int error) {
    if (programClosed_ || status_.error != 0)
        return;
    status_.error = error;
    status_.connecting = false;
    status_.connected = false;
}

void VirtualTcpConnection::programClose() {
    if (programClosed_)
        return;
    programClosed_ = true;
    queued_.clear();
    received_.clear();
    if (!deviceListens())
        return;
    auto self = shared_from_this();
    network_.at(now() + network_.halfTrip(), [self] {
        if (self->deviceListens())
            self->device_->onProgramClosed();
    });
}

Micros VirtualTcpConnection::readDue() const {
    if (!deviceListens() || buffer_.empty() || !device_->reading || device_->readLimit() == 0)
        return kNever;
    return pace_.readyAt(bufferedAt_, static_cast<long>(buffer_.size()),
                         device_->readBytesPerSecond);
}

long VirtualTcpConnection::nextReadSize(Micros now) {
    long size = static_cast<long>(buffer_.size());
    long allowed = pace_.allowance(now, device_->readBytesPerSecond);
    if (allowed >= 0)
        size = std::min(size, allowed);
    long limit = device_->readLimit();
    if (limit >= 0)
        size = std::min(size, limit);
    return size;
}

// The device reads what its pace allows; the room it makes lets more of the
// program's bytes in.
void VirtualTcpConnection::read(Micros now) {
    long size = nextReadSize(now);
    bufferedAt_ = now;
    if (size <= 0)
        return;
    std::string bytes = buffer_.substr(0, static_cast<size_t>(size));
    buffer_.erase(0, static_cast<size_t>(size));
    pace_.take(size);
    auto keepAlive = shared_from_this();
    device_->onReceive(bytes);
    fillDeviceBuffer();
}

void VirtualTcpConnection::deviceSend(const std::string& bytes) {
    if (!deviceListens())
        return;
    auto self = shared_from_this();
    network_.at(now() + network_.halfTrip(), [self, bytes] {
        if (!self->programGone())
            self->received_ += bytes;
    });
}

void VirtualTcpConnection::deviceClose() {
    if (!deviceListens())
        return;
    deviceOpen_ = false;
    deviceClosed_ = true;
    buffer_.clear();
    auto self = shared_from_this();
    network_.at(now() + network_.halfTrip(), [self] {
        if (!self->programGone())
            self->status_.peerClosed = true;
    });
    fillDeviceBuffer();
}

void VirtualTcpConnection::deviceReset() {
    if (!deviceListens())
        return;
    deviceOpen_ = false;
    buffer_.clear();
    auto self = shared_from_this();
    network_.at(now() + network_.halfTrip(), [self] { self->breakWith(sck::kConnectionReset); });
}

void VirtualTcpConnection::deviceAfter(Micros delay, std::function<void()> action) {
    auto self = shared_from_this();
    network_.at(now() + std::max<Micros>(0, delay), [self, action = std::move(action)] {
        if (self->deviceListens())
            action();
    });
}

}  // namespace fc
