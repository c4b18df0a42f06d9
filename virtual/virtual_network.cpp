#include "virtual/virtual_network.h"

#include <algorithm>

#include "platform/pump.h"
#include "virtual/virtual_host.h"
#include "virtual/virtual_tcp_connection.h"
#include "virtual/virtual_tcp_transport.h"
#include "virtual/virtual_udp_transport.h"
#include "virtual/virtual_pump.h"

namespace fc {

namespace {

bool knownOption(std::int32_t level, std::int32_t option) {
    if (level == sockopt::kSolSocket)
        return option == sockopt::kSoRcvbuf || option == sockopt::kSoSndbuf ||
               option == sockopt::kSoDontlinger;
    return level == sockopt::kIpprotoTcp && option == sockopt::kTcpNodelay;
}

}  // namespace

VirtualNetwork::VirtualNetwork(Pump& pump) : pump_(pump) {
    pump_.add(*this);
}

VirtualNetwork::~VirtualNetwork() {
    pump_.remove(*this);
}

VirtualHost& VirtualNetwork::addHost(const Ipv4& ip, const Mac& mac) {
    if (VirtualHost* existing = host(ip))
        return *existing;
    hosts_.push_back(std::make_unique<VirtualHost>(*this, ip, mac));
    return *hosts_.back();
}

VirtualHost* VirtualNetwork::host(const Ipv4& ip) {
    for (const auto& h : hosts_) {
        if (h->ip() == ip)
            return h.get();
    }
    return nullptr;
}

long VirtualNetwork::echoRequests(const Ipv4& ip) const {
    auto found = echoRequests_.find(ip);
    return found == echoRequests_.end() ? 0 : found->second;
}

std::unique_ptr<TcpTransport> VirtualNetwork::newTcpTransport() {
    return std::make_unique<VirtualTcpTransport>(*this);
}

std::unique_ptr<UdpTransport> VirtualNetwork::newUdpTransport() {
    return std::make_unique<VirtualUdpTransport>(*this);
}

std::int32_t VirtualNetwork::setsockopt(int handle, std::int32_t level, std::int32_t option,
                                        std::int32_t value) {
    optionCalls_.push_back(OptionCall{handle, level, option, value});
    if (refuseOptions_ || liveHandles_.count(handle) == 0 || !knownOption(level, option))
        return -1;
    return 0;
}

NetResult VirtualNetwork::readNeighbours(std::vector<NeighbourRow>& rows) {
    rows = table_;
    return NetResult::Done;
}

NetResult VirtualNetwork::deleteNeighbour(const NeighbourRow& row) {
    if (!mayDeleteNeighbours)
        return NetResult::NotPermitted;
    auto found = std::find_if(table_.begin(), table_.end(), [&](const NeighbourRow& r) {
        return r.interfaceIndex == row.interfaceIndex && r.ip == row.ip;
    });
    if (found == table_.end())
        return NetResult::Failed;
    table_.erase(found);
    ++deletions_;
    return NetResult::Done;
}

// Blocks as the echo call does: the world goes on, the program's events wait.
NetResult VirtualNetwork::echo(const Ipv4& address, int timeoutMs, bool& answered) {
    answered = false;
    if (!mayEcho)
        return NetResult::NotPermitted;
    ++echoRequests_[address];
    VirtualHost* target = host(address);
    if (target && target->up()) {
        learn(*target);
        answered = true;
        waitMicros(roundTrip);
    } else {
        waitMicros(Micros(std::max(0, timeoutMs)) * 1000);
    }
    return NetResult::Done;
}

// A virtual pump moves to the exact microsecond; another pump sleeps whole
// milliseconds, never less than asked.
void VirtualNetwork::waitMicros(Micros delay) {
    if (auto* virtualPump = dynamic_cast<VirtualPump*>(&pump_)) {
        virtualPump->advanceTo(virtualPump->nowMicros() + delay);
        return;
    }
    pump_.sleep(static_cast<int>((delay + 999) / 1000));
}

void VirtualNetwork::learn(const VirtualHost& host) {
    auto found = std::find_if(table_.begin(), table_.end(), [&](const NeighbourRow& r) {
        return r.interfaceIndex == static_cast<std::uint32_t>(interfaceIndex) && r.ip == host.ip();
    });
    if (found == table_.end()) {
        table_.emplace_back();
        found = table_.end() - 1;
    }
    found->interfaceIndex = static_cast<std::uint32_t>(interfaceIndex);
    found->ip = host.ip();
    found->physicalLength = 6;
    found->physical = {};
    std::copy(host.mac().begin(), host.mac().end(), found->physical.begin());
    found->type = kNeighbourDynamic;
}

int VirtualNetwork::openHandle() {
    int handle = nextHandle_++;
    liveHandles_.insert(handle);
    return handle;
}

void VirtualNetwork::closeHandle(int handle) {
    liveHandles_.erase(handle);
}

int VirtualNetwork::freeUdpPort() {
    while (udpPortTaken(nextUdpPort_)) ++nextUdpPort_;
    return nextUdpPort_++;
}

void VirtualNetwork::bindUdp(int port, VirtualUdpTransport& transport) {
    udpPorts_[port] = &transport;
}

void VirtualNetwork::unbindUdp(int port, const VirtualUdpTransport& transport) {
    auto found = udpPorts_.find(port);
    if (found != udpPorts_.end() && found->second == &transport)
        udpPorts_.erase(found);
}

// Looked up on arrival: the endpoint may have closed on the way.
void VirtualNetwork::sendToPc(int toPort, const Datagram& datagram) {
    at(now() + halfTrip(), [this, toPort, datagram] {
        auto found = udpPorts_.find(toPort);
        if (found != udpPorts_.end())
            found->second->deliver(datagram);
    });
}

Micros VirtualNetwork::now() const {
    return eventTime_ >= 0 ? eventTime_ : pump_.nowMicros();
}

void VirtualNetwork::at(Micros when, std::function<void()> action) {
    events_.emplace(when, std::move(action));
}

Micros VirtualNetwork::nextDue() const {
    Micros next = events_.empty() ? kNever : events_.begin()->first;
    for (const auto& h : hosts_) {
        for (const auto& connection : h->connections())
            next = std::min(next, connection->readDue());
    }
    return next;
}

// Runs everything due by `now` in time order: packets arriving, and the
// devices' reads, each of which may start more.
void VirtualNetwork::runDue(Micros now) {
    struct ClearEventTime {
        Micros& time;
        ~ClearEventTime() { time = -1; }
    } clear{eventTime_};
    Micros floor = pump_.nowMicros();
    for (;;) {
        Micros next = nextDue();
        if (next > now)
            break;
        eventTime_ = std::max(next, floor);
        floor = eventTime_;
        runNext(next);
    }
}

// An arriving packet before a read due at the same moment.
void VirtualNetwork::runNext(Micros due) {
    if (!events_.empty() && events_.begin()->first == due) {
        std::function<void()> action = std::move(events_.begin()->second);
        events_.erase(events_.begin());
        action();
        return;
    }
    for (const auto& h : hosts_) {
        for (const auto& connection : h->connections()) {
            if (connection->readDue() == due) {
                auto keep = connection;
                keep->read(eventTime_);
                return;
            }
        }
    }
}

}  // namespace fc
