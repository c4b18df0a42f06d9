// The fixture of the tests that run on the test bed: it finds the bed (or
// skips the test, saying why) and starts every test from an empty address
// table.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/network.h"
#include "test_bed.h"

namespace fc::netbed {

// Time for an echo that is answered: room for the address resolution and the
// round trip on a loaded machine; the answer ends the wait at once.
inline constexpr int kAnsweredTimeoutMs = 3000;

// The folder of the programs the tests start (FIRMCAST_NETBED_BIN, else the
// build's).
std::string programFolder();

// The words that run firmcast-sim inside `scale`'s namespace, listening on
// TCP port `port`, with `options` after.
std::vector<std::string> simInScale(const BedScale& scale, int port,
                                    const std::vector<std::string>& options);

class BedTest : public ::testing::Test {
  protected:
    void SetUp() override;

    // The whole table; a failed read fails the test and gives no rows.
    std::vector<NeighbourRow> table();
    // The rows of `ip`, on any interface.
    std::vector<NeighbourRow> rowsOf(const Ipv4& ip);
    // Deletes every row the table shows.
    void clearTable();
    // One echo that must be sent; whether it was answered.
    bool echo(const Ipv4& ip, int timeoutMs = kAnsweredTimeoutMs);

    // The index of the loader's interface on the LAN.
    std::uint32_t lanIndex() const;

    TestBed bed;
};

// Sets the loader namespace's net.ipv4.ping_group_range for the life of the
// object, and puts the old value back afterwards.
class PingGroupRange {
  public:
    explicit PingGroupRange(const std::string& range);
    ~PingGroupRange();
    PingGroupRange(const PingGroupRange&) = delete;
    PingGroupRange& operator=(const PingGroupRange&) = delete;

    static constexpr const char* kOpen = "0 2147483647";
    // The first group above the last: nobody may open an ICMP datagram socket.
    static constexpr const char* kClosed = "1 0";

  private:
    std::string old_;
};

// Puts a scale's own MAC back when the test ends, however it ends.
class MacChange {
  public:
    MacChange(const BedScale& scale, const Mac& mac) : scale_(scale) { set(mac); }
    ~MacChange() { set(scale_.mac); }
    MacChange(const MacChange&) = delete;
    MacChange& operator=(const MacChange&) = delete;

  private:
    void set(const Mac& mac) {
        EXPECT_TRUE(run("ip -n " + scale_.ns + " link set dev " + kScaleInterface + " address " +
                        text(mac)));
    }

    BedScale scale_;
};

}  // namespace fc::netbed
