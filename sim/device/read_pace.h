// The pace at which a simulated device reads its receive buffer: a token
// bucket on the host's clock. A pace of 0 reads whatever is there at once.
// The bucket holds 10 ms of the pace (at least one byte), so that reads come
// in small slices and the average is the pace.
#pragma once

#include "platform/event_source.h"

namespace fc {

class ReadPace {
  public:
    // Starts a full bucket at `now`, for a new connection.
    void restart(Micros now);
    // How many bytes may be read at `now` at `bytesPerSecond`; -1 for no limit.
    long allowance(Micros now, double bytesPerSecond);
    // Takes `bytes` read at the allowance just given.
    void take(long bytes);
    // When `wanted` bytes (at most a bucketful) may be read, `from` at the
    // earliest.
    Micros readyAt(Micros from, long wanted, double bytesPerSecond) const;

  private:
    static double capacity(double bytesPerSecond);
    void refill(Micros now, double bytesPerSecond);

    double tokens_ = 0;
    Micros filledAt_ = 0;
    bool full_ = true;
};

}  // namespace fc
