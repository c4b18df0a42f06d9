#include "sim/device/wire_direction.h"

#include <cmath>

namespace fc {

namespace {
// Microseconds from a run's start to the end of its n-th character, rounded up
// so that a character is never heard before its last bit. The small margin
// absorbs the floating-point error of an exact multiple.
Micros runEnd(long n, int bits, int baud, double slowFactor) {
    double exact = static_cast<double>(n) * bits * 1e6 * slowFactor / baud;
    return static_cast<Micros>(std::ceil(exact - 1e-6));
}
}  // namespace

void WireDirection::push(const std::string& bytes) {
    for (char c : bytes) queue_.push_back(static_cast<Byte>(c));
}

void WireDirection::startIfIdle(Micros at, const LineSettings& settings, double slowFactor) {
    if (!onWire_)
        start(at, settings, slowFactor);
}

WireDirection::Character WireDirection::finish(const LineSettings& settings, double slowFactor) {
    Character done = current_;
    onWire_ = false;
    start(done.end, settings, slowFactor);
    return done;
}

void WireDirection::start(Micros at, const LineSettings& settings, double slowFactor) {
    if (queue_.empty())
        return;
    int bits = settings.bitsPerCharacter();
    bool sameRun = runCount_ > 0 && at == current_.end && bits == runBits_ &&
                   settings.baud == runBaud_ && slowFactor == runSlow_;
    if (!sameRun) {
        runStart_ = at;
        runCount_ = 0;
        runBits_ = bits;
        runBaud_ = settings.baud;
        runSlow_ = slowFactor;
    }
    ++runCount_;
    current_ = Character{queue_.front(), settings,
                         runStart_ + runEnd(runCount_, bits, settings.baud, slowFactor)};
    queue_.pop_front();
    onWire_ = true;
}

}  // namespace fc
