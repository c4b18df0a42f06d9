// The simulator program's serial-mode options and its log of frames.
#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "sim/banked_device.h"
#include "sim/device/device_link.h"
#include "sim/numbered_scale.h"
#include "sim/sim_options.h"

namespace fc {
namespace {

bool parse(std::vector<std::string> words, SimOptions& out, std::string& error) {
    words.insert(words.begin(), "firmcast-sim");
    std::vector<char*> argv;
    for (auto& w : words) argv.push_back(w.data());
    return parseSimOptions(static_cast<int>(argv.size()), argv.data(), out, error);
}

// A link whose clock stands where the test puts it; what the device sends
// and schedules goes nowhere.
class StillLink : public DeviceLink {
  public:
    void deviceSend(const std::string&) override {}
    void deviceAfter(Micros, std::function<void()>) override {}
    Micros now() const override { return at; }
    void detachDevice() override {}
    Micros at = 0;
};

void hear(SerialDevice& device, const std::string& bytes) {
    for (char c : bytes) device.onReceive(static_cast<Byte>(c));
}

TEST(SimOptionsSerial, TheBankTimeIsTwoHundredMillisecondsUnlessGiven) {
    SimOptions o;
    std::string error;
    ASSERT_TRUE(parse({"--device", "banked"}, o, error)) << error;
    EXPECT_EQ(o.bankMs, 200);
    ASSERT_TRUE(parse({"--device", "banked", "--bank-ms", "0"}, o, error)) << error;
    EXPECT_EQ(o.bankMs, 0);
}

TEST(SimOptionsSerial, ANegativeBankTimeIsRefused) {
    SimOptions o;
    std::string error;
    EXPECT_FALSE(parse({"--bank-ms", "-1"}, o, error));
    EXPECT_FALSE(error.empty());
}

TEST(SimOptionsSerial, TheLogGivesEachFrameItsTimeToTheMicrosecond) {
    NumberedScale scale;
    StillLink link;
    scale.plugInto(&link);
    link.at = 1'234'567;
    hear(scale, "H0002:00000001FF");
    link.at = 1'240'005;
    hear(scale, "H0003:00000001FF");
    std::ostringstream log;
    EXPECT_EQ(logNewFrames(scale, 0, log), 2u);
    EXPECT_EQ(log.str(), "1234.567 ms H2 :00000001FF\n1240.005 ms H3 :00000001FF\n");
    scale.plugInto(nullptr);
}

TEST(SimOptionsSerial, TheLogOfABankedDeviceShowsControlBytesInHex) {
    BankedDevice device;
    StillLink link;
    device.plugInto(&link);
    link.at = 7'000;
    hear(device, "\x15");
    std::ostringstream log;
    EXPECT_EQ(logNewFrames(device, 0, log), 1u);
    EXPECT_EQ(log.str(), "7.000 ms #0 <15>\n");
    device.plugInto(nullptr);
}

}  // namespace
}  // namespace fc
