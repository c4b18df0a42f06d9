#include "sim/standins/korvacom_link.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>

namespace fc::sim {

namespace {

std::string valueOf(const std::vector<std::string>& switches, const std::string& key) {
    for (const std::string& line : switches) {
        if (line.compare(0, key.size(), key) == 0)
            return line.size() > key.size() + 1 ? line.substr(key.size() + 1) : "";
    }
    return "";
}

speed_t speedOf(const std::string& text) {
    switch (std::atoi(text.c_str())) {
        case 115200:
            return B115200;
        case 57600:
            return B57600;
        case 38400:
            return B38400;
        case 9600:
            return B9600;
        case 2400:
            return B2400;
        case 1200:
            return B1200;
        default:
            return B19200;
    }
}

}  // namespace

KorvacomLink::~KorvacomLink() {
    if (fd_ >= 0)
        close(fd_);
}

bool KorvacomLink::open(const std::vector<std::string>& switches, std::string& reason) {
    if (valueOf(switches, "-m") == "1")
        return openTcp(valueOf(switches, "-d"), reason);
    return openSerial(valueOf(switches, "-p"), valueOf(switches, "-v"), reason);
}

// "dd#IP:PORT".
bool KorvacomLink::openTcp(const std::string& address, std::string& reason) {
    std::size_t hash = address.find('#'), colon = address.rfind(':');
    if (hash == std::string::npos || colon == std::string::npos || colon < hash) {
        reason = "no address in the -d switch: " + address;
        return false;
    }
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(static_cast<std::uint16_t>(std::atoi(address.c_str() + colon + 1)));
    if (inet_pton(AF_INET, address.substr(hash + 1, colon - hash - 1).c_str(), &to.sin_addr) != 1) {
        reason = "not an IP address: " + address;
        return false;
    }
    fd_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd_ < 0 || connect(fd_, reinterpret_cast<sockaddr*>(&to), sizeof to) != 0) {
        reason = "cannot connect to " + address + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

bool KorvacomLink::openSerial(const std::string& port, const std::string& speed,
                              std::string& reason) {
    if (port.size() < 4 || port.compare(0, 3, "COM") != 0) {
        reason = "no port in the -p switch: " + port;
        return false;
    }
    int n = std::atoi(port.c_str() + 3);
    const char* named = std::getenv(("FIRMCAST_COM" + std::to_string(n)).c_str());
    std::string device = named && *named ? named : "/dev/ttyS" + std::to_string(n - 1);
    fd_ = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (fd_ < 0) {
        reason = "cannot open " + device + ": " + std::strerror(errno);
        return false;
    }
    termios t{};
    if (tcgetattr(fd_, &t) == 0) {
        cfmakeraw(&t);
        cfsetspeed(&t, speedOf(speed));
        tcsetattr(fd_, TCSANOW, &t);
    }
    return true;
}

std::optional<std::string> KorvacomLink::carry(const std::string& record, int answerMs) {
    if (fd_ < 0)
        return std::nullopt;
    std::string out = record + "\r\n";
    for (std::size_t sent = 0; sent < out.size();) {
        ssize_t n = write(fd_, out.data() + sent, out.size() - sent);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return std::nullopt;
        sent += static_cast<std::size_t>(n);
    }
    if (record.size() < 6 || record.compare(2, 4, "P000") != 0)
        return std::nullopt;
    return readLine(answerMs);
}

std::optional<std::string> KorvacomLink::readLine(int ms) {
    auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    for (;;) {
        std::size_t end = pending_.find('\n');
        if (end != std::string::npos) {
            std::string line = pending_.substr(0, end);
            pending_.erase(0, end + 1);
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            return line;
        }
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
                        until - std::chrono::steady_clock::now())
                        .count();
        if (left <= 0)
            return std::nullopt;
        pollfd p{fd_, POLLIN, 0};
        if (poll(&p, 1, static_cast<int>(left)) <= 0)
            continue;
        char buffer[512];
        ssize_t n = read(fd_, buffer, sizeof buffer);
        if (n <= 0)
            return std::nullopt;
        pending_.append(buffer, static_cast<std::size_t>(n));
    }
}

}  // namespace fc::sim
