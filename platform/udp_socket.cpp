#include "platform/udp_socket.h"

#include "platform/ipv4_text.h"
#include "platform/network.h"
#include "platform/pump.h"
#include "platform/runtime_error.h"
#include "platform/socket_errors.h"
#include "platform/socket_state.h"

namespace fc {

namespace {
constexpr Micros kPollEvery = 1000;

[[noreturn]] void raise(int number) {
    throw RuntimeError(number, sck::description(number));
}
}  // namespace

UdpSocket::UdpSocket(Pump& pump, Network& network) : pump_(pump), network_(network) {}

UdpSocket::~UdpSocket() {
    pump_.remove(*this);
}

void UdpSocket::setRemotePort(Long port) {
    if (port < 0 || port > 65535)
        raise(sck::kInvalidArg);
    remotePort_ = port;
}

void UdpSocket::open_(Long localPort) {
    std::unique_ptr<UdpTransport> transport = network_.newUdpTransport();
    int error = transport->bind(static_cast<int>(localPort));
    if (error != 0)
        raise(error);
    transport_ = std::move(transport);
    state_ = sck::kOpen;
    lastRun_ = pump_.nowMicros();
    pump_.add(*this);
}

void UdpSocket::bind(Long localPort) {
    if (state_ != sck::kClosed)
        raise(sck::kInvalidOp);
    if (localPort < 0 || localPort > 65535)
        raise(sck::kInvalidArg);
    open_(localPort);
}

Long UdpSocket::localPort() const {
    return transport_ ? transport_->localPort() : 0;
}

void UdpSocket::sendData(const std::string& data) {
    std::optional<Ipv4> address = parseDottedIpv4(remoteHost_);
    if (!address)
        raise(sck::kHostNotFound);
    if (state_ == sck::kClosed)
        open_(0);
    int error = transport_->sendTo(*address, static_cast<int>(remotePort_), data);
    if (error != 0)
        raise(error);
}

std::string UdpSocket::getData() {
    if (arrived_.empty())
        return {};
    std::string datagram = std::move(arrived_.front());
    arrived_.pop_front();
    return datagram;
}

void UdpSocket::close() {
    if (transport_)
        transport_->close();
    transport_.reset();
    arrived_.clear();
    pump_.remove(*this);
    state_ = sck::kClosed;
}

Micros UdpSocket::nextDue() const {
    return transport_ ? lastRun_ + kPollEvery : kNever;
}

int UdpSocket::wakeFd() const {
    return transport_ ? transport_->wakeFd() : -1;
}

void UdpSocket::runDue(Micros now) {
    lastRun_ = now;
    Datagram datagram;
    while (transport_ && transport_->receive(datagram)) {
        Long size = static_cast<Long>(datagram.bytes.size());
        arrived_.push_back(std::move(datagram.bytes));
        if (onDataArrival)
            onDataArrival(size);
    }
}

}  // namespace fc
