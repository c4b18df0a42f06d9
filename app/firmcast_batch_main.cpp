// firmcast-batch: the loader without a window, for production lines and CI.
// It loads devices through the same screens and driver as the window, with
// an operator script made from its options, and does the dry runs: "--inspect
// FILE" reads a firmware file as an Ethernet load would and prints what it
// would send; "--inspect-synthetic" prints the synthetic message list;
// "--list-ports" the serial devices. Message boxes and what was asked for go
// to standard output; errors, usage after an error, the progress of a load
// and where a run stopped go to standard error. See --help.
#include <iostream>
#include <string>
#include <vector>

#include "app/batch_display.h"
#include "app/batch_dry_run.h"
#include "app/batch_exit.h"
#include "app/batch_load.h"
#include "app/batch_options.h"
#include "app/batch_ports.h"
#include "platform/linux/serial_devices.h"
#include "platform/runtime_error.h"

namespace {

int run(const fc::batch::Options& options) {
    using fc::batch::Mode;
    switch (options.mode) {
        case Mode::Help:
            std::cout << fc::batch::usageText();
            return fc::batch::kExitOk;
        case Mode::Version:
            std::cout << fc::batch::versionText() << "\n";
            return fc::batch::kExitOk;
        case Mode::ListPorts:
            return fc::batch::listPorts(fc::serialDeviceRoot(), fc::kernelObjectRoot(), std::cout,
                                        std::cerr);
        case Mode::Inspect:
            return fc::batch::inspectFile(options.file, std::cout, std::cerr);
        case Mode::InspectSynthetic:
            return fc::batch::inspectSynthetic(std::cout);
        case Mode::Load:
            return fc::batch::runLoad(options, std::cout, std::cerr);
        case Mode::Display:
            return fc::batch::runDisplay(options, std::cout, std::cerr);
    }
    return fc::batch::kExitBadUsage;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    fc::batch::Options options;
    try {
        options = fc::batch::parseOptions(args);
    } catch (const fc::batch::UsageError& error) {
        std::cerr << "firmcast-batch: " << error.message << "\n" << fc::batch::usageText();
        return fc::batch::kExitBadUsage;
    }
    try {
        return run(options);
    } catch (const fc::ProgramEnd& end) {
        return end.exitStatus;
    } catch (const fc::RuntimeError& error) {
        // A failure nothing caught: what the fatal trap of a load does.
        std::cerr << "firmcast-batch: " << error.number() << " - " << error.description() << "\n";
        return fc::batch::kExitFatalTrap;
    }
}
