// A screen's UDP socket control: Bind, RemoteHost, RemotePort, SendData,
// GetData, Close, State, and the event DataArrival, raised from the event
// pump once for each datagram. State is 0 until the socket is bound, by Bind
// or by the first SendData, and 1 (open) after. One character is one byte.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "platform/event_source.h"
#include "platform/udp_transport.h"
#include "platform/vb_types.h"

namespace fc {

class Pump;
class Network;

class UdpSocket : public EventSource {
  public:
    UdpSocket(Pump& pump, Network& network);
    ~UdpSocket() override;
    UdpSocket(const UdpSocket&) = delete;
    UdpSocket& operator=(const UdpSocket&) = delete;

    const std::string& remoteHost() const { return remoteHost_; }
    void setRemoteHost(const std::string& host) { remoteHost_ = host; }
    Long remotePort() const { return remotePort_; }
    // A port outside 0..65535 is refused with error 40018.
    void setRemotePort(Long port);

    // Binds to a local port (0: any). Only from State 0, else error 40020; a
    // port in use is error 10048.
    void bind(Long localPort);
    Long localPort() const;
    // Sends one datagram to RemoteHost:RemotePort, binding first if needed. A
    // host that is not a dotted address is error 11001.
    void sendData(const std::string& data);
    // The oldest datagram that arrived and was not read; empty when none.
    std::string getData();
    void close();
    Integer state() const { return state_; }

    std::function<void(Long bytesTotal)> onDataArrival;

    // EventSource: arrivals wake it; it also looks every millisecond while
    // bound, for transports that have no descriptor to wake the pump.
    Micros nextDue() const override;
    void runDue(Micros now) override;
    int wakeFd() const override;

  private:
    void open_(Long localPort);

    Pump& pump_;
    Network& network_;
    std::string remoteHost_;
    Long remotePort_ = 0;
    Integer state_ = 0;
    std::unique_ptr<UdpTransport> transport_;
    std::deque<std::string> arrived_;
    Micros lastRun_ = 0;
};

}  // namespace fc
