// A device on a real pty hears the program at the line's speed when the host
// keeps the line's time.
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sim/host/pty_device_host.h"
#include "platform/linux/real_pump.h"
#include "sim/device/serial_device.h"
#include "support/pump_until.h"

namespace fc {
namespace {

// A safety net against a hung test, not a speed requirement.
constexpr int kPatienceMs = 5000;

class HearingDevice : public SerialDevice {
  public:
    explicit HearingDevice(Pump& pump) : SerialDevice(LineSettings{9600, 'N', 8, 1}), pump_(pump) {}
    void onReceive(Byte) override { heardAt.push_back(pump_.nowMicros()); }
    std::vector<Micros> heardAt;

  private:
    Pump& pump_;
};

// The program's end of the pty, at 9600 baud.
int openAt9600(const std::string& tty) {
    int fd = open(tty.c_str(), O_RDWR | O_NOCTTY);
    termios t{};
    tcgetattr(fd, &t);
    cfmakeraw(&t);
    cfsetispeed(&t, B9600);
    cfsetospeed(&t, B9600);
    tcsetattr(fd, TCSANOW, &t);
    return fd;
}

struct Heard {
    Micros written = 0;
    std::vector<Micros> at;
};

Heard sendAndHear(int characters) {
    RealPump pump;
    HearingDevice device(pump);
    PtyDeviceHost host(pump, device);
    host.setLineTime(true);
    int fd = openAt9600(host.ttyPath());
    Heard heard;
    heard.written = pump.nowMicros();
    std::string bytes(static_cast<size_t>(characters), 'H');
    EXPECT_EQ(write(fd, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    EXPECT_TRUE(pumpUntil(
        pump, [&] { return device.heardAt.size() == static_cast<size_t>(characters); },
        kPatienceMs));
    close(fd);
    heard.at = device.heardAt;
    return heard;
}

TEST(PtyLineTime, EachCharacterIsHeardOnlyWhenItsLastBitHasArrived) {
    const int characters = 96;                 // 100 ms at 9600 baud, 10 bits a character
    const Micros character = 1'000'000 / 960;  // 1041 us
    Heard heard = sendAndHear(characters);
    ASSERT_EQ(heard.at.size(), static_cast<size_t>(characters));
    // Character i can be heard no sooner than i + 1 character times after
    // the write.
    for (size_t i = 0; i < heard.at.size(); ++i) {
        EXPECT_GE(heard.at[i] - heard.written, static_cast<Micros>(i + 1) * character)
            << "character " << i;
    }
}

}  // namespace
}  // namespace fc
