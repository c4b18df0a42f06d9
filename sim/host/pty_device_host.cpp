#include "sim/host/pty_device_host.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <stdexcept>

#include "platform/pump.h"
#include "sim/device/serial_device.h"

namespace fc {

namespace {

int baudOf(speed_t speed) {
    switch (speed) {
        case B1200:
            return 1200;
        case B2400:
            return 2400;
        case B4800:
            return 4800;
        case B9600:
            return 9600;
        case B19200:
            return 19200;
        case B38400:
            return 38400;
        case B57600:
            return 57600;
        case B115200:
            return 115200;
        default:
            return 0;  // a speed set by other means (14400, 28800): not checked
    }
}

}  // namespace

PtyDeviceHost::PtyDeviceHost(Pump& pump, SerialDevice& device) : pump_(pump), device_(&device) {
    master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) {
        throw std::runtime_error("no pseudo-terminal could be opened");
    }
    ttyPath_ = ptsname(master_);
    // Raw on the device's side too, so that no byte is changed on the way.
    termios raw{};
    if (tcgetattr(master_, &raw) == 0) {
        cfmakeraw(&raw);
        tcsetattr(master_, TCSANOW, &raw);
    }
    keepOpen_ = open(ttyPath_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    // The pump's waits end at the line's deadlines: a timer slack of the
    // kernel's default (50 us) would make every one of them late.
    int slack = prctl(PR_GET_TIMERSLACK, 0, 0, 0, 0);
    if (slack >= 0 && prctl(PR_SET_TIMERSLACK, 1UL, 0, 0, 0) == 0)
        oldTimerSlack_ = slack;
    if (device.link())
        device.link()->detachDevice();
    device.plugInto(this);
    pump_.add(*this);
}

PtyDeviceHost::~PtyDeviceHost() {
    pump_.remove(*this);
    if (device_)
        device_->plugInto(nullptr);
    if (oldTimerSlack_ >= 0)
        prctl(PR_SET_TIMERSLACK, static_cast<unsigned long>(oldTimerSlack_), 0, 0, 0);
    if (keepOpen_ >= 0)
        close(keepOpen_);
    if (master_ >= 0)
        close(master_);
}

void PtyDeviceHost::detachDevice() {
    if (device_)
        device_->plugInto(nullptr);
    device_ = nullptr;
    actions_.clear();  // they are the device's, and it is going
}

Micros PtyDeviceHost::now() const {
    return eventTime_ >= 0 ? eventTime_ : pump_.nowMicros();
}

void PtyDeviceHost::deviceSend(const std::string& bytes) {
    if (hungUp_ || master_ < 0 || !device_)
        return;
    if (!lineTime_)
        return writeToProgram(bytes);
    toProgram_.push(bytes);
    toProgram_.startIfIdle(now(), device_->settings(), slowFactor_);
}

void PtyDeviceHost::writeToProgram(const std::string& bytes) {
    if (hungUp_ || master_ < 0)
        return;
    size_t done = 0;
    while (done < bytes.size()) {
        ssize_t n = write(master_, bytes.data() + done, bytes.size() - done);
        if (n > 0) {
            done += static_cast<size_t>(n);
        } else if (n < 0 && errno != EAGAIN && errno != EINTR) {
            return;  // the program's side is gone
        }
    }
}

void PtyDeviceHost::deviceAfter(Micros delay, std::function<void()> action) {
    actions_.emplace(now() + static_cast<Micros>(static_cast<double>(delay) * slowFactor_),
                     std::move(action));
}

Micros PtyDeviceHost::nextDue() const {
    Micros next = std::min(toDevice_.due(), toProgram_.due());
    if (!actions_.empty())
        next = std::min(next, actions_.begin()->first);
    return next;
}

// Takes in what the program has written, then runs everything due by `now`
// in time order: characters arriving at either end and the device's own
// timed actions, each of which may start more. The device's clock reads each
// event's own time.
void PtyDeviceHost::runDue(Micros now) {
    readFromProgram();
    now = std::max(now, pump_.nowMicros());
    struct ClearEventTime {
        Micros& time;
        ~ClearEventTime() { time = -1; }
    } clear{eventTime_};
    for (;;) {
        Micros toDevice = toDevice_.due();
        Micros toProgram = toProgram_.due();
        Micros next = nextDue();
        if (next > now)
            break;
        eventTime_ = next;
        if (toDevice == next) {
            Byte byte = toDevice_.finish(device_ ? device_->settings() : LineSettings{}, 1.0).value;
            if (device_ && !hungUp_)
                device_->onReceive(byte);
        } else if (toProgram == next) {
            Byte byte =
                toProgram_.finish(device_ ? device_->settings() : LineSettings{}, slowFactor_)
                    .value;
            writeToProgram(std::string(1, static_cast<char>(byte)));
        } else {
            runFirstAction();
        }
    }
}

void PtyDeviceHost::runFirstAction() {
    auto first = actions_.begin();
    std::function<void()> action = std::move(first->second);
    actions_.erase(first);
    action();
}

// The program's tty speed against the device's: what is sent at another
// speed cannot be read, and is lost.
bool PtyDeviceHost::programSettingsMatch() const {
    termios t{};
    if (!device_ || tcgetattr(master_, &t) != 0)
        return true;
    const LineSettings& mine = device_->settings();
    // A pty keeps the speed it is given but always 8 bits without parity,
    // so only the speed can tell a wrong frame apart.
    int baud = baudOf(cfgetospeed(&t));
    return baud == 0 || baud == mine.baud;
}

void PtyDeviceHost::readFromProgram() {
    char buffer[4096];
    for (;;) {
        ssize_t n = read(master_, buffer, sizeof buffer);
        if (n <= 0)
            return;
        if (hungUp_ || !device_ || !programSettingsMatch())
            continue;
        int mask =
            device_->settings().dataBits >= 8 ? 0xFF : (1 << device_->settings().dataBits) - 1;
        for (ssize_t i = 0; i < n && device_; ++i)
            hear(static_cast<Byte>(static_cast<unsigned char>(buffer[i]) & mask));
    }
}

// A character the program has just written. With the line's time it starts
// on the line now when the line is free, else straight after the one before.
void PtyDeviceHost::hear(Byte byte) {
    if (!lineTime_) {
        device_->onReceive(byte);
        return;
    }
    toDevice_.push(std::string(1, static_cast<char>(byte)));
    toDevice_.startIfIdle(pump_.nowMicros(), device_->settings(), 1.0);
}

}  // namespace fc
