#include "platform/tcp_socket.h"

#include "platform/ipv4_text.h"
#include "platform/network.h"
#include "platform/pump.h"
#include "platform/runtime_error.h"
#include "platform/socket_errors.h"
#include "platform/socket_state.h"

namespace fc {

namespace {
// How often a connection in progress is looked at.
constexpr Micros kPollEvery = 1000;
// How often the acknowledgement of a send is looked at: a scale acknowledges
// within a fraction of a millisecond, and the next message waits for it.
constexpr Micros kPollAcknowledgement = 100;

bool sameStatus(const TcpStatus& a, const TcpStatus& b) {
    return a.connecting == b.connecting && a.connected == b.connected &&
           a.peerClosed == b.peerClosed && a.error == b.error;
}
}  // namespace

TcpSocket::TcpSocket(Pump& pump, Network& network) : pump_(pump), network_(network) {}

TcpSocket::~TcpSocket() {
    pump_.remove(*this);
}

void TcpSocket::setRemotePort(Long port) {
    if (port < 0 || port > 65535)
        throw RuntimeError(sck::kInvalidArg, sck::description(sck::kInvalidArg));
    remotePort_ = port;
}

void TcpSocket::connect() {
    if (state_ != sck::kClosed)
        throw RuntimeError(sck::kInvalidOp, sck::description(sck::kInvalidOp));
    transport_ = network_.newTcpTransport();
    seen_ = TcpStatus{};
    announced_ = 0;
    sendPending_ = false;
    pendingError_ = 0;
    state_ = sck::kConnecting;
    lastRun_ = pump_.nowMicros();
    pump_.add(*this);
    std::optional<Ipv4> address = parseDottedIpv4(remoteHost_);
    int error = address ? transport_->startConnect(*address, remotePort_) : sck::kHostNotFound;
    // The failure is told by the event, as every failure of a connection is.
    if (error != 0)
        pendingError_ = error;
}

void TcpSocket::close() {
    if (transport_)
        transport_->close();
    transport_.reset();
    pump_.remove(*this);
    state_ = sck::kClosed;
    sendPending_ = false;
    pendingError_ = 0;
    announced_ = 0;
}

Long TcpSocket::socketHandle() const {
    return transport_ && state_ != sck::kClosed ? transport_->handle() : -1;
}

void TcpSocket::sendData(const std::string& data) {
    if (state_ != sck::kConnected || !transport_)
        throw RuntimeError(sck::kBadState, sck::description(sck::kBadState));
    transport_->send(data);
    sendPending_ = true;
}

std::string TcpSocket::getData() {
    if (!transport_)
        return {};
    announced_ = 0;
    return transport_->receive();
}

Long TcpSocket::bytesReceived() const {
    return transport_ ? static_cast<Long>(transport_->available()) : 0;
}

bool TcpSocket::hasNews() const {
    return pendingError_ != 0 || !sameStatus(transport_->status(), seen_) ||
           transport_->available() > announced_;
}

Micros TcpSocket::nextDue() const {
    // An ended connection has nothing more to tell.
    if (!transport_ || state_ == sck::kClosed)
        return kNever;
    if (hasNews())
        return kDueNow;
    if (sendPending_)
        return lastRun_ + kPollAcknowledgement;
    if (state_ == sck::kConnecting)
        return lastRun_ + kPollEvery;
    return kNever;
}

int TcpSocket::wakeFd() const {
    return transport_ && state_ != sck::kClosed ? transport_->wakeFd() : -1;
}

void TcpSocket::runDue(Micros now) {
    lastRun_ = now;
    if (!transport_)
        return;
    if (pendingError_ != 0) {
        fail(pendingError_);
        return;
    }
    transport_->service();
    if (state_ == sck::kConnecting)
        followConnecting();
    else if (state_ == sck::kConnected)
        followConnected();
}

void TcpSocket::followConnecting() {
    seen_ = transport_->status();
    if (seen_.error != 0) {
        fail(seen_.error);
    } else if (seen_.connected) {
        state_ = sck::kConnected;
        if (onConnect)
            onConnect();
        // The peer may have spoken, or closed, in the same instant.
        if (transport_ && state_ == sck::kConnected)
            followConnected();
    }
}

// Data first, then the completion of sends, then the end of the connection,
// in the order they happened on the wire.
void TcpSocket::followConnected() {
    long available = transport_->available();
    if (available > announced_) {
        announced_ = available;
        if (onDataArrival)
            onDataArrival(static_cast<Long>(available));
        if (!transport_)
            return;  // the handler closed the socket
    }
    if (sendPending_ && transport_->unacknowledged() == 0) {
        sendPending_ = false;
        if (onSendComplete)
            onSendComplete();
        if (!transport_)
            return;
    }
    seen_ = transport_->status();
    if (seen_.error != 0) {
        fail(seen_.error);
    } else if (seen_.peerClosed) {
        end();
        if (onClose)
            onClose();
    }
}

void TcpSocket::fail(int number) {
    end();
    if (onError)
        onError(static_cast<Integer>(number), sck::description(number));
}

// The connection is over: State 0, nothing more to follow; the transport
// stays for what it received.
void TcpSocket::end() {
    pendingError_ = 0;
    state_ = sck::kClosed;
    sendPending_ = false;
    if (transport_)
        seen_ = transport_->status();
    pump_.remove(*this);
}

}  // namespace fc
