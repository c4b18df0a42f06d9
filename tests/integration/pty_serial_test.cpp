// The serial control on real pseudo-terminals: the program's end is the pty's
// slave, opened through FIRMCAST_COM<n>; the test plays the device on the
// master. These take real time, kept short.
#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <functional>
#include <optional>
#include <string>

#include "platform/environment.h"
#include "platform/linux/line_speed.h"
#include "platform/linux/real_pump.h"
#include "platform/linux/termios_port.h"
#include "platform/runtime_error.h"
#include "platform/serial_line.h"
#include "support/byte_values.h"
#include "support/pump_until.h"

namespace fc {
namespace {

// A safety net against a hung test, not a speed requirement.
constexpr int kPatienceMs = 5000;

void expectError(int number, const std::function<void()>& operation) {
    try {
        operation();
        ADD_FAILURE() << "no run-time error; expected " << number;
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), number) << e.what();
    }
}

// Sets (or, given nothing, unsets) an environment variable for the life of
// the object.
class ScopedEnv {
  public:
    ScopedEnv(std::string name, const std::optional<std::string>& value) : name_(std::move(name)) {
        had_ = hasEnvironmentVariable(name_);
        old_ = environmentVariable(name_);
        if (value) {
            setenv(name_.c_str(), value->c_str(), 1);
        } else {
            unsetenv(name_.c_str());
        }
    }
    ~ScopedEnv() {
        if (had_) {
            setenv(name_.c_str(), old_.c_str(), 1);
        } else {
            unsetenv(name_.c_str());
        }
    }

  private:
    std::string name_;
    std::string old_;
    bool had_ = false;
};

// A pseudo-terminal pair; the test reads and writes the master directly.
class Pty {
  public:
    Pty() {
        master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0)
            return;
        const char* name = ptsname(master_);
        if (name)
            slave_ = name;
    }
    ~Pty() { hangUp(); }
    // The far end goes away.
    void hangUp() {
        if (master_ >= 0)
            close(master_);
        master_ = -1;
    }
    bool ok() const { return !slave_.empty(); }
    int master() const { return master_; }
    const std::string& slave() const { return slave_; }

    // Writes all of `bytes`, waiting for room as needed.
    bool send(const std::string& bytes) {
        std::size_t done = 0;
        while (done < bytes.size()) {
            ssize_t n = write(master_, bytes.data() + done, bytes.size() - done);
            if (n > 0) {
                done += static_cast<std::size_t>(n);
            } else if (n < 0 && (errno == EAGAIN || errno == EINTR)) {
                pollfd p{master_, POLLOUT, 0};
                if (poll(&p, 1, kPatienceMs) <= 0)
                    return false;
            } else {
                return false;
            }
        }
        return true;
    }

    // Whatever has arrived, without waiting.
    std::string take() {
        std::string got;
        char buffer[4096];
        ssize_t n;
        while ((n = read(master_, buffer, sizeof buffer)) > 0) got.append(buffer, n);
        return got;
    }

  private:
    int master_ = -1;
    std::string slave_;
};

class PtySerial : public ::testing::Test {
  protected:
    static constexpr Integer kCom = 7;

    void SetUp() override {
        if (!pty.ok())
            GTEST_SKIP() << "no pseudo-terminal available: " << std::strerror(errno);
        env.emplace("FIRMCAST_COM7", pty.slave());
    }

    void openAt(const std::string& settings) {
        line.setCommPort(kCom);
        line.setSettings(settings);
        line.setPortOpen(true);
    }

    // Pumps events, as a load's wait does, until `done` holds; false when it
    // did not within the patience.
    bool pumpUntil(const std::function<bool()>& done) {
        return fc::pumpUntil(pump, done, kPatienceMs);
    }

    // What the device end receives, `count` bytes, pumping meanwhile.
    std::string deviceReceives(std::size_t count) {
        std::string got;
        pumpUntil([&] {
            got += pty.take();
            return got.size() >= count;
        });
        return got;
    }

    void roundTripAllByteValues() {
        line.output(allByteValues());
        EXPECT_EQ(deviceReceives(256), allByteValues());
        EXPECT_TRUE(pumpUntil([&] { return line.outBufferCount() == 0; }));

        ASSERT_TRUE(pty.send(allByteValues()));
        EXPECT_TRUE(pumpUntil([&] { return line.inBufferCount() >= 256; }));
        EXPECT_EQ(line.inBufferCount(), 256);
        EXPECT_EQ(line.input(), allByteValues());
        EXPECT_EQ(line.inBufferCount(), 0);
        EXPECT_EQ(line.input(), "");
    }

    Pty pty;
    std::optional<ScopedEnv> env;
    RealPump pump;
    TermiosPortOpener opener;
    SerialLine line{pump, opener};
};

TEST_F(PtySerial, EveryByteValuePassesBothWaysAt57600SevenEvenOne) {
    openAt("57600,e,7,1");
    roundTripAllByteValues();
}

