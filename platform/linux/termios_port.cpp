#include "platform/linux/termios_port.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "platform/environment.h"
#include "platform/linux/line_speed.h"
#include "platform/linux/serial_devices.h"
#include "platform/runtime_error.h"

namespace fc {

namespace {

// Device numbers of pseudo-terminal slaves: the Unix98 range and the old BSD one.
constexpr unsigned kUnix98SlaveMajorFirst = 136;
constexpr unsigned kUnix98SlaveMajorLast = 143;
constexpr unsigned kBsdSlaveMajor = 3;

// A driver that reports a speed this far from the one asked for did not take it.
constexpr double kSpeedTolerance = 0.03;

constexpr int kDeviceIoError = 57;
constexpr int kErrorReadingCommDevice = 8020;

PortOpenError openError(const std::string& device, int error) {
    bool busy = error == EBUSY || error == EWOULDBLOCK;
    std::string reason = std::strerror(error);
    if (error == EWOULDBLOCK)
        reason += ": another program holds the port";
    else if (error == EBUSY)
        reason += ": another program has the port open";
    else if (error == ENOTTY)
        reason += ": not a serial device";
    return PortOpenError(busy ? err::kPortAlreadyOpen : err::kInvalidPortNumber, device, reason);
}

RuntimeError commStateError() {
    return RuntimeError(err::kCommStateFailed);
}

bool isPseudoTerminalDevice(int fd) {
    struct stat st {};
    if (fstat(fd, &st) != 0 || !S_ISCHR(st.st_mode))
        return false;
    unsigned m = major(st.st_rdev);
    return (m >= kUnix98SlaveMajorFirst && m <= kUnix98SlaveMajorLast) || m == kBsdSlaveMajor;
}

bool characterSize(int dataBits, tcflag_t& out) {
    switch (dataBits) {
        case 5:
            out = CS5;
            return true;
        case 6:
            out = CS6;
            return true;
        case 7:
            out = CS7;
            return true;
        case 8:
            out = CS8;
            return true;
        default:
            return false;
    }
}

// The cflag bits of a parity letter. Mark and space are "stick" parity: with
// CMSPAR the parity bit is always PARODD.
tcflag_t parityFlags(char parity) {
    switch (parity) {
        case 'E':
            return PARENB;
        case 'O':
            return PARENB | PARODD;
        case 'M':
            return PARENB | PARODD | CMSPAR;
        case 'S':
            return PARENB | CMSPAR;
        default:
            return 0;
    }
}

constexpr tcflag_t kFrameBits = CSIZE | PARENB | PARODD | CMSPAR | CSTOPB;

// Opens and claims the device; returns the descriptor.
int openExclusive(const std::string& device) {
    int fd = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        throw openError(device, errno);
    // TIOCEXCL stops other opens, but not a privileged process's; the lock
    // is honoured by every process that claims the port the same way.
    if (flock(fd, LOCK_EX | LOCK_NB) != 0) {
        int error = errno;
        ::close(fd);
        throw openError(device, error);
    }
    termios t{};
    if (tcgetattr(fd, &t) != 0) {  // not a terminal device at all
        int error = errno;
        ::close(fd);
        throw openError(device, error);
    }
    ioctl(fd, TIOCEXCL);
    return fd;
}

}  // namespace

std::string TermiosPortOpener::deviceName(int commPort) {
    std::string named = environmentVariable("FIRMCAST_COM" + std::to_string(commPort));
    if (!named.empty())
        return named;
    return serialDeviceRoot() + "/ttyS" + std::to_string(commPort - 1);
}

TermiosPortOpener::TermiosPortOpener(std::string sysfsRoot) : sysfsRoot_(std::move(sysfsRoot)) {}

std::unique_ptr<SerialPort> TermiosPortOpener::open(int commPort) {
    auto port = std::make_unique<TermiosPort>(deviceName(commPort), sysfsRoot_);
    const std::string& refused = port->lowLatencyRefused();
    if (!refused.empty() && noted_.insert(port->device()).second && notice_) {
        notice_("The port " + port->device() + " works without low latency: " + refused +
                "; received bytes reach the program as the driver hands them on");
    }
    return port;
}

TermiosPort::TermiosPort(const std::string& device, const std::string& sysfsRoot)
    : device_(device) {
    fd_ = openExclusive(device);
    pty_ = isPseudoTerminalDevice(fd_);
    // Raw at once, so that nothing arriving before the settings are applied
    // is echoed or translated; what was received before the open is stale.
    try {
        makeRaw();
    } catch (...) {
        int error = errno;
        ::close(fd_);
        throw PortOpenError(err::kCommStateFailed, device,
                            std::string(std::strerror(error)) + ": the line cannot be made raw");
    }
    tcflush(fd_, TCIFLUSH);
    lowLatency_.ask(fd_, device_, sysfsRoot);
}

TermiosPort::~TermiosPort() {
    // Bytes still queued here are dropped with the port; what the driver
    // already holds it sends on its own.
    lowLatency_.restore(fd_);
    ioctl(fd_, TIOCNXCL);
    ::close(fd_);
}

void TermiosPort::makeRaw() {
    termios t{};
    if (tcgetattr(fd_, &t) != 0)
        throw commStateError();
    t.c_iflag &= ~(IGNBRK | BRKINT | IGNPAR | PARMRK | INPCK | ISTRIP | INLCR | IGNCR | ICRNL |
                   IUCLC | IXON | IXOFF | IXANY | IMAXBEL);
    t.c_oflag &= ~OPOST;
    t.c_lflag &= ~(ECHO | ECHOE | ECHOK | ECHONL | ICANON | ISIG | IEXTEN);
    t.c_cflag &= ~CRTSCTS;
    t.c_cflag |= CLOCAL | CREAD;
    t.c_cc[VMIN] = 1;
    t.c_cc[VTIME] = 0;
    if (tcsetattr(fd_, TCSANOW, &t) != 0)
        throw commStateError();
}

// The frame bits of `settings` as this device can hold them. A pty always
// keeps 8 bits without parity, and asking it for others makes tcsetattr report
// a failure, so there the frame is left at that.
unsigned TermiosPort::frameFlags(const LineSettings& settings) const {
    tcflag_t stop = settings.stopBits == 2 ? CSTOPB : 0;
    if (pty_)
        return CS8 | stop;
    tcflag_t size = 0;
    characterSize(settings.dataBits, size);
    return size | parityFlags(settings.parity) | stop;
}

void TermiosPort::apply(const LineSettings& settings) {
    tcflag_t size = 0;
    if (!characterSize(settings.dataBits, size))
        throw commStateError();
    makeRaw();
    termios t{};
    if (tcgetattr(fd_, &t) != 0)
        throw commStateError();
    t.c_cflag &= ~kFrameBits;
    t.c_cflag |= frameFlags(settings);
    if (tcsetattr(fd_, TCSANOW, &t) != 0)
        throw commStateError();
    if (!setLineSpeed(fd_, settings.baud))
        throw commStateError();
    checkTaken(settings);
}

// tcsetattr succeeds when any part of a change was taken; reading back shows
// whether all of it was.
void TermiosPort::checkTaken(const LineSettings& settings) {
    int speed = lineSpeed(fd_);
    if (speed <= 0 || std::abs(speed - settings.baud) > settings.baud * kSpeedTolerance) {
        throw commStateError();
    }
    termios actual{};
    if (tcgetattr(fd_, &actual) != 0)
        throw commStateError();
    if ((actual.c_cflag & kFrameBits) != frameFlags(settings))
        throw commStateError();
}

void TermiosPort::setDtr(bool on) {
    if (pty_)
        return;  // no modem lines: accepted, without effect
    int dtr = TIOCM_DTR;
    if (ioctl(fd_, on ? TIOCMBIS : TIOCMBIC, &dtr) != 0)
        throw commStateError();
    int lines = 0;
    if (ioctl(fd_, TIOCMGET, &lines) != 0)
        throw commStateError();
    if (((lines & TIOCM_DTR) != 0) != on)
        throw commStateError();
}

void TermiosPort::write(const std::string& bytes) {
    outQueue_ += bytes;
    flushOutput();
}

int TermiosPort::outputPending() {
    int inDriver = 0;
    if (ioctl(fd_, TIOCOUTQ, &inDriver) != 0)
        inDriver = 0;
    return static_cast<int>(outQueue_.size()) + inDriver;
}

int TermiosPort::inputAvailable() {
    int inDriver = 0;
    if (ioctl(fd_, FIONREAD, &inDriver) != 0)
        inDriver = 0;
    return static_cast<int>(received_.size()) + inDriver;
}

std::string TermiosPort::read() {
    receiveInput();
    return std::exchange(received_, {});
}

void TermiosPort::discardInput() {
    received_.clear();
    tcflush(fd_, TCIFLUSH);
}

void TermiosPort::service() {
    flushOutput();
    receiveInput();
}

void TermiosPort::flushOutput() {
    std::size_t sent = 0;
    while (sent < outQueue_.size()) {
        ssize_t n = ::write(fd_, outQueue_.data() + sent, outQueue_.size() - sent);
        if (n > 0) {
            sent += static_cast<std::size_t>(n);
        } else if (n < 0 && errno == EINTR) {
            continue;
        } else if (n < 0 && errno == EAGAIN) {
            break;  // the driver is full; the rest goes at a later service()
        } else {
            outQueue_.erase(0, sent);
            throw RuntimeError(kDeviceIoError);
        }
    }
    outQueue_.erase(0, sent);
}

void TermiosPort::receiveInput() {
    char buffer[4096];
    for (;;) {
        ssize_t n = ::read(fd_, buffer, sizeof buffer);
        if (n > 0) {
            received_.append(buffer, static_cast<std::size_t>(n));
        } else if (n < 0 && errno == EINTR) {
            continue;
        } else if (n < 0 && errno == EAGAIN) {
            return;
        } else {
            // End of file on a terminal is a hang-up: the device has gone.
            throw RuntimeError(kErrorReadingCommDevice);
        }
    }
}

}  // namespace fc
