#include "sim/device/read_pace.h"

#include <algorithm>
#include <cmath>

namespace fc {

double ReadPace::capacity(double bytesPerSecond) {
    return std::max(1.0, bytesPerSecond / 100);
}

void ReadPace::restart(Micros now) {
    filledAt_ = now;
    full_ = true;
}

void ReadPace::refill(Micros now, double bytesPerSecond) {
    double cap = capacity(bytesPerSecond);
    if (full_) {
        tokens_ = cap;
        full_ = false;
    } else if (now > filledAt_) {
        tokens_ =
            std::min(cap, tokens_ + static_cast<double>(now - filledAt_) * bytesPerSecond / 1e6);
    }
    filledAt_ = std::max(filledAt_, now);
}

long ReadPace::allowance(Micros now, double bytesPerSecond) {
    if (bytesPerSecond <= 0)
        return -1;
    refill(now, bytesPerSecond);
    // The margin absorbs the rounding of a refill timed to reach a whole byte.
    return static_cast<long>(std::floor(tokens_ + 1e-6));
}

void ReadPace::take(long bytes) {
    tokens_ = std::max(0.0, tokens_ - static_cast<double>(bytes));
}

Micros ReadPace::readyAt(Micros from, long wanted, double bytesPerSecond) const {
    if (bytesPerSecond <= 0 || full_)
        return from;
    double goal = std::min(capacity(bytesPerSecond), static_cast<double>(std::max(1L, wanted)));
    if (tokens_ >= goal)
        return std::max(from, filledAt_);
    double wait = std::ceil((goal - tokens_) * 1e6 / bytesPerSecond);
    return std::max(from, filledAt_ + static_cast<Micros>(wait));
}

}  // namespace fc
