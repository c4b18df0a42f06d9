// firmcast-sim: a simulated device on a real pseudo-terminal. It prints the
// tty's path on its first line; point the loader's COM port at it
// (FIRMCAST_COM1=/dev/pts/N) and load. It runs until it is stopped.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "platform/linux/pty_device_host.h"
#include "platform/real_pump.h"
#include "sim/banked_device.h"
#include "sim/echo_device.h"
#include "sim/numbered_scale.h"
#include "sim/sim_options.h"

namespace {

volatile std::sig_atomic_t stopRequested = 0;
void requestStop(int) {
    stopRequested = 1;
}

std::unique_ptr<fc::SerialDevice> makeDevice(const fc::SimOptions& o) {
    if (o.kind == "numbered") {
        fc::NumberedScale::Config config;
        config.settings.baud = o.baud;
        config.eraseTime = o.eraseMs * 1000;
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
        auto device = std::make_unique<fc::BankedDevice>(config);
        device->faults = o.faults;
        return device;
    }
    return std::make_unique<fc::EchoDevice>(fc::LineSettings{o.baud, 'N', 8, 1});
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

    fc::RealPump pump;
    std::unique_ptr<fc::SerialDevice> device = makeDevice(options);
    fc::PtyDeviceHost host(pump, *device);
    host.setSlowFactor(options.slowFactor);
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
