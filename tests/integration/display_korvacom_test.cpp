// The display's load with the Linux driver as a real process: the program's
// folder prepared by the set-up script, the driver started from it, the
// records carried to firmcast-sim's graphic display over TCP or a pty, and
// no driver process left behind.
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "common/common_module.h"
#include "display/frm_carga_display_grafico.h"
#include "operator/recording_dialogs.h"
#include "platform/file_table.h"
#include "platform/linux/linux_machine.h"
#include "platform/linux/process_launcher.h"
#include "platform/linux/real_pump.h"
#include "support/display_rig.h"
#include "support/first_line_process.h"
#include "unit/common_fixture.h"

namespace fc::test {
namespace {

const std::string kBin = FIRMCAST_BIN_DIR;
const std::string kScripts = FIRMCAST_SCRIPTS_DIR;

// True when the process has gone (or is a zombie no one has reaped yet).
bool processGone(long pid) {
    std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
    std::string text;
    if (!std::getline(stat, text))
        return true;
    std::size_t close = text.rfind(')');
    return close != std::string::npos && close + 2 < text.size() && text[close + 2] == 'Z';
}

// A guard against hanging, not a measure of speed.
bool waitUntilGone(long pid) {
    for (int i = 0; i < 200 && !processGone(pid); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return processGone(pid);
}

struct RealDisplay {
    explicit RealDisplay() {
        std::string command = "FIRMCAST_HOME=" + home.path().string() + " bash " + kScripts +
                              "/prepare-home.sh " + kBin + " >/dev/null 2>&1";
        prepared = std::system(command.c_str()) == 0;
        services.emplace(machine.services(pump, dialogs, ports, files, home.path().string()));
        common = std::make_unique<CommonModule>(*services);
        form = std::make_unique<frmCargaDisplayGrafico>(
            *services, *common, [this](const std::string& commandLine) -> long {
                pid = launcher.start(commandLine);
                return pid;
            });
        form->Form_Load();
        form->load();
    }

    TempFolder home;
    TempFolder firmware;
    LinuxMachine machine;
    RealPump pump;
    RecordingDialogs dialogs{pump};
    commontest::NoSerialPorts ports;
    FileTable files;
    LinuxProcessLauncher launcher{machine.drives};
    std::optional<Services> services;
    std::unique_ptr<CommonModule> common;
    std::unique_ptr<frmCargaDisplayGrafico> form;
    bool prepared = false;
    long pid = 0;

    void load(int dataLines) {
        form->fichero_firmware = firmware.write("disp.hex", displayFirmware(dataLines));
        operatorClick(*form, "cmdAdelante");
    }
};

TEST(DisplayKorvacomReal, TheSetUpInstallsTheDriverItsSwitchesAndTheDatabase) {
    RealDisplay rig;
    ASSERT_TRUE(rig.prepared);
    EXPECT_EQ(access((rig.home.path() / "korvacom/korvacom").c_str(), X_OK), 0);
    EXPECT_TRUE(std::filesystem::exists(rig.home.path() / "korvacom/Korctrl.txt"));
    EXPECT_TRUE(std::filesystem::exists(rig.home.path() / "Database/KorvaFirmcast.mdb"));
    EXPECT_TRUE(rig.dialogs.texts().empty());
}

TEST(DisplayKorvacomReal, ASiteDriverAlreadyThereIsKeptBySetUp) {
    TempFolder home;
    home.write("korvacom/korvacom", "#!/bin/sh\n");
    std::string command = "FIRMCAST_HOME=" + home.path().string() + " bash " + kScripts +
                          "/prepare-home.sh " + kBin + " >/dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0);
    std::ifstream in(home.path() / "korvacom/korvacom");
    std::string first;
    std::getline(in, first);
    EXPECT_EQ(first, "#!/bin/sh");
}

TEST(DisplayKorvacomReal, LoadsADisplayOverTcpAndTheDriverEnds) {
    FirstLineProcess display({kBin + "/firmcast-sim", "--tcp", "0", "--device", "graphic-display"});
    int port = 0;
    ASSERT_EQ(std::sscanf(display.firstLine().c_str(), "listening on %d", &port), 1);
    RealDisplay rig;
    ASSERT_TRUE(rig.prepared);
    rig.form->txtDirTCP.setText("127.0.0.1");
    rig.form->TxtPort.setText(std::to_string(port));
    rig.load(210);
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded OK");
    EXPECT_TRUE(rig.dialogs.texts().empty());
    ASSERT_GT(rig.pid, 0);
    EXPECT_TRUE(waitUntilGone(rig.pid)) << "the driver is still running";
}

TEST(DisplayKorvacomReal, ARejectedCrcOverTcpEndsLoadedKo) {
    FirstLineProcess display(
        {kBin + "/firmcast-sim", "--tcp", "0", "--device", "graphic-display", "--rejects-crc"});
    int port = 0;
    ASSERT_EQ(std::sscanf(display.firstLine().c_str(), "listening on %d", &port), 1);
    RealDisplay rig;
    rig.form->txtDirTCP.setText("127.0.0.1");
    rig.form->TxtPort.setText(std::to_string(port));
    rig.load(20);
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded KO. ERROR");
    ASSERT_GT(rig.pid, 0);
    EXPECT_TRUE(waitUntilGone(rig.pid)) << "the driver is still running";
}

TEST(DisplayKorvacomReal, LoadsADisplayOnASerialPortThroughAPty) {
    // The display at the screen's default speed: the line carries nothing between
    // two ends set to different speeds.
    FirstLineProcess display(
        {kBin + "/firmcast-sim", "--device", "graphic-display", "--baud", "19200"});
    ASSERT_EQ(display.firstLine().rfind("/dev/", 0), 0u) << display.firstLine();
    setenv("FIRMCAST_COM2", display.firstLine().c_str(), 1);
    RealDisplay rig;
    operatorClick(*rig.form, "optrs232");
    operatorClick(*rig.form, "Option2");
    rig.load(20);
    unsetenv("FIRMCAST_COM2");
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded OK");
    ASSERT_GT(rig.pid, 0);
    EXPECT_TRUE(waitUntilGone(rig.pid)) << "the driver is still running";
}

}  // namespace
}  // namespace fc::test
