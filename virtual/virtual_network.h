// The simulated network of the virtual clock: the PC's LAN card with its
// address table, and the hosts on the LAN (scales), each with its MAC, its
// TCP listeners and its UDP ports. Time on the wire is a settable round trip;
// everything else (a device's reading pace, its receive buffer) belongs to
// the devices. The network goes on while the program sleeps, as a real one
// does.
//
// What the program sees, as on a real LAN:
// - a connection to a host that is up and listening is made after one round
//   trip; to one that is up and not listening it is refused (10061) after one
//   round trip; to no host, or a host that is off, it times out (10060) after
//   21 s;
// - sent bytes go into the device's receive buffer as far as there is room,
//   and each byte is acknowledged half a round trip after it went in; so a
//   device that stops reading leaves bytes unacknowledged for ever;
// - a host switched off answers nothing more: no echo, no address, no
//   acknowledgement, no reset;
// - the program's close drops what has not reached the device's buffer, and
//   the device hears of it half a round trip later;
// - a device that closes drops what it has not read, and bytes that reach it
//   afterwards are answered with a reset (10054), as a closed socket's stack
//   answers them.
//
// The network must outlive the transports it made.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

#include "platform/event_source.h"
#include "platform/network.h"
#include "virtual/virtual_host.h"

namespace fc {

class Pump;
class VirtualUdpTransport;

class VirtualNetwork : public Network, public EventSource {
  public:
    using Mac = std::array<std::uint8_t, 6>;

    explicit VirtualNetwork(Pump& pump);
    ~VirtualNetwork() override;
    VirtualNetwork(const VirtualNetwork&) = delete;
    VirtualNetwork& operator=(const VirtualNetwork&) = delete;

    // The hosts on the LAN. Adding an address twice gives the host already
    // there.
    VirtualHost& addHost(const Ipv4& ip, const Mac& mac);
    VirtualHost* host(const Ipv4& ip);

    // The time a packet takes there and back.
    Micros roundTrip = 200;
    // The PC's own address, the source of its datagrams.
    Ipv4 address{192, 168, 1, 10};
    // The PC's LAN card, as the address table names it.
    int interfaceIndex = 2;
    // What the program is allowed (false: NotPermitted).
    bool mayDeleteNeighbours = true;
    bool mayEcho = true;

    // Every option call, in order.
    struct OptionCall {
        int handle;
        std::int32_t level;
        std::int32_t option;
        std::int32_t value;
        bool operator==(const OptionCall&) const = default;
    };
    const std::vector<OptionCall>& optionCalls() const { return optionCalls_; }
    // Makes every option call fail.
    void refuseOptions(bool refuse) { refuseOptions_ = refuse; }

    // The PC's address table; tests may add rows of their own.
    std::vector<NeighbourRow>& table() { return table_; }
    // Rows the program has deleted from the table so far.
    long neighbourDeletions() const { return deletions_; }
    // Echo requests sent to `ip` so far.
    long echoRequests(const Ipv4& ip) const;

    // Network
    std::unique_ptr<TcpTransport> newTcpTransport() override;
    std::unique_ptr<UdpTransport> newUdpTransport() override;
    std::int32_t setsockopt(int handle, std::int32_t level, std::int32_t option,
                            std::int32_t value) override;
    NetResult readNeighbours(std::vector<NeighbourRow>& rows) override;
    NetResult deleteNeighbour(const NeighbourRow& row) override;
    NetResult echo(const Ipv4& address, int timeoutMs, bool& answered) override;

    // EventSource: packets on their way and the devices' reading.
    Micros nextDue() const override;
    void runDue(Micros now) override;
    bool runsWhileAsleep() const override { return true; }

    // For the network's own parts (hosts, connections, transports).
    Micros now() const;
    Micros halfTrip() const { return roundTrip / 2; }
    void at(Micros when, std::function<void()> action);
    // The address table learns `host`'s row, as after an answered ARP request.
    void learn(const VirtualHost& host);
    int openHandle();
    void closeHandle(int handle);
    // The PC's UDP ports.
    bool udpPortTaken(int port) const { return udpPorts_.count(port) > 0; }
    int freeUdpPort();
    void bindUdp(int port, VirtualUdpTransport& transport);
    void unbindUdp(int port, const VirtualUdpTransport& transport);
    // A datagram from a host that reaches the PC's port `toPort` after half a
    // round trip, if something is bound there then.
    void sendToPc(int toPort, const Datagram& datagram);

  private:
    void waitMicros(Micros delay);
    void runNext(Micros now);

    Pump& pump_;
    std::vector<std::unique_ptr<VirtualHost>> hosts_;
    long deletions_ = 0;
    std::multimap<Micros, std::function<void()>> events_;
    std::vector<OptionCall> optionCalls_;
    bool refuseOptions_ = false;
    std::vector<NeighbourRow> table_;
    std::map<Ipv4, long> echoRequests_;
    std::set<int> liveHandles_;
    int nextHandle_ = 1;
    std::map<int, VirtualUdpTransport*> udpPorts_;
    int nextUdpPort_ = 49152;
    // The time of the event being run, so that what it starts is timed from
    // the moment it happened; -1 between events.
    Micros eventTime_ = -1;
};

}  // namespace fc
