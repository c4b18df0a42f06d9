// One TCP client connection on the machine's sockets: a non-blocking IPv4
// stream socket, driven by service() from the event pump.
//
// Every byte value 0..255 passes unchanged both ways. A connection that has
// failed is closed at once (handle() is -1 from then on); what arrived before
// stays readable, and the bytes that never got through still count as
// unacknowledged, so a failure never looks like a completed send.
#pragma once

#include <chrono>
#include <string>

#include "platform/tcp_transport.h"

namespace fc {

class LinuxTcpTransport : public TcpTransport {
  public:
    // How long the classic client lets a connection attempt run.
    static constexpr std::chrono::milliseconds kClassicConnectLimit{21000};

    // `connectLimit`: an attempt that has not succeeded this long after
    // startConnect fails with sck::kTimedOut.
    explicit LinuxTcpTransport(std::chrono::milliseconds connectLimit = kClassicConnectLimit);
    ~LinuxTcpTransport() override;
    LinuxTcpTransport(const LinuxTcpTransport&) = delete;
    LinuxTcpTransport& operator=(const LinuxTcpTransport&) = delete;

    // sck::kInvalidOp while a socket is open (close() first); sck::kInvalidArg
    // for a port outside 1..65535.
    int startConnect(const Ipv4& address, int port) override;
    int handle() const override { return fd_; }

    // Queues the bytes and, once connected, hands the socket what it takes.
    void send(const std::string& bytes) override;
    // The queue here plus SIOCOUTQ: bytes the peer's stack has not
    // acknowledged, sent or not.
    long unacknowledged() override;

    long available() const override { return static_cast<long>(received_.size()); }
    std::string receive() override;

    void service() override;
    TcpStatus status() const override { return status_; }

    void close() override;

    // The socket while something may still arrive on it; -1 once the peer has
    // closed or the connection has failed, so that a socket left readable for
    // ever (at end of stream) does not keep waking the pump.
    int wakeFd() const override;

  private:
    int beginConnect(const Ipv4& address, int port);
    void finishConnecting();
    void flushQueue();
    void takeArrivals();
    void fail(int number);
    long socketUnacknowledged() const;

    std::chrono::milliseconds connectLimit_;
    std::chrono::steady_clock::time_point connectDeadline_{};
    int fd_ = -1;
    TcpStatus status_;
    std::string queue_;
    std::string received_;
    // The socket's unacknowledged count when a failure closed it.
    long stranded_ = 0;
};

}  // namespace fc
