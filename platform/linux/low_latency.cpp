#include "platform/linux/low_latency.h"

#include <fcntl.h>
#include <linux/serial.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace fc {

namespace {

// The adapter's timer when it is as short as it goes.
constexpr const char* kShortestTimer = "1";

std::string errorText(int error) {
    return std::generic_category().message(error);
}

bool exists(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0;
}

// The first line of a small file, without its line end; false (errno set)
// when it cannot be read.
bool readValue(const std::string& path, std::string& value) {
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    char buffer[64];
    ssize_t n = ::read(fd, buffer, sizeof buffer - 1);
    int error = errno;
    ::close(fd);
    if (n < 0) {
        errno = error;
        return false;
    }
    value.assign(buffer, static_cast<std::size_t>(n));
    while (!value.empty() && std::isspace(static_cast<unsigned char>(value.back())))
        value.pop_back();
    return true;
}

// Writes `value` and a line end in one write, as the kernel's attribute files
// want it; false (errno set) when it is refused.
bool writeValue(const std::string& path, const std::string& value) {
    int fd = ::open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (fd < 0)
        return false;
    std::string line = value + "\n";
    ssize_t n = ::write(fd, line.data(), line.size());
    int error = errno;
    ::close(fd);
    if (n != static_cast<ssize_t>(line.size())) {
        errno = n < 0 ? error : EIO;
        return false;
    }
    return true;
}

bool isNumber(const std::string& text) {
    if (text.empty())
        return false;
    for (char c : text) {
        if (!std::isdigit(static_cast<unsigned char>(c)))
            return false;
    }
    return true;
}

// The device's name as the tty class knows it: the last part of the path the
// device file resolves to ("/dev/serial/by-id/usb-..." gives "ttyUSB0").
std::string ttyName(const std::string& device) {
    std::string path = device;
    if (char* resolved = ::realpath(device.c_str(), nullptr)) {
        path = resolved;
        std::free(resolved);
    }
    std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// The latency timer of the adapter behind the tty `fd`, or "" when it has none.
std::string timerFile(int fd, const std::string& device, const std::string& sysfsRoot) {
    struct stat st {};
    if (::fstat(fd, &st) == 0 && S_ISCHR(st.st_mode)) {
        std::string node = sysfsRoot + "/dev/char/" + std::to_string(major(st.st_rdev)) + ":" +
                           std::to_string(minor(st.st_rdev));
        if (exists(node + "/device/latency_timer"))
            return node + "/device/latency_timer";
    }
    std::string byName = sysfsRoot + "/class/tty/" + ttyName(device) + "/device/latency_timer";
    return exists(byName) ? byName : "";
}

}  // namespace

void LowLatency::ask(int fd, const std::string& device, const std::string& sysfsRoot) {
    askDriver(fd);
    askTimer(fd, device, sysfsRoot);
}

void LowLatency::askDriver(int fd) {
    serial_struct serial{};
    if (::ioctl(fd, TIOCGSERIAL, &serial) != 0)
        return refuse("its driver does not take the low-latency flag (" + errorText(errno) + ")");
    if (serial.flags & ASYNC_LOW_LATENCY)
        return;  // already so: nothing to give back
    serial.flags |= ASYNC_LOW_LATENCY;
    if (::ioctl(fd, TIOCSSERIAL, &serial) != 0)
        return refuse("its driver refuses the low-latency flag (" + errorText(errno) + ")");
    serial_struct now{};
    if (::ioctl(fd, TIOCGSERIAL, &now) != 0 || !(now.flags & ASYNC_LOW_LATENCY))
        return refuse("its driver does not keep the low-latency flag");
    flagSet_ = true;
}

void LowLatency::askTimer(int fd, const std::string& device, const std::string& sysfsRoot) {
    std::string path = timerFile(fd, device, sysfsRoot);
    if (path.empty())
        return;  // no adapter timer: nothing holds the bytes there
    std::string before;
    if (!readValue(path, before)) {
        return refuse("its adapter's latency timer " + path + " cannot be read (" +
                      errorText(errno) + ")");
    }
    if (!isNumber(before))
        return refuse("its adapter's latency timer " + path + " holds no number");
    timerPath_ = path;
    if (before == kShortestTimer)
        return;
    if (!writeValue(path, kShortestTimer)) {
        return refuse("its adapter's latency timer " + path + " stays at " + before +
                      " ms: it may not be written (" + errorText(errno) + ")");
    }
    timerBefore_ = before;
}

void LowLatency::restore(int fd) {
    // The timer first: a driver that ties the timer to the flag (an FTDI
    // adapter sets 1 ms while the flag is up) settles on the timer's own
    // value once the flag goes.
    if (!timerBefore_.empty())
        writeValue(timerPath_, timerBefore_);
    timerBefore_.clear();
    if (flagSet_) {
        serial_struct serial{};
        if (::ioctl(fd, TIOCGSERIAL, &serial) == 0) {
            serial.flags &= ~ASYNC_LOW_LATENCY;
            ::ioctl(fd, TIOCSSERIAL, &serial);
        }
    }
    flagSet_ = false;
}

void LowLatency::refuse(const std::string& what) {
    if (!refused_.empty())
        refused_ += "; ";
    refused_ += what;
}

}  // namespace fc
