// The serial devices of this machine, where COM n is looked for: the device
// named by FIRMCAST_COM<n>, else ttyS<n-1> in the device folder. The device
// folder is /dev, or FIRMCAST_DEV_ROOT when that is set (a test's own folder
// of stand-ins); the kernel's view of the serial ports (their type) is under
// /sys, or FIRMCAST_SYS_ROOT.
#pragma once

#include <string>
#include <vector>

namespace fc {

// The folder the serial devices are looked for in, without a trailing "/".
std::string serialDeviceRoot();
// The folder of the kernel's objects, for the ports' types.
std::string kernelObjectRoot();

struct SerialDevice {
    std::string path;    // as found: "/dev/ttyUSB0", "/dev/serial/by-id/usb-..."
    std::string target;  // for a name under serial/by-id, the device it stands for
    int defaultCom = 0;  // n when the device is COM n without any setting (ttyS0..ttyS3)
};

// The serial devices under `devRoot`: ttyS*, ttyUSB*, ttyACM* and the names
// under serial/by-id, in that order, each group sorted by number or name. A
// ttyS that the kernel knows to have no UART behind it (its type under
// `sysRoot`/class/tty is 0) is left out; one whose type cannot be read is
// kept.
std::vector<SerialDevice> listSerialDevices(const std::string& devRoot, const std::string& sysRoot);

}  // namespace fc
