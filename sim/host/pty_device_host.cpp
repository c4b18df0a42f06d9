#include "sim/host/pty_device_host.h"

#include <fcntl.h>
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
    if (device.link())
        device.link()->detachDevice();
    device.plugInto(this);
    pump_.add(*this);
}

PtyDeviceHost::~PtyDeviceHost() {
    pump_.remove(*this);
    if (device_)
        device_->plugInto(nullptr);
    if (keepOpen_ >= 0)
        close(keepOpen_);
    if (master_ >= 0)
        close(master_);
}

void PtyDeviceHost::detachDevice() {
    if (device_)
        device_->plugInto(nullptr);
    device_ = nullptr;
}

Micros PtyDeviceHost::now() const {
    return pump_.nowMicros();
}

void PtyDeviceHost::deviceSend(const std::string& bytes) {
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
    return actions_.empty() ? kNever : actions_.begin()->first;
}

void PtyDeviceHost::runDue(Micros now) {
    readFromProgram();
    runDueActions(now);
}

void PtyDeviceHost::runDueActions(Micros now) {
    while (!actions_.empty() && actions_.begin()->first <= now) {
        std::function<void()> action = std::move(actions_.begin()->second);
        actions_.erase(actions_.begin());
        action();
    }
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

void PtyDeviceHost::hear(Byte byte) {
    if (!lineTime_) {
        device_->onReceive(byte);
        return;
    }
    const LineSettings& line = device_->settings();
    Micros character = static_cast<Micros>(1e6 * line.bitsPerCharacter() / line.baud);
    heardUntil_ = std::max(heardUntil_, now()) + character;
    actions_.emplace(heardUntil_, [this, byte] {
        if (device_ && !hungUp_)
            device_->onReceive(byte);
    });
}

}  // namespace fc
