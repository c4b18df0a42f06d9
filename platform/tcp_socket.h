// A screen's TCP socket control, as a client: RemoteHost and RemotePort,
// Connect, Close, State, SocketHandle, SendData, GetData, and the events
// Connect, DataArrival, SendComplete, Close and Error, raised only from the
// event pump, where the program yields. One character is one byte, every value
// 0..255 passed unchanged.
//
// SendComplete comes when the peer's stack has acknowledged every byte sent,
// not when the bytes have left this machine: with the buffers made small, the
// peer's reading paces the sender.
//
// However a connection ends other than by the program's Close (refused,
// reset, timed out, closed by the peer), the control raises Error (or Close
// for the peer's orderly close) and State is 0 again: the loader sees a lost
// scale as State 0. What arrived before the end stays readable by GetData
// until the next Connect or Close.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/event_source.h"
#include "platform/tcp_transport.h"
#include "platform/vb_types.h"

namespace fc {

class Pump;
class Network;

class TcpSocket : public EventSource {
  public:
    TcpSocket(Pump& pump, Network& network);
    ~TcpSocket() override;
    TcpSocket(const TcpSocket&) = delete;
    TcpSocket& operator=(const TcpSocket&) = delete;

    const std::string& remoteHost() const { return remoteHost_; }
    void setRemoteHost(const std::string& host) { remoteHost_ = host; }
    Long remotePort() const { return remotePort_; }
    // A port outside 0..65535 is refused with error 40018.
    void setRemotePort(Long port);

    // Starts connecting and returns at once (State 6). Only from State 0,
    // else error 40020. A host that is not a dotted address fails in an Error
    // event (11001), as a name that cannot be found does.
    void connect();
    // Ends the connection in any state; State becomes 0 at once.
    void close();
    Integer state() const { return state_; }
    // The socket's handle for the option calls; -1 when it is closed.
    Long socketHandle() const;

    // Only while connected (State 7), else error 40006.
    void sendData(const std::string& data);
    // Everything received so far, removed.
    std::string getData();
    Long bytesReceived() const;

    std::function<void()> onConnect;
    std::function<void(Long bytesTotal)> onDataArrival;
    std::function<void()> onSendComplete;
    std::function<void()> onClose;
    std::function<void(Integer number, const std::string& description)> onError;

    // EventSource: polls a connection in progress every millisecond and an
    // unacknowledged send every 100 us; arrivals wake it at once.
    Micros nextDue() const override;
    void runDue(Micros now) override;
    int wakeFd() const override;

  private:
    bool hasNews() const;
    void followConnecting();
    void followConnected();
    void fail(int number);
    void end();

    Pump& pump_;
    Network& network_;
    std::string remoteHost_;
    Long remotePort_ = 0;
    Integer state_ = 0;
    std::unique_ptr<TcpTransport> transport_;
    TcpStatus seen_;
    long announced_ = 0;
    bool sendPending_ = false;
    int pendingError_ = 0;
    Micros lastRun_ = 0;
};

}  // namespace fc
