#include "platform/linux/line_speed.h"

#include <asm/termbits.h>
#include <sys/ioctl.h>

namespace fc {

namespace {

// The speeds termios names. They are set by name so that any other tool
// looking at the line sees an ordinary speed.
struct NamedSpeed {
    int baud;
    tcflag_t code;
};
constexpr NamedSpeed kNamedSpeeds[] = {
    {110, B110},       {300, B300},       {600, B600},       {1200, B1200},     {2400, B2400},
    {4800, B4800},     {9600, B9600},     {19200, B19200},   {38400, B38400},   {57600, B57600},
    {115200, B115200}, {230400, B230400}, {460800, B460800}, {921600, B921600},
};

// BOTHER: the speed is the number in c_ispeed/c_ospeed, not a name.
tcflag_t speedCode(int baud) {
    for (const NamedSpeed& s : kNamedSpeeds) {
        if (s.baud == baud)
            return s.code;
    }
    return BOTHER;
}

}  // namespace

bool setLineSpeed(int fd, int baud) {
    termios2 t{};
    if (ioctl(fd, TCGETS2, &t) != 0)
        return false;
    tcflag_t code = speedCode(baud);
    t.c_cflag &= ~(CBAUD | (CBAUD << IBSHIFT));
    t.c_cflag |= code | (code << IBSHIFT);
    t.c_ispeed = static_cast<speed_t>(baud);
    t.c_ospeed = static_cast<speed_t>(baud);
    return ioctl(fd, TCSETS2, &t) == 0;
}

int lineSpeed(int fd) {
    termios2 t{};
    if (ioctl(fd, TCGETS2, &t) != 0)
        return -1;
    return static_cast<int>(t.c_ospeed);
}

}  // namespace fc
