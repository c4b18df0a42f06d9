// The options of the simulator program: which device, at what speed, and
// which faults it shows; or, with a TCP port, a scale's Ethernet boot loader
// behind a listening socket.
#pragma once

#include <ostream>
#include <string>

#include "sim/device_faults.h"
#include "sim/ethernet_scale.h"
#include "sim/graphic_display.h"
#include "sim/sink_scale.h"
#include "sim/visor_device.h"

namespace fc {

class SerialDevice;

struct SimOptions {
    // numbered, banked or echo on a pty; sink (the default) or
    // ethernet-scale behind a TCP port.
    std::string kind = "numbered";
    int baud = 57600;
    long long eraseMs = 2000;
    long long bankMs = 200;  // a banked device recording a bank
    bool wantsMac = false;
    bool silentEndCommand = false;
    double slowFactor = 1.0;
    std::string logPath;
    DeviceFaults faults;
    bool help = false;

    // The TCP mode: the port to listen on (0: any free one), -1 for the
    // serial mode on a pty.
    int tcpPort = -1;
    double readRate = 0;  // bytes a second, 0 at once
    int receiveBuffer = 2048;
    SinkScale::Faults tcpFaults;
    EthernetScale::Faults scaleFaults;  // --device ethernet-scale
    // The address the TCP mode listens on.
    std::string listenAddress = "0.0.0.0";
    // The interface whose address a stored MAC becomes; empty: none.
    std::string interfaceName;
    sim::DisplayFaults displayFaults;   // --device graphic-display

    // The visor (--device visor): on a pty, or behind a UDP port with --udp.
    int udpPort = -1;
    long long offMs = 0;  // switched off for so long from the start
    VisorBootLoader::Faults visorFaults;
    VisorUdpBridge::Faults bridgeFaults;
    bool baudGiven = false;
};

bool parseSimOptions(int argc, char** argv, SimOptions& out, std::string& error);
std::string simUsage();

// Writes the frames the device received after the first `alreadyLogged`, one
// a line, each with the moment its last character arrived (milliseconds with
// three decimals on the device's clock); returns how many are logged now.
size_t logNewFrames(const SerialDevice& device, size_t alreadyLogged, std::ostream& out);

}  // namespace fc
