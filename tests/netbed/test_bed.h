// The test bed a netbed test runs in, as run_netbed_tests.sh describes it in
// the environment, and the commands that change it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/network.h"

namespace fc::netbed {

using Mac = std::array<std::uint8_t, 6>;

struct BedScale {
    std::string ns;  // the scale's network namespace
    Ipv4 ip{};
    Mac mac{};
};

struct TestBed {
    std::string loader;  // the namespace the tests run in
    std::vector<BedScale> scales;
};

// The bed of the environment; nullopt with the reason when there is none.
std::optional<TestBed> currentBed(std::string& whyNot);

// The name of the loader's interface on the bed's LAN.
inline constexpr const char* kLanInterface = "br0";
// The scale's interface inside its namespace.
inline constexpr const char* kScaleInterface = "eth0";

std::string text(const Ipv4& ip);
std::string text(const Mac& mac);
Mac macOf(const NeighbourRow& row);

// Runs a shell command; true when it exits with 0. Its output goes to the
// test's output.
bool run(const std::string& command);

}  // namespace fc::netbed
