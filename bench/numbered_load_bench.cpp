// How fast a numbered-line load goes: a 512 KB Intel HEX file into the
// simulated scale, answering at once,
//  1. over a real pty with the real pump: lines per second, and the loader's
//     turnaround, from the answer leaving the device to the first byte of the
//     next frame arriving there (median and 99th percentile);
//  2. on the virtual clock at 57600 baud: the load's time as a share of the
//     time its bytes take on the wire.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "control/firmcast_form.h"
#include "operator/operator_script.h"
#include "operator/recording_dialogs.h"
#include "platform/file_table.h"
#include "platform/linux/linux_machine.h"
#include "platform/linux/real_pump.h"
#include "platform/linux/termios_port.h"
#include "sim/host/pty_device_host.h"
#include "sim/numbered_scale.h"
#include "support/firmware_files.h"
#include "support/scenario_rig.h"
#include "virtual/virtual_pump.h"
#include "virtual/virtual_serial.h"

namespace {

using namespace fc;

struct Done {};

// Drives the wizard to a Serie_N load of C:\fw.hex on COM1 and returns when
// the pass has ended.
void runLoad(Pump& pump, SerialPortOpener& ports, const std::string& driveC,
             const std::string& home) {
    RecordingDialogs dialogs(pump);
    FileTable files;
    LinuxMachine machine(Drives({{'c', driveC}}));
    Firmcast form(machine.services(pump, dialogs, ports, files, home));
    OperatorScript script(pump);
    Firmcast* f = &form;
    script.when([f] { return f->Seleccion.reachable(); }, "model",
                [f] { operatorClick(*f, "Picture3"); });
    script.when([f] { return f->frPuerto.reachable(); }, "COM1",
                [f] {
                    operatorClick(*f, "optrs232");
                    operatorClick(*f, "Option1");
                    operatorClick(*f, "cmdAdelante");
                });
    script.when([f] { return f->File1.reachable(); }, "file",
                [f] {
                    operatorSelectText(*f, "File1", "fw.hex");
                    operatorClick(*f, "cmdAdelante");
                });
    script.when([f] { return f->esperando_otra != kFalse; }, "done", [] { throw Done{}; });
    try {
        form.Form_Load("");
    } catch (const Done&) {
    }
    if (dialogs.texts() != std::vector<std::string>{"The scale is ready"}) {
        std::fprintf(stderr, "the load did not succeed\n");
        std::exit(1);
    }
}

double percentile(std::vector<double> values, double p) {
    std::sort(values.begin(), values.end());
    return values[static_cast<size_t>(p * static_cast<double>(values.size() - 1))];
}

}  // namespace

int main() {
    const int records = 11'650;  // about 512 KB of text at 45 bytes a line
    test::TempFolder driveC, home;
    std::string file = test::intelHexFile(records);
    driveC.write("fw.hex", file);
    std::printf("file: %zu bytes, %d data records\n", file.size(), records);

    {
        RealPump pump;
        NumberedScale::Config config;
        config.eraseTime = 0;
        config.lineTime = 0;
        NumberedScale scale(config);
        PtyDeviceHost host(pump, scale);
        setenv("FIRMCAST_COM1", host.ttyPath().c_str(), 1);
        TermiosPortOpener ports;
        auto start = std::chrono::steady_clock::now();
        runLoad(pump, ports, driveC.path().string(), home.path().string());
        double seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        std::vector<double> turnaround;
        const auto& frames = scale.frames();
        const auto& answers = scale.answerTimes();
        for (size_t i = 0; i + 1 < frames.size() && i < answers.size(); ++i) {
            turnaround.push_back(static_cast<double>(frames[i + 1].startedAt - answers[i]));
        }
        std::printf("real pty: %zu frames in %.2f s = %.0f lines/s\n", frames.size(), seconds,
                    static_cast<double>(frames.size()) / seconds);
        std::printf("real pty: turnaround median %.0f us, p99 %.0f us\n",
                    percentile(turnaround, 0.5), percentile(turnaround, 0.99));
    }
    {
        VirtualPump pump;
        NumberedScale::Config config;
        config.eraseTime = 0;
        config.lineTime = 0;
        NumberedScale scale(config);
        VirtualSerialOpener ports(pump);
        ports.attach(1, scale);
        runLoad(pump, ports, driveC.path().string(), home.path().string());
        double bytes = 0;
        for (const auto& frame : scale.frames()) {
            bytes += 5 + static_cast<double>(frame.record.size());
            // The answer: one byte to a data record, two to any other.
            bool data = frame.record.size() >= 9 && frame.record.compare(7, 2, "00") == 0;
            bytes += data ? 1 : 2;
        }
        double wireSeconds = bytes * 10 / 57600;
        double loadSeconds = static_cast<double>(pump.nowMicros()) / 1e6;
        std::printf(
            "virtual 57600,e,7,1: load %.1f s of virtual time, wire %.1f s: %.1f %% of the load is "
            "the wire\n",
            loadSeconds, wireSeconds, 100 * wireSeconds / loadSeconds);
    }
    return 0;
}
