// A serial port asks for low latency when it opens and gives back what was
// there when it closes: the driver's flag, and a USB adapter's latency timer
// at 1 ms. A pty takes neither; it works as before and the opener gives one
// note for the log. The timer is shown on a folder standing for sysfs, with
// the file where the kernel keeps an adapter's timer.
#include <fcntl.h>
#include <linux/serial.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/environment.h"
#include "platform/linux/real_pump.h"
#include "platform/linux/termios_port.h"
#include "platform/serial_line.h"
#include "support/pump_until.h"
#include "support/scenario_rig.h"

namespace fc {
namespace {

namespace fs = std::filesystem;

// A safety net against a hung test, not a speed requirement.
constexpr int kPatienceMs = 5000;
constexpr Integer kCom = 7;

// A pseudo-terminal pair whose slave is COM7 for the life of the object.
class ComPty {
  public:
    ComPty() {
        master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0)
            return;
        if (const char* name = ptsname(master_))
            slave_ = name;
        setenv("FIRMCAST_COM7", slave_.c_str(), 1);
    }
    ~ComPty() {
        unsetenv("FIRMCAST_COM7");
        if (master_ >= 0)
            close(master_);
    }
    bool ok() const { return !slave_.empty(); }
    const std::string& slave() const { return slave_; }
    // The slave's device numbers, as sysfs names a character device's node.
    std::string numbers() const {
        struct stat st {};
        stat(slave_.c_str(), &st);
        return std::to_string(major(st.st_rdev)) + ":" + std::to_string(minor(st.st_rdev));
    }
    std::string take() {
        std::string got;
        char buffer[256];
        ssize_t n;
        while ((n = read(master_, buffer, sizeof buffer)) > 0) got.append(buffer, n);
        return got;
    }
    bool send(const std::string& bytes) {
        return write(master_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    }

  private:
    int master_ = -1;
    std::string slave_;
};

std::string contentOf(const fs::path& file) {
    std::ifstream in(file);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

// Writes `text` into `file`, making its folders.
void put(const fs::path& file, const std::string& text) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << text;
}

class PortLowLatency : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!pty.ok())
            GTEST_SKIP() << "no pseudo-terminal available: " << std::strerror(errno);
    }

    // Opens COM7 on `line` and passes a byte each way.
    void openAndTalk(SerialLine& line) {
        line.setCommPort(kCom);
        line.setSettings("57600,e,7,1");
        ASSERT_NO_THROW(line.setPortOpen(true));
        line.output("H");
        std::string got;
        ASSERT_TRUE(pumpUntil(
            pump,
            [&] {
                got += pty.take();
                return !got.empty();
            },
            kPatienceMs));
        EXPECT_EQ(got, "H");
        ASSERT_TRUE(pty.send("\x06"));
        ASSERT_TRUE(pumpUntil(
            pump, [&] { return line.inBufferCount() == 1; }, kPatienceMs));
        EXPECT_EQ(line.input(), "\x06");
    }

    ComPty pty;
    RealPump pump;
    test::TempFolder sysfs;
    std::vector<std::string> notes;
};

TEST_F(PortLowLatency, APtyOpensAsBeforeAndTheNoteIsGivenOnce) {
    TermiosPortOpener opener;  // the machine's own sysfs
    opener.setNotice([this](const std::string& text) { notes.push_back(text); });
    SerialLine line(pump, opener);
    openAndTalk(line);
    line.setPortOpen(false);
    openAndTalk(line);
    line.setPortOpen(false);
    ASSERT_EQ(notes.size(), 1u) << "one note for the device, however often it opens";
    EXPECT_NE(notes[0].find(pty.slave()), std::string::npos) << notes[0];
    EXPECT_NE(notes[0].find("without low latency"), std::string::npos) << notes[0];
}

