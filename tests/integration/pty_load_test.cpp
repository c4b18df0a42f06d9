// Whole loads over a real pseudo-terminal: the main screen with the real
// serial port and the real pump, the simulated device on the pty's far side.
// These take real time (a few seconds) and are kept few.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <thread>

#include "control/firmcast_form.h"
#include "operator/model_choice.h"
#include "operator/operator_script.h"
#include "operator/recording_dialogs.h"
#include "platform/file_table.h"
#include "platform/linux/linux_machine.h"
#include "platform/linux/real_pump.h"
#include "platform/linux/termios_port.h"
#include "sim/banked_device.h"
#include "sim/host/pty_device_host.h"
#include "sim/msc1210_rom.h"
#include "sim/numbered_scale.h"
#include "support/firmware_files.h"
#include "support/intel_hex.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;

struct RealRig {
    RealPump pump;
    RecordingDialogs dialogs{pump};
    TermiosPortOpener ports;
    FileTable files;
    TempFolder driveC, home;
    LinuxMachine machine{Drives({{'c', driveC.path().string()}})};
    OperatorScript script{pump};

    ~RealRig() { unsetenv("FIRMCAST_COM1"); }

    // Loads `file` into model `code` through COM1 = the host's tty.
    std::vector<std::string> load(PtyDeviceHost& host, int code, const std::string& file) {
        setenv("FIRMCAST_COM1", host.ttyPath().c_str(), 1);
        driveC.write("fw.txt", file);
        Firmcast form(machine.services(pump, dialogs, ports, files, home.path().string()));
        Firmcast* f = &form;
        script.when([f] { return f->Seleccion.reachable(); }, "model",
                    [f, code] { operatorPickModel(*f, code); });
        script.when([f] { return f->frPuerto.reachable(); }, "COM1",
                    [f] {
                        operatorClick(*f, "optrs232");
                        operatorClick(*f, "Option1");
                        operatorClick(*f, "cmdAdelante");
                    });
        script.when([f] { return f->File1.reachable(); }, "file",
                    [f] {
                        operatorSelectText(*f, "File1", "fw.txt");
                        operatorClick(*f, "cmdAdelante");
                    });
        script.when([f] { return f->esperando_otra != kFalse; }, "done",
                    [] { throw ScenarioDone{}; });
        try {
            form.Form_Load("");
        } catch (const ScenarioDone&) {
        }
        return dialogs.texts();
    }
};

// A device behind its pty that runs beside the loader, as a scale does: in a
// thread with a pump of its own, so that the loader's plain sleeps (which run
// no events) do not stop it. Read the device only after stop().
class DeviceBeside {
  public:
    explicit DeviceBeside(SerialDevice& device) {
        std::promise<std::string> tty;
        std::future<std::string> path = tty.get_future();
        thread_ = std::thread([this, &device, &tty] {
            RealPump pump;
            PtyDeviceHost host(pump, device);
            tty.set_value(host.ttyPath());
            while (!stop_) pump.doEvents();
        });
        ttyPath_ = path.get();
    }
    ~DeviceBeside() { stop(); }
    const std::string& ttyPath() const { return ttyPath_; }
    void stop() {
        stop_ = true;
        if (thread_.joinable())
            thread_.join();
    }

  private:
    std::atomic<bool> stop_{false};
    std::thread thread_;
    std::string ttyPath_;
};

TEST(PtyLoad, ANumberedLineScaleLoadsOverARealPty) {
    RealRig rig;
    NumberedScale::Config config;
    config.eraseTime = 200'000;
    NumberedScale scale(config);
    PtyDeviceHost host(rig.pump, scale);
    EXPECT_THAT(rig.load(host, 1, intelHexFile(64)), ElementsAre("The scale is ready"));
    EXPECT_EQ(scale.flashed().size(), 64u);
    EXPECT_TRUE(scale.endOfFileSeen());
}

TEST(PtyLoad, ABankedDeviceLoadsOverARealPtyAcrossTwoBanks) {
    RealRig rig;
    BankedDevice::Config config;
    config.eraseTime = 200'000;
    config.bankTime = 10'000;
    BankedDevice device(config);
    PtyDeviceHost host(rig.pump, device);
    EXPECT_THAT(rig.load(host, 2, sRecordFile(consecutive(0x7F00, 32))),
                ElementsAre("The scale is ready"));
    EXPECT_EQ(device.banksRecorded(), (std::vector<int>{16, 16}));
    EXPECT_TRUE(device.ended());
}

TEST(PtyLoad, AGScaleLoadsThroughItsBootRomOverARealPty) {
    RealRig rig;
    Msc1210Rom::Config config;
    config.startsInRom = true;  // a pty has no DTR to pulse
    Msc1210Rom rom(config);
    DeviceBeside scale(rom);
    setenv("FIRMCAST_COM1", scale.ttyPath().c_str(), 1);
    rig.driveC.write("fw.txt", hexFile({intelRecord(0x0200, 0, patternBytes(6, 16)), endRecord()}));
    Firmcast form(rig.machine.services(rig.pump, rig.dialogs, rig.ports, rig.files,
                                       rig.home.path().string()));
    Firmcast* f = &form;
    rig.script.when([f] { return f->cmdCargaRomG.reachable(); }, "the boot ROM button",
                    [f] { operatorClick(*f, "cmdCargaRomG"); });
    rig.script.when([f] { return f->hacerf.reachable(); }, "Balanza G",
                    [f] { operatorClick(*f, "Option5"); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "COM1",
                    [f] {
                        operatorClick(*f, "optrs232");
                        operatorClick(*f, "Option1");
                        operatorClick(*f, "cmdAdelante");
                    });
    rig.script.when([f] { return f->File1.reachable() && f->File1.listCount() > 0; }, "file",
                    [f] {
                        operatorSelectText(*f, "File1", "fw.txt");
                        operatorClick(*f, "cmdAdelante");
                    });
    rig.script.when([f] { return f->esperando_otra != kFalse; }, "done",
                    [] { throw ScenarioDone{}; });
    try {
        form.Form_Load("3");
    } catch (const ScenarioDone&) {
    }
    scale.stop();
    EXPECT_THAT(rig.dialogs.texts(), ElementsAre("The scale is ready"));
    EXPECT_EQ(rom.chipErases(), 1);
    EXPECT_EQ(rom.recordAddresses().front(), 0);
    EXPECT_EQ(rom.recordAddresses().back(), 0x7BF0);
    EXPECT_EQ(rom.flash()[0x200], patternBytes(6, 16)[0]);
    EXPECT_EQ(rom.hcr1(), 0xE3);
    EXPECT_TRUE(rom.endSeen());
}

TEST(PtyLoad, ADeviceOnlyAt19200IsReachedByTheFallBack) {
    RealRig rig;
    BankedDevice::Config config;
    config.settings = LineSettings{19200, 'N', 8, 1};
    config.eraseTime = 100'000;
    BankedDevice device(config);
    PtyDeviceHost host(rig.pump, device);
    EXPECT_THAT(rig.load(host, 5, sRecordFile(consecutive(0, 8))),
                ElementsAre("The scale is ready"));
}

}  // namespace
}  // namespace fc::test
