// What the window tells the operator beyond the system's own words: the
// operating level the program was started at, the device each serial port
// stands for, and a look at the selected firmware file. None of it changes
// what the wizard or the loaders do.
#include "control/firmcast_form.h"
#include "firmware/file_check.h"
#include "platform/drives.h"
#include "platform/serial_port.h"

namespace fc {

namespace {

const char* levelName(Integer nivel) {
    switch (nivel) {
        case 1:
            return "production";
        case 2:
            return "laboratory";
        default:
            return "workshop";
    }
}

}  // namespace

void Firmcast::showOperatingLevel() {
    lblNivel.setCaption("Level " + std::to_string(nivel) + ": " + levelName(nivel));
}

void Firmcast::showPortDevices() {
    std::string text;
    for (int port = 1; port <= 4; ++port) {
        std::string device = services_.serialPorts.deviceOf(port);
        if (device.empty())
            continue;
        text +=
            (text.empty() ? "" : "\n") + std::string("COM ") + std::to_string(port) + ": " + device;
    }
    lblPuertos.setCaption(text);
}

void Firmcast::showFileCheck() {
    std::string host = services_.drives.hostPath(fichero_firmware);
    lblComprobacion.setCaption(
        fileCheckText(checkFirmwareFile(host.empty() ? fichero_firmware : host)));
}

}  // namespace fc