TEST_F(PortLowLatency, TheAdaptersTimerIsOneMillisecondWhileOpenAndPutBackOnClose) {
    fs::path timer = sysfs.path() / "dev" / "char" / pty.numbers() / "device" / "latency_timer";
    put(timer, "16\n");
    TermiosPortOpener opener(sysfs.path().string());
    opener.setNotice([this](const std::string& text) { notes.push_back(text); });
    SerialLine line(pump, opener);
    openAndTalk(line);
    EXPECT_EQ(contentOf(timer), "1\n");
    line.setPortOpen(false);
    EXPECT_EQ(contentOf(timer), "16\n");
    // The pty still refuses the driver's flag, and only that is noted.
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(notes[0].find("latency timer"), std::string::npos) << notes[0];
}

TEST_F(PortLowLatency, TheTimerIsFoundByTheTtysNameWhenItsNumbersHaveNoNode) {
    std::string name = fs::path(pty.slave()).filename().string();
    fs::path timer = sysfs.path() / "class" / "tty" / name / "device" / "latency_timer";
    put(timer, "16\n");
    TermiosPortOpener opener(sysfs.path().string());
    SerialLine line(pump, opener);
    openAndTalk(line);
    EXPECT_EQ(contentOf(timer), "1\n");
    line.setPortOpen(false);
    EXPECT_EQ(contentOf(timer), "16\n");
}

TEST_F(PortLowLatency, ATimerAlreadyAtOneMillisecondIsLeftAsItIs) {
    fs::path timer = sysfs.path() / "dev" / "char" / pty.numbers() / "device" / "latency_timer";
    put(timer, "1\n");
    TermiosPortOpener opener(sysfs.path().string());
    SerialLine line(pump, opener);
    openAndTalk(line);
    line.setPortOpen(false);
    EXPECT_EQ(contentOf(timer), "1\n");
}

TEST_F(PortLowLatency, ATimerThatHoldsNoNumberIsNotedAndLeftAlone) {
    fs::path timer = sysfs.path() / "dev" / "char" / pty.numbers() / "device" / "latency_timer";
    put(timer, "fast\n");
    TermiosPortOpener opener(sysfs.path().string());
    opener.setNotice([this](const std::string& text) { notes.push_back(text); });
    SerialLine line(pump, opener);
    openAndTalk(line);
    line.setPortOpen(false);
    EXPECT_EQ(contentOf(timer), "fast\n");
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_NE(notes[0].find(timer.string()), std::string::npos) << notes[0];
}

// A real serial port takes the driver's flag while it is open and has it
// cleared again after; an adapter with a timer has it at 1 ms meanwhile.
// Only with a device the machine's owner names: a serial port may be a
// console or in use.
TEST(PortLowLatencyOnAUart, TheDriversFlagAndTheTimerWhileOpenAndAfter) {
    std::string device = environmentVariable("FIRMCAST_TEST_UART");
    if (device.empty())
        GTEST_SKIP() << "no UART to test: set FIRMCAST_TEST_UART to a serial device";
    int probe = open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    ASSERT_GE(probe, 0) << device << ": " << std::strerror(errno);
    serial_struct before{};
    bool hasFlag = ioctl(probe, TIOCGSERIAL, &before) == 0;
    if (!hasFlag) {
        close(probe);
        GTEST_SKIP() << device << " has no serial flags to test: " << std::strerror(errno);
    }
    // A first opening shows where the adapter's timer is, if it has one, and
    // leaves it as it was.
    std::string timer;
    {
        TermiosPort port(device);
        timer = port.latencyTimer();
    }
    std::string timerBefore = timer.empty() ? "" : contentOf(timer);
    {
        TermiosPort port(device);
        serial_struct open{};
        ASSERT_EQ(ioctl(port.wakeFd(), TIOCGSERIAL, &open), 0);
        EXPECT_NE(open.flags & ASYNC_LOW_LATENCY, 0) << port.lowLatencyRefused();
        if (!timer.empty()) {
            EXPECT_EQ(contentOf(timer), "1\n") << port.lowLatencyRefused();
        }
    }
    if (!timer.empty()) {
        EXPECT_EQ(contentOf(timer), timerBefore);
    }
    serial_struct after{};
    ASSERT_EQ(ioctl(probe, TIOCGSERIAL, &after), 0);
    EXPECT_EQ(after.flags & ASYNC_LOW_LATENCY, before.flags & ASYNC_LOW_LATENCY);
    close(probe);
}

}  // namespace
}  // namespace fc