TEST_F(PtySerial, EveryByteValuePassesBothWaysAt19200EightNoneOne) {
    openAt("19200,N,8,1");
    roundTripAllByteValues();
}

TEST_F(PtySerial, ThePortIsRawAtTheSpeedAsked) {
    openAt("19200,N,8,1");
    termios t{};
    // Terminal calls on a master act on its slave: this is the port's state.
    ASSERT_EQ(tcgetattr(pty.master(), &t), 0);
    EXPECT_EQ(cfgetospeed(&t), static_cast<speed_t>(B19200));
    EXPECT_EQ(t.c_iflag & (ISTRIP | INPCK | PARMRK | ICRNL | INLCR | IGNCR | IXON | IXOFF), 0u);
    EXPECT_EQ(t.c_oflag & OPOST, 0u);
    EXPECT_EQ(t.c_lflag & (ICANON | ECHO | ISIG | IEXTEN), 0u);
    EXPECT_EQ(t.c_cflag & CRTSCTS, 0u);
    line.setSettings("57600,e,7,1");
    ASSERT_EQ(tcgetattr(pty.master(), &t), 0);
    EXPECT_EQ(cfgetospeed(&t), static_cast<speed_t>(B57600)) << "new settings not taken at once";
}

// The speed list offers speeds that termios has no name for.
TEST_F(PtySerial, SpeedsWithoutATermiosNameAreTaken) {
    for (const char* settings : {"14400,N,8,1", "28800,e,7,1", "115200,N,8,1"}) {
        SCOPED_TRACE(settings);
        line.setPortOpen(false);
        EXPECT_NO_THROW(openAt(settings));
        LineSettings parsed;
        ASSERT_TRUE(parseLineSettings(settings, parsed));
        EXPECT_EQ(lineSpeed(pty.master()), parsed.baud);
        line.output("ok");
        EXPECT_EQ(deviceReceives(2), "ok");
    }
}

TEST_F(PtySerial, AVanishedDeviceIsError8020) {
    openAt("19200,N,8,1");
    pty.hangUp();
    expectError(8020, [&] { line.inBufferCount(); });
}

// More than the pty's buffers hold: the rest stays queued in the port, and
// a drain wait (polling OutBufferCount while it pumps) brings it out as the
// other end reads.
TEST_F(PtySerial, OutBufferCountHoldsWhatTheOtherEndHasNotTakenYet) {
    openAt("57600,N,8,1");
    std::string big;
    for (int i = 0; i < 200000; ++i) big += static_cast<char>(i * 7);
    line.output(big);
    EXPECT_GT(line.outBufferCount(), 0) << "the pty took 200000 bytes without a reader";
    std::string got;
    EXPECT_TRUE(pumpUntil([&] {
        got += pty.take();
        return line.outBufferCount() == 0 && got.size() >= big.size();
    }));
    EXPECT_EQ(got.size(), big.size());
    EXPECT_TRUE(got == big) << "the bytes arrived changed or out of order";
}

TEST_F(PtySerial, PuttingInBufferCountZeroThrowsAwayWhatArrived) {
    openAt("57600,e,7,1");
    ASSERT_TRUE(pty.send("stale"));
    EXPECT_TRUE(pumpUntil([&] { return line.inBufferCount() >= 5; }));
    line.setInBufferCount(0);
    EXPECT_EQ(line.inBufferCount(), 0);
    ASSERT_TRUE(pty.send("fresh"));
    EXPECT_TRUE(pumpUntil([&] { return line.inBufferCount() >= 5; }));
    EXPECT_EQ(line.input(), "fresh");
}

TEST_F(PtySerial, PortOpenFalseClosesAndTrueOpensAgain) {
    EXPECT_FALSE(line.portOpen());
    openAt("19200,N,8,1");
    EXPECT_TRUE(line.portOpen());
    line.setPortOpen(false);
    EXPECT_FALSE(line.portOpen());
    expectError(8018, [&] { line.output("x"); });
    expectError(8018, [&] { line.inBufferCount(); });
    line.setPortOpen(true);
    EXPECT_TRUE(line.portOpen());
    line.output("again");
    EXPECT_EQ(deviceReceives(5), "again");
}

TEST_F(PtySerial, DtrEnableIsAcceptedOnAPty) {
    line.setDTREnable(true);
    EXPECT_NO_THROW(openAt("57600,e,7,1"));
    EXPECT_NO_THROW(line.setDTREnable(false));
    EXPECT_NO_THROW(line.setDTREnable(true));
    EXPECT_TRUE(line.dtrEnable());
    line.output("ok");
    EXPECT_EQ(deviceReceives(2), "ok");
}

