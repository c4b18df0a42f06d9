// firmcast-sim: a simulated device on a real pseudo-terminal. It prints the
// tty's path on its first line; point the loader's COM port at it
// (FIRMCAST_COM1=/dev/pts/N) and load. With --tcp PORT it is instead a scale's
// Ethernet boot loader on a listening socket, and says "listening on PORT".
// With --device visor it is an MV-510 visor's ISP boot loader, on a pty or,
// with --udp PORT, behind a UDP port ("listening on PORT").
// It runs until it is stopped (SIGTERM, SIGINT).
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <string>

#include "platform/linux/real_pump.h"
#include "sim/banked_device.h"
#include "sim/echo_device.h"
#include "sim/ethernet_scale.h"
#include "sim/graphic_display_device.h"
#include "sim/host/interface_mac.h"
#include "sim/host/pty_device_host.h"
#include "sim/host/tcp_device_host.h"
#include "sim/host/udp_device_host.h"
#include "sim/numbered_scale.h"
#include "sim/sim_options.h"
#include "sim/sink_scale.h"
#include "sim/visor_device.h"

namespace {

volatile std::sig_atomic_t stopRequested = 0;
void requestStop(int) {
    stopRequested = 1;
}

// The devices answer as soon as the line has brought a frame's last
// character: a load timed against them shows the line's time alone, besides
// their erase and bank recording.
std::unique_ptr<fc::SerialDevice> makeDevice(const fc::SimOptions& o) {
    if (o.kind == "numbered") {
        fc::NumberedScale::Config config;
        config.settings.baud = o.baud;
        config.eraseTime = o.eraseMs * 1000;
        config.lineTime = 0;
        config.wantsMac = o.wantsMac;
        config.answersEndCommand = !o.silentEndCommand;
        auto scale = std::make_unique<fc::NumberedScale>(config);
        scale->faults = o.faults;
        return scale;
    }
    if (o.kind == "banked") {
        fc::BankedDevice::Config config;
        config.settings.baud = o.baud;
        config.eraseTime = o.eraseMs * 1000;
        config.bankTime = o.bankMs * 1000;
        config.lineTime = 0;
        auto device = std::make_unique<fc::BankedDevice>(config);
        device->faults = o.faults;
        return device;
    }
    if (o.kind == "graphic-display") {
        return std::make_unique<fc::sim::GraphicDisplayDevice>(o.displayFaults,
                                                               fc::LineSettings{o.baud, 'N', 8, 1});
    }
    return std::make_unique<fc::EchoDevice>(fc::LineSettings{o.baud, 'N', 8, 1});
}

// Puts `device` behind a listening port, says the port on the first line and
// runs until a signal; each turn, `logTurn` writes to the log (when there is
// one) what has happened since the last.
int serve(fc::TcpDevice& device, const fc::SimOptions& o,
          const std::function<void(std::ofstream& log)>& logTurn) {
    fc::RealPump pump;
    std::unique_ptr<fc::TcpDeviceHost> host;
    try {
        host = std::make_unique<fc::TcpDeviceHost>(pump, device, o.listenAddress, o.tcpPort);
    } catch (const std::exception& e) {
        std::cerr << "firmcast-sim: " << e.what() << "\n";
        return 1;
    }
    std::cout << "listening on " << host->port() << std::endl;

    std::ofstream log;
    if (!o.logPath.empty())
        log.open(o.logPath);
    while (!stopRequested) {
        pump.doEvents();
        if (log.is_open())
            logTurn(log);
    }
    return 0;
}

// The scale's boot loader behind the port: one device for all connections.
int runEthernetScale(const fc::SimOptions& o) {
    fc::EthernetScale scale;
    scale.faults = o.scaleFaults;
    scale.eraseTime = o.eraseMs * 1000;
    scale.readBytesPerSecond = o.readRate;
    scale.receiveBuffer = o.receiveBuffer;
    std::string macNote;
    if (!o.interfaceName.empty()) {
        scale.onMacStored = [&o, &macNote](const std::array<std::uint8_t, 6>& mac) {
            std::string error;
            macNote = fc::setInterfaceMac(o.interfaceName, mac, error)
                          ? "interface " + o.interfaceName + " takes the new MAC"
                          : "interface " + o.interfaceName + " keeps its MAC: " + error;
        };
    }
    size_t types = 0, answers = 0;
    return serve(scale, o, [&](std::ofstream& log) {
        bool wrote = false;
        for (; types < scale.types().size(); ++types, wrote = true)
            log << "message " << types << " type 0x" << std::hex << int(scale.types()[types])
                << std::dec << "\n";
        for (; answers < scale.answers().size(); ++answers, wrote = true)
            log << "answer code " << int(static_cast<unsigned char>(scale.answers()[answers][0]))
                << " " << scale.answers()[answers].substr(1) << "\n";
        if (!macNote.empty()) {
            log << macNote << "\n";
            macNote.clear();
            wrote = true;
        }
        if (wrote)
            log.flush();
    });
}

// The display behind the port, logging how many records it has taken.
int runGraphicDisplay(const fc::SimOptions& o) {
    fc::sim::GraphicDisplayDevice display(o.displayFaults);
    long logged = 0;
    return serve(display, o, [&](std::ofstream& log) {
        if (display.linesHeard() != logged) {
            logged = display.linesHeard();
            log << "records " << logged << "\n" << std::flush;
        }
    });
}

int runTcp(const fc::SimOptions& o) {
    if (o.kind == "ethernet-scale")
        return runEthernetScale(o);
    if (o.kind == "graphic-display")
        return runGraphicDisplay(o);
    fc::SinkScale sink;
    sink.faults = o.tcpFaults;
    sink.readBytesPerSecond = o.readRate;
    sink.receiveBuffer = o.receiveBuffer;
    sink.keepLimit = 0;  // a long-running simulator only counts
    size_t logged = 0;
    return serve(sink, o,
                 [&](std::ofstream& log) { logged = fc::logNewSinkEvents(sink, logged, log); });
}

fc::VisorBootLoader::Config visorConfig(const fc::SimOptions& o) {
    fc::VisorBootLoader::Config config;
    config.eraseTime = o.eraseMs * 1000;
    return config;
}

// Runs the pump until a signal, writing the records the visor took to the
// log when there is one.
int runVisorLoop(fc::RealPump& pump, const fc::VisorBootLoader& loader, const fc::SimOptions& o) {
    std::ofstream log;
    if (!o.logPath.empty())
        log.open(o.logPath);
    size_t logged = 0;
    while (!stopRequested) {
        pump.doEvents();
        if (!log.is_open())
            continue;
        for (; logged < loader.records().size(); ++logged) log << loader.records()[logged] << "\n";
        log.flush();
    }
    return 0;
}

// The visor on a pty. Its answers are written as they are made, in one
// piece, as a USB adapter hands a packet over: the loader reads an answer
// whole, its last characters included.
int runVisorPty(const fc::SimOptions& o) {
    fc::RealPump pump;
    fc::VisorSerial visor(visorConfig(o), fc::LineSettings{o.baud, 'N', 8, 1});
    visor.loader().faults = o.visorFaults;
    fc::PtyDeviceHost host(pump, visor);
    host.setSlowFactor(o.slowFactor);
    if (o.offMs > 0)
        visor.loader().switchOffFor(o.offMs * 1000);
    std::cout << host.ttyPath() << std::endl;
    return runVisorLoop(pump, visor.loader(), o);
}

// The visor behind its UDP bridge: answers go to the sender's address, port
// 3001.
int runVisorUdp(const fc::SimOptions& o) {
    fc::RealPump pump;
    std::unique_ptr<fc::UdpDeviceHost> host;
    fc::Ipv4 sender{};
    std::unique_ptr<fc::VisorUdpBridge> bridge;
    try {
        host = std::make_unique<fc::UdpDeviceHost>(pump, o.udpPort, [&](const fc::Datagram& d) {
            sender = d.from;
            bridge->datagram(d.bytes);
        });
    } catch (const std::exception& e) {
        std::cerr << "firmcast-sim: " << e.what() << "\n";
        return 1;
    }
    bridge = std::make_unique<fc::VisorUdpBridge>(
        pump, [&](const std::string& bytes) { host->send(sender, 3001, bytes); }, visorConfig(o));
    bridge->faults = o.bridgeFaults;
    bridge->loader().faults = o.visorFaults;
    if (o.offMs > 0)
        bridge->loader().switchOffFor(o.offMs * 1000);
    std::cout << "listening on " << host->port() << std::endl;
    return runVisorLoop(pump, bridge->loader(), o);
}

}  // namespace

int main(int argc, char** argv) {
    fc::SimOptions options;
    std::string error;
    if (!fc::parseSimOptions(argc, argv, options, error)) {
        std::cerr << "firmcast-sim: " << error << "\n" << fc::simUsage();
        return 2;
    }
    if (options.help) {
        std::cout << fc::simUsage();
        return 0;
    }
    std::signal(SIGINT, requestStop);
    std::signal(SIGTERM, requestStop);
    if (options.tcpPort >= 0)
        return runTcp(options);
    if (options.kind == "visor")
        return options.udpPort >= 0 ? runVisorUdp(options) : runVisorPty(options);

    fc::RealPump pump;
    std::unique_ptr<fc::SerialDevice> device = makeDevice(options);
    fc::PtyDeviceHost host(pump, *device);
    host.setSlowFactor(options.slowFactor);
    host.setLineTime(true);
    std::cout << host.ttyPath() << std::endl;

    std::ofstream log;
    if (!options.logPath.empty())
        log.open(options.logPath);
    size_t logged = 0;
    while (!stopRequested) {
        pump.doEvents();
        if (log.is_open())
            logged = fc::logNewFrames(*device, logged, log);
    }
    return 0;
}
