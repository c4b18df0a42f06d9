// One machine on the simulated LAN: a scale with its IP and MAC address, the
// TCP ports it listens on (each making a device for every connection it
// accepts) and the UDP ports it answers on. It can be switched off and on, and
// can change its MAC address, as a scale that is reset or reflashed does.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/tcp_transport.h"
#include "platform/udp_transport.h"

namespace fc {

class TcpDevice;
class VirtualNetwork;
class VirtualTcpConnection;

class VirtualHost {
  public:
    using Mac = std::array<std::uint8_t, 6>;
    using DeviceFactory = std::function<std::unique_ptr<TcpDevice>()>;
    using UdpHandler = std::function<void(const Datagram&)>;

    VirtualHost(VirtualNetwork& network, const Ipv4& ip, const Mac& mac);
    ~VirtualHost();
    VirtualHost(const VirtualHost&) = delete;
    VirtualHost& operator=(const VirtualHost&) = delete;

    const Ipv4& ip() const { return ip_; }
    const Mac& mac() const { return mac_; }
    void setMac(const Mac& mac) { mac_ = mac; }

    // A host that is off answers nothing, and its open connections are dead
    // for good: switched on again, it has forgotten them.
    bool up() const { return up_; }
    void setUp(bool up);

    // Accepts connections on `port`, each served by a new device.
    void listen(int port, DeviceFactory factory);
    void stopListening(int port);
    bool listening(int port) const { return listeners_.count(port) > 0; }

    // Datagrams the PC sends to `port` (an empty handler stops taking them).
    void onUdp(int port, UdpHandler handler);
    // A datagram from this host's `fromPort` to the PC's `toPort`; lost when
    // the host is off.
    void sendUdp(int fromPort, int toPort, const std::string& bytes);

    // The devices of the connections accepted so far, oldest first; they live
    // as long as the host.
    std::vector<TcpDevice*> devices() const;

    // For the network's own parts.
    std::unique_ptr<TcpDevice> makeDevice(int port) const;
    void adopt(std::shared_ptr<VirtualTcpConnection> connection);
    const std::vector<std::shared_ptr<VirtualTcpConnection>>& connections() const {
        return connections_;
    }
    void receiveUdp(int port, const Datagram& datagram);

  private:
    VirtualNetwork& network_;
    Ipv4 ip_;
    Mac mac_;
    bool up_ = true;
    std::map<int, DeviceFactory> listeners_;
    std::map<int, UdpHandler> udpHandlers_;
    std::vector<std::shared_ptr<VirtualTcpConnection>> connections_;
};

}  // namespace fc