TEST_F(PtySerial, ASecondOpenOfAPortInUseIsError8005) {
    openAt("57600,e,7,1");
    SerialLine other(pump, opener);
    other.setCommPort(kCom);
    expectError(8005, [&] { other.setPortOpen(true); });
    EXPECT_FALSE(other.portOpen());
    line.setPortOpen(false);
    EXPECT_NO_THROW(other.setPortOpen(true));
    EXPECT_TRUE(other.portOpen());
}

TEST_F(PtySerial, AMissingDeviceIsError8002) {
    ScopedEnv missing("FIRMCAST_COM8", "/nonexistent/firmcast-tty");
    line.setCommPort(8);
    expectError(8002, [&] { line.setPortOpen(true); });
    EXPECT_FALSE(line.portOpen());
}

TEST_F(PtySerial, AFileThatIsNotATerminalIsError8002) {
    ScopedEnv notTty("FIRMCAST_COM8", "/dev/null");
    line.setCommPort(8);
    expectError(8002, [&] { line.setPortOpen(true); });
}

TEST_F(PtySerial, APortThatWillNotOpenNamesItsDeviceAndTheSystemsReason) {
    const auto failureOf = [&](Integer com) -> std::optional<PortOpenError> {
        try {
            opener.open(com);
        } catch (const PortOpenError& error) {
            return error;
        }
        return std::nullopt;
    };
    {
        ScopedEnv missing("FIRMCAST_COM8", "/nonexistent/firmcast-tty");
        std::optional<PortOpenError> error = failureOf(8);
        ASSERT_TRUE(error.has_value());
        EXPECT_EQ(error->number(), 8002);
        EXPECT_EQ(error->device(), "/nonexistent/firmcast-tty");
        EXPECT_EQ(error->reason(), "No such file or directory");
    }
    {
        ScopedEnv notTty("FIRMCAST_COM8", "/dev/null");
        std::optional<PortOpenError> error = failureOf(8);
        ASSERT_TRUE(error.has_value());
        EXPECT_EQ(error->number(), 8002);
        EXPECT_EQ(error->reason(), "Inappropriate ioctl for device: not a serial device");
    }
    openAt("57600,e,7,1");
    std::optional<PortOpenError> inUse = failureOf(kCom);
    ASSERT_TRUE(inUse.has_value());
    EXPECT_EQ(inUse->number(), 8005);
    EXPECT_EQ(inUse->device(), pty.slave());
    EXPECT_EQ(inUse->reason(), "Resource temporarily unavailable: another program holds the port");
}

TEST(TermiosPortOpener, ComPortNMapsToFirmcastComNElseTtySNMinus1) {
    ScopedEnv defaultRoot("FIRMCAST_DEV_ROOT", std::nullopt);
    {
        ScopedEnv named("FIRMCAST_COM3", "/dev/pts/42");
        EXPECT_EQ(TermiosPortOpener::deviceName(3), "/dev/pts/42");
    }
    ScopedEnv unset3("FIRMCAST_COM3", std::nullopt);
    ScopedEnv unset1("FIRMCAST_COM1", std::nullopt);
    EXPECT_EQ(TermiosPortOpener::deviceName(3), "/dev/ttyS2");
    EXPECT_EQ(TermiosPortOpener::deviceName(1), "/dev/ttyS0");
}

TEST(TermiosPortOpener, AnUnnamedPortIsLookedForInTheDeviceFolderGiven) {
    ScopedEnv unset2("FIRMCAST_COM2", std::nullopt);
    ScopedEnv root("FIRMCAST_DEV_ROOT", "/tmp/firmcast-dev/");
    EXPECT_EQ(TermiosPortOpener::deviceName(2), "/tmp/firmcast-dev/ttyS1");
}

// A real UART takes 7 data bits, even parity and DTR. Only with a device the
// machine's owner names: a serial port may be a console or in use.
TEST(TermiosPortOnAUart, TakesSevenBitsEvenParityAndDtr) {
    std::string device = environmentVariable("FIRMCAST_TEST_UART");
    if (device.empty())
        GTEST_SKIP() << "no UART to test: set FIRMCAST_TEST_UART to a serial device";
    TermiosPort port(device);
    ASSERT_FALSE(port.isPseudoTerminal()) << device << " is a pty";
    port.apply(LineSettings{57600, 'E', 7, 1});
    termios t{};
    ASSERT_EQ(tcgetattr(port.wakeFd(), &t), 0);
    EXPECT_EQ(t.c_cflag & (CSIZE | PARENB | PARODD), static_cast<tcflag_t>(CS7 | PARENB));
    port.setDtr(true);
    int lines = 0;
    ASSERT_EQ(ioctl(port.wakeFd(), TIOCMGET, &lines), 0);
    EXPECT_NE(lines & TIOCM_DTR, 0);
    port.setDtr(false);
    ASSERT_EQ(ioctl(port.wakeFd(), TIOCMGET, &lines), 0);
    EXPECT_EQ(lines & TIOCM_DTR, 0);
}

}  // namespace
}  // namespace fc
