#include "sim/host/interface_mac.h"

#include <net/if.h>
#include <net/if_arp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace fc {

bool setInterfaceMac(const std::string& interfaceName, const std::array<std::uint8_t, 6>& mac,
                     std::string& error) {
    if (interfaceName.size() >= IFNAMSIZ) {
        error = "interface name too long";
        return false;
    }
    int fd = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (fd < 0) {
        error = std::strerror(errno);
        return false;
    }
    ifreq request{};
    std::memcpy(request.ifr_name, interfaceName.c_str(), interfaceName.size());
    request.ifr_hwaddr.sa_family = ARPHRD_ETHER;
    std::memcpy(request.ifr_hwaddr.sa_data, mac.data(), mac.size());
    bool done = ::ioctl(fd, SIOCSIFHWADDR, &request) == 0;
    if (!done)
        error = std::strerror(errno);
    ::close(fd);
    return done;
}

}  // namespace fc
