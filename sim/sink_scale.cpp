#include "sim/sink_scale.h"

#include <algorithm>
#include <ostream>

namespace fc {

void SinkScale::onConnect(TcpDeviceLink& link) {
    TcpDevice::onConnect(link);
    ++connections_;
    programClosed_ = false;
    note(Event::Kind::Connected);
}

void SinkScale::onReceive(const std::string& bytes) {
    received_ += static_cast<long>(bytes.size());
    long room = std::max(0L, keepLimit - static_cast<long>(kept_.size()));
    kept_.append(bytes, 0, std::min(bytes.size(), static_cast<size_t>(room)));
    note(Event::Kind::Read, static_cast<long>(bytes.size()));
    actOnFaults();
}

void SinkScale::onProgramClosed() {
    programClosed_ = true;
    note(Event::Kind::ProgramClosed);
}

// Reads stop at the next fault's count, so that it happens after exactly
// that many bytes.
long SinkScale::readLimit() const {
    long limit = -1;
    for (long after :
         {faults.stopReadingAfter, faults.closeAfter, faults.resetAfter, faults.switchOffAfter}) {
        if (after > received_ && (limit < 0 || after - received_ < limit))
            limit = after - received_;
    }
    return limit;
}

bool SinkScale::reached(long after, bool& done) const {
    if (done || after < 0 || received_ < after)
        return false;
    done = true;
    return true;
}

void SinkScale::actOnFaults() {
    if (reached(faults.stopReadingAfter, stopped_)) {
        reading = false;
        note(Event::Kind::StoppedReading);
    }
    if (reached(faults.switchOffAfter, switchedOff_) && switchOff) {
        note(Event::Kind::SwitchedOff);
        switchOff();
    }
    if (reached(faults.resetAfter, reset_)) {
        note(Event::Kind::Reset);
        resetConnection();
    }
    if (reached(faults.closeAfter, closed_)) {
        note(Event::Kind::Closed);
        closeConnection();
    }
}

void SinkScale::note(Event::Kind kind, long bytes) {
    events_.push_back(Event{kind, now(), bytes, received_});
}

namespace {
const char* nameOf(SinkScale::Event::Kind kind) {
    using Kind = SinkScale::Event::Kind;
    switch (kind) {
        case Kind::Connected:
            return "connected";
        case Kind::Read:
            return "read";
        case Kind::ProgramClosed:
            return "program closed";
        case Kind::StoppedReading:
            return "stopped reading";
        case Kind::Closed:
            return "closed";
        case Kind::Reset:
            return "reset";
        case Kind::SwitchedOff:
            return "switched off";
    }
    return "?";
}
}  // namespace

size_t logNewSinkEvents(const SinkScale& sink, size_t alreadyLogged, std::ostream& out) {
    const auto& events = sink.events();
    for (size_t i = alreadyLogged; i < events.size(); ++i) {
        const SinkScale::Event& e = events[i];
        out << e.at / 1000 << " ms " << nameOf(e.kind);
        if (e.kind == SinkScale::Event::Kind::Read)
            out << " " << e.bytes;
        out << " total " << e.total << "\n";
    }
    if (events.size() > alreadyLogged)
        out.flush();
    return events.size();
}

}  // namespace fc
