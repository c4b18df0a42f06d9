#include "app/batch_ports.h"

#include "app/batch_exit.h"
#include "platform/linux/serial_devices.h"

namespace fc::batch {

int listPorts(const std::string& devRoot, const std::string& sysRoot, std::ostream& out,
              std::ostream& err) {
    const std::vector<SerialDevice> devices = listSerialDevices(devRoot, sysRoot);
    if (devices.empty()) {
        err << "firmcast-batch: no serial device (ttyS*, ttyUSB*, ttyACM*, serial/by-id/*) in "
            << devRoot << std::endl;
        return kExitOk;
    }
    for (const SerialDevice& device : devices) {
        const int com = device.defaultCom != 0 ? device.defaultCom : 1;
        out << device.path << "  FIRMCAST_COM" << com << "=" << device.path;
        if (device.defaultCom != 0)
            out << "  (COM" << device.defaultCom << " by default)";
        else if (!device.target.empty())
            out << "  (" << device.target << ")";
        out << "\n";
    }
    out.flush();
    return kExitOk;
}

}  // namespace fc::batch
