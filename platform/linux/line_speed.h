// Line speeds of a terminal device, any value rather than only the ones with
// a B constant: the speed list offers 14400 and 28800, which termios has no
// name for. Kept apart from the termios code because the kernel's termios2
// header cannot share a translation unit with <termios.h>.
#pragma once

namespace fc {

// Sets input and output speed to `baud`; false (errno set) when the driver refuses.
bool setLineSpeed(int fd, int baud);

// The output speed the driver reports, which a UART may have rounded to what
// its clock can divide; -1 (errno set) on failure.
int lineSpeed(int fd);

}  // namespace fc
