#include "platform/linux/socket_options.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include "platform/network.h"

namespace fc {

namespace {

std::int32_t setInt(int fd, int level, int option, std::int32_t value) {
    int v = value;
    return ::setsockopt(fd, level, option, &v, sizeof v) == 0 ? 0 : -1;
}

std::int32_t lingerOff(int fd) {
    linger l{};
    l.l_onoff = 0;
    return ::setsockopt(fd, SOL_SOCKET, SO_LINGER, &l, sizeof l) == 0 ? 0 : -1;
}

std::int32_t socketLevelOption(int fd, std::int32_t option, std::int32_t value) {
    switch (option) {
        case sockopt::kSoRcvbuf:
            return setInt(fd, SOL_SOCKET, SO_RCVBUF, value);
        case sockopt::kSoSndbuf:
            return setInt(fd, SOL_SOCKET, SO_SNDBUF, value);
        case sockopt::kSoDontlinger:
            return lingerOff(fd);
        default:
            return -1;
    }
}

std::int32_t tcpLevelOption(int fd, std::int32_t option, std::int32_t value) {
    if (option == sockopt::kTcpNodelay)
        return setInt(fd, IPPROTO_TCP, TCP_NODELAY, value);
    return -1;
}

}  // namespace

std::int32_t setLoaderSocketOption(int fd, std::int32_t level, std::int32_t option,
                                   std::int32_t value) {
    switch (level) {
        case sockopt::kSolSocket:
            return socketLevelOption(fd, option, value);
        case sockopt::kIpprotoTcp:
            return tcpLevelOption(fd, option, value);
        default:
            return -1;
    }
}

}  // namespace fc
