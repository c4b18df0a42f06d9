#include "sim/visor_device.h"

#include <algorithm>

#include "platform/pump.h"

namespace fc {

VisorSerial::VisorSerial(const VisorBootLoader::Config& config, const LineSettings& settings)
    : SerialDevice(settings),
      loader_(
          config, [this](const std::string& bytes) { send(bytes); },
          [this](Micros delay, std::function<void()> action) { after(delay, std::move(action)); },
          [this] { return now(); }) {}

void VisorSerial::onReceive(Byte byte) {
    loader_.receive(std::string(1, static_cast<char>(byte)));
}

void VisorSerial::onDtrChanged(bool on) {
    dtrChanges_.push_back(DtrChange{now(), on});
}

VisorUdpBridge::VisorUdpBridge(Pump& pump, SendDatagram send, const VisorBootLoader::Config& config)
    : pump_(pump),
      send_(std::move(send)),
      loader_(
          config, [this](const std::string& bytes) { out(bytes); },
          [this](Micros delay, std::function<void()> action) {
              const Micros at = (eventTime_ >= 0 ? eventTime_ : pump_.nowMicros()) + delay;
              actions_.emplace(at, std::move(action));
          },
          [this] { return eventTime_ >= 0 ? eventTime_ : pump_.nowMicros(); }) {
    pump_.add(*this);
}

VisorUdpBridge::~VisorUdpBridge() {
    pump_.remove(*this);
}

void VisorUdpBridge::datagram(const std::string& bytes) {
    loader_.receive(bytes);
}

// A dump's answer is the long one: it may be cut in pieces on the way.
void VisorUdpBridge::out(const std::string& bytes) {
    const bool isDump = bytes.size() > 64;
    const int pieces = isDump ? std::max(1, faults.splitDump) : 1;
    const std::size_t size = (bytes.size() + pieces - 1) / pieces;
    for (std::size_t at = 0; at < bytes.size(); at += size) sendOne(bytes.substr(at, size));
}

void VisorUdpBridge::sendOne(const std::string& bytes) {
    const long number = sent_++;
    if (number != faults.loseDatagram)
        send_(bytes);
}

Micros VisorUdpBridge::nextDue() const {
    return actions_.empty() ? kNever : actions_.begin()->first;
}

void VisorUdpBridge::runDue(Micros now) {
    while (!actions_.empty() && actions_.begin()->first <= now) {
        auto first = actions_.begin();
        eventTime_ = first->first;
        std::function<void()> action = std::move(first->second);
        actions_.erase(first);
        action();
    }
    eventTime_ = -1;
}

}  // namespace fc
