// The display screen on the virtual clock: its own program folder with the
// driver's folder, switch file and database, a drive C: for the firmware,
// recorded boxes, virtual kernel objects, and the simulated driver, which
// the screen's start of "korvacom" launches on the same clock.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "common/common_module.h"
#include "display/frm_carga_display_grafico.h"
#include "operator/operator_script.h"
#include "operator/recording_dialogs.h"
#include "platform/drives.h"
#include "platform/file_table.h"
#include "platform/linux/linux_file_system.h"
#include "platform/linux/sqlite_database.h"
#include "sim/korvacom_on_pump.h"
#include "support/scenario_rig.h"
#include "virtual/virtual_calendar.h"
#include "virtual/virtual_kernel_objects.h"
#include "virtual/virtual_network.h"
#include "virtual/virtual_pump.h"
#include "virtual/virtual_serial.h"

namespace fc::test {

// A switch file as a site ships it with its driver.
constexpr const char* kSwitchesShipped =
    "-v 9600\r\n-p COM1\r\n-b 8\r\n-t tx.txt\r\n-r rx.txt\r\n-a 1\r\n-e 0\r\n-m 0\r\n"
    "-d 00#10.0.0.1:3000\r\n-E 0\r\n-j 3001,3000\r\n-k 5\r\n-A 0\r\n-x keep\r\n";

// Firmware of `dataLines` data lines of 16 bytes and an end record.
std::string displayFirmware(int dataLines, int seed = 1);

class DisplayRig {
  public:
    explicit DisplayRig(sim::DriverFaults driverFaults = {}, sim::DisplayFaults displayFaults = {});
    ~DisplayRig();

    // The current folder, where a load leaves its trace "mirl": the rig's own
    // while it lives, so that tests side by side never share one.
    TempFolder currentFolder;
    std::filesystem::path formerFolder = std::filesystem::current_path();

    VirtualPump pump;
    RecordingDialogs dialogs{pump};
    VirtualSerialOpener serial{pump};
    FileTable files;
    TempFolder home;
    TempFolder driveC;
    LinuxFileSystem fileSystem;
    VirtualKernelObjects kernel{pump};
    VirtualCalendar calendar{pump, LocalDateTime{2005, 3, 21, 10, 42, 0}};
    SqliteDatabaseEngine databases;
    VirtualNetwork network{pump};
    Drives drives;
    Services services;
    CommonModule common{services};
    OperatorScript script{pump};
    std::unique_ptr<sim::KorvacomOnPump> driver;
    std::unique_ptr<frmCargaDisplayGrafico> form;
    // The command lines the screen started programs with.
    std::vector<std::string> started;
    // Whether "ctrl.txt" was there at each start.
    std::vector<bool> ctrlAtStart;
    // Every caption Label2 took, in order.
    std::vector<std::string> label2;

    std::filesystem::path korvacom(const std::string& name) const;
    std::string read(const std::filesystem::path& file) const;
    // Writes a firmware file on C:\ and picks it in the file list.
    void chooseFirmware(const std::string& name, const std::string& content);
    // Ethernet to 192.168.1.10, or serial on COM `port`.
    void chooseEthernet(const std::string& ip = "192.168.1.10");
    void chooseSerial(int port);
    // Presses the load button; true when the handler returned.
    void load();
    std::vector<std::string> boxes() const { return dialogs.texts(); }
};

}  // namespace fc::test
