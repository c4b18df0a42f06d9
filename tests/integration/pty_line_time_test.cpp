// A device on a real pty hears the program at the line's speed when the host
// keeps the line's time, its answers reach the program at the line's speed,
// and its own clock reads the line's time.
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "platform/linux/real_pump.h"
#include "sim/device/serial_device.h"
#include "sim/host/pty_device_host.h"
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

// Microseconds of `n` characters of 10 bits at 9600 baud.
double characters(double n) {
    return n * 1e6 * 10 / 9600;
}

// Notes, on its own clock, when it hears each character; answers each one
// with `answer`, and runs an action of its own `actionDelay` after hearing.
class TimedDevice : public SerialDevice {
  public:
    explicit TimedDevice(std::string answer = "", Micros actionDelay = -1)
        : SerialDevice(LineSettings{9600, 'N', 8, 1}),
          answer_(std::move(answer)),
          actionDelay_(actionDelay) {}
    void onReceive(Byte) override {
        Micros at = now();
        heardAt.push_back(at);
        if (!answer_.empty())
            send(answer_);
        if (actionDelay_ >= 0)
            after(actionDelay_, [this] { actedAt.push_back(now()); });
    }
    std::vector<Micros> heardAt;
    std::vector<Micros> actedAt;

  private:
    std::string answer_;
    Micros actionDelay_;
};

TEST(PtyLineTime, TheDevicesClockReadsTheMomentEachCharacterArrived) {
    RealPump pump;
    TimedDevice device;
    PtyDeviceHost host(pump, device);
    host.setLineTime(true);
    int fd = openAt9600(host.ttyPath());
    ASSERT_GE(fd, 0);
    Micros written = pump.nowMicros();
    std::string bytes(20, 'x');
    ASSERT_EQ(write(fd, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    ASSERT_TRUE(pumpUntil(
        pump, [&] { return device.heardAt.size() == bytes.size(); }, kPatienceMs));
    close(fd);
    // Counted from the run's first character, however late the host woke:
    // the device hears them back to back, one character time apart.
    EXPECT_GE(device.heardAt[0] - written, static_cast<Micros>(characters(1)));
    for (size_t i = 1; i < device.heardAt.size(); ++i) {
        EXPECT_NEAR(static_cast<double>(device.heardAt[i] - device.heardAt[0]),
                    characters(static_cast<double>(i)), 1.0)
            << "character " << i;
    }
}

TEST(PtyLineTime, TheDevicesAnswerReachesTheProgramAtTheLinesSpeed) {
    RealPump pump;
    TimedDevice device("ABCD");
    PtyDeviceHost host(pump, device);
    host.setLineTime(true);
    int fd = openAt9600(host.ttyPath());
    ASSERT_GE(fd, 0);
    fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) | O_NONBLOCK);
    Micros written = pump.nowMicros();
    ASSERT_EQ(write(fd, "?", 1), 1);
    std::string got;
    std::vector<Micros> seenAt;
    ASSERT_TRUE(pumpUntil(
        pump,
        [&] {
            char c;
            while (read(fd, &c, 1) == 1) {
                got += c;
                seenAt.push_back(pump.nowMicros());
            }
            return got.size() == 4;
        },
        kPatienceMs));
    close(fd);
    EXPECT_EQ(got, "ABCD");
    // The question takes one character time to be heard, and answer
    // character i reaches the program i + 1 character times after that.
    for (size_t i = 0; i < seenAt.size(); ++i) {
        EXPECT_GE(seenAt[i] - written, static_cast<Micros>(characters(static_cast<double>(i + 2))))
            << "answer character " << i;
    }
}

TEST(PtyLineTime, ADevicesTimedActionRunsOnTheLinesTime) {
    RealPump pump;
    TimedDevice device("", 5000);
    PtyDeviceHost host(pump, device);
    host.setLineTime(true);
    int fd = openAt9600(host.ttyPath());
    ASSERT_GE(fd, 0);
    ASSERT_EQ(write(fd, "??", 2), 2);
    ASSERT_TRUE(pumpUntil(
        pump, [&] { return device.actedAt.size() == 2; }, kPatienceMs));
    close(fd);
    ASSERT_EQ(device.heardAt.size(), 2u);
    EXPECT_EQ(device.actedAt[0], device.heardAt[0] + 5000);
    EXPECT_EQ(device.actedAt[1], device.heardAt[1] + 5000);
}

}  // namespace
}  // namespace fc
