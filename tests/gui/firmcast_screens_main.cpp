// firmcast_screens: the main screen in its window, walked by an operator
// script to the scene named on the command line and left there, for the
// screenshots of the documentation (scripts/firmcast_screenshots.sh).
//
//   firmcast_screens model-scales | model-labellers | model-visors |
//                    way-rs232 | way-ethernet | file | scales | load |
//                    ethernet-load | ethernet-end | record-form
//
// The Ethernet scenes load three simulated Serie_W scales behind real ports
// of the loopback (127.0.0.1 to 127.0.0.3); at the end one has reported a
// wrong checksum. The record form scene loads one scale at the production
// level with its MAC register in a SQLite file, and shows the form.
//                    visor-load | visor-end
//
// It runs at level 1 on demonstration drives it makes itself (C: and T:,
// with the Serie_N firmware folder of that level) under the temporary
// folder, and keeps a simulated Serie_N scale on a real pseudo-terminal as
// COM1, so that the load scene is a real load in progress, and a simulated
// MV-510 visor on another as COM2, loaded from the visor screen (slowly, for
// the scene of a load in progress). It runs until it is stopped.
#include <sqlite3.h>
#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>

#include "control/firmcast_form.h"
#include "control/mac_steps.h"
#include "gui/datos_balanza_layout.h"
#include "gui/display_layout.h"
#include "gui/firmcast_layout.h"
#include "mac/mac_module.h"
#include "mac/mac_tables.h"
#include "gui/visor_layout.h"
#include "operator/operator_script.h"
#include "operator/scale_list_entry.h"
#include "platform/file_table.h"
#include "platform/linux/linux_machine.h"
#include "platform/linux/process_launcher.h"
#include "platform/linux/termios_port.h"
#include "platform/linux/unix_odbc.h"
#include "platform/program_folder.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_pump.h"
#include "platform/qt/screen_window.h"
#include "sim/ethernet_scale.h"
#include "sim/host/pty_device_host.h"
#include "sim/host/tcp_device_host.h"
#include "sim/numbered_scale.h"
#include "sim/visor_device.h"

namespace fs = std::filesystem;

namespace {

// One Intel HEX record of `count` bytes at `address` (type 00).
std::string dataRecord(unsigned address, unsigned count) {
    char text[64];
    unsigned sum = count + (address >> 8) + (address & 0xFF);
    std::string record = ":";
    std::snprintf(text, sizeof text, "%02X%04X00", count, address & 0xFFFF);
    record += text;
    for (unsigned i = 0; i < count; ++i) {
        unsigned byte = (address + i * 7) & 0xFF;
        sum += byte;
        std::snprintf(text, sizeof text, "%02X", byte);
        record += text;
    }
    std::snprintf(text, sizeof text, "%02X", (0x100 - (sum & 0xFF)) & 0xFF);
    return record + text;
}

// A Serie_N firmware file of `records` data records.
void writeFirmware(const fs::path& file, unsigned records) {
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out << ":020000020000FC\r\n";
    for (unsigned n = 0; n < records; ++n) out << dataRecord(n * 16, 16) << "\r\n";
    out << ":00000001FF\r\n";
}

// The demonstration drives: T: holds the level 1 folder of the Serie_N scales.
void makeDrives(const fs::path& root) {
    fs::remove_all(root);
    fs::path serieN = root / "T" / "Programas" / "Balanzas" / "Serie_N";
    for (const char* name : {"N-220 v3.14.hex", "N-220 v3.15.hex", "N-320 v1.07.hex",
                             "N-320 v1.08.hex", "N-520 v2.01.hex"})
        writeFirmware(serieN / name, 2400);
    fs::create_directories(serieN / "Anteriores");
    fs::create_directories(serieN / "Pruebas");
    fs::create_directories(root / "C" / "Firmware");
    writeFirmware(
        root / "T" / "Programas" / "Industrial" / "Visores" / "MV-510" / "MV510 v2.04.hex", 256);
    // A program folder without config.ini: the scale list starts empty.
    fs::create_directories(root / "Home");
    // The display screen's driver folder, its switches and its database, and
    // a display's firmware on C:.
    fs::create_directories(root / "Home" / "korvacom");
    std::ofstream(root / "Home" / "korvacom" / "Korctrl.txt", std::ios::binary)
        << "-v 19200\r\n-p COM1\r\n-m 0\r\n";
    fs::create_directories(root / "Home" / "Database");
    sqlite3* db = nullptr;
    sqlite3_open((root / "Home" / "Database" / "KorvaFirmcast.mdb").c_str(), &db);
    sqlite3_exec(db,
                 "CREATE TABLE DAT_Parametro (Parametro TEXT, ValorParametro TEXT);"
                 "INSERT INTO DAT_Parametro VALUES ('VERSION', 'D');",
                 nullptr, nullptr, nullptr);
    sqlite3_close(db);
    writeFirmware(root / "C" / "Display W-420 v2.10.hex", 300);
    writeFirmware(root / "C" / "Display W-420 v2.11.hex", 300);
}

using Scene = void (*)(fc::Firmcast&, fc::OperatorScript&);

bool on(fc::Firmcast& f, const fc::Control& control) {
    return f.loaded() && control.reachable();
}

void pick(fc::Firmcast& f, fc::OperatorScript& script, const char* group, const char* picture) {
    script.when([&f] { return on(f, f.Seleccion); }, "show the kind",
                [&f, group] { fc::operatorClick(f, group); });
    script.after(300, "click the model", [&f, picture] { fc::operatorClick(f, picture); });
}

void serieNOnCom1(fc::Firmcast& f, fc::OperatorScript& script) {
    pick(f, script, "optBalanzas", "Picture3");
    script.when([&f] { return on(f, f.frPuerto); }, "RS-232 on COM1",
                [&f] {
                    fc::operatorClick(f, "optrs232");
                    fc::operatorClick(f, "Option1");
                });
}

void fileStep(fc::Firmcast& f, fc::OperatorScript& script) {
    serieNOnCom1(f, script);
    script.after(300, "Next", [&f] { fc::operatorClick(f, "cmdAdelante"); });
    script.when([&f] { return on(f, f.File1) && f.File1.listCount() > 0; }, "the file",
                [&f] { fc::operatorSelectText(f, "File1", "N-220 v3.15.hex"); });
}

// Serie_W over Ethernet to the scale list, where Next starts the load.
void serieWOverEthernet(fc::Firmcast& f, fc::OperatorScript& script, bool adsl) {
    pick(f, script, "optBalanzas", "Picture4");
    script.when([&f] { return on(f, f.frPuerto); }, "Ethernet",
                [&f] { fc::operatorClick(f, "optEthernet"); });
    script.after(300, "Next", [&f] { fc::operatorClick(f, "cmdAdelante"); });
    script.when([&f] { return on(f, f.File1) && f.File1.listCount() > 0; }, "the file",
                [&f] { fc::operatorSelectText(f, "File1", "W-300 v2.04.hex"); });
    script.after(300, "Next", [&f] { fc::operatorClick(f, "cmdAdelante"); });
    script.when([&f] { return on(f, f.cmdSave); }, "Next on the list",
                [&f, adsl] {
                    if (adsl)
                        fc::operatorClick(f, "chkADSL");
                    fc::operatorClick(f, "cmdAdelante");
                });
}

// The visor screen opened from its picture, COM2 chosen, and the load
// started; the visor's speed makes the scene a load in progress or its end.
fc::Pump* scenePump = nullptr;
std::unique_ptr<fc::OperatorScript> visorScript;

void visorLoad(fc::Firmcast& f, fc::OperatorScript& script) {
    pick(f, script, "optVisores", "Picture12");
    visorScript = std::make_unique<fc::OperatorScript>(*scenePump);
    visorScript
        ->when([&f] { return f.visorScreen() != nullptr && f.visorScreen()->loaded(); },
               "the visor screen", [] {})
        .after(500, "COM2 and Load", [&f] {
            fc::frmCargaMV510& v = *f.visorScreen();
            fc::operatorClick(v, "Option2");
            fc::operatorClick(v, "optrs232");
            fc::operatorClick(v, "cmdAdelante");
        });
}

const std::map<std::string, Scene> kScenes = {
    {"model-scales", [](fc::Firmcast&, fc::OperatorScript&) {}},
    {"model-labellers",
     [](fc::Firmcast& f, fc::OperatorScript& script) {
         script.when([&f] { return on(f, f.Seleccion); }, "labellers",
                     [&f] { fc::operatorClick(f, "optEtiquetadoras"); });
     }},
    {"model-visors",
     [](fc::Firmcast& f, fc::OperatorScript& script) {
         script.when([&f] { return on(f, f.Seleccion); }, "visors",
                     [&f] { fc::operatorClick(f, "optVisores"); });
     }},
    {"boot-rom",
     [](fc::Firmcast& f, fc::OperatorScript& script) {
         script.when([&f] { return on(f, f.cmdCargaRomG); }, "the boot ROM of a G scale",
                     [&f] { fc::operatorClick(f, "cmdCargaRomG"); });
     }},
    {"way-rs232", serieNOnCom1},
    {"way-ethernet",
     [](fc::Firmcast& f, fc::OperatorScript& script) {
         pick(f, script, "optBalanzas", "Picture4");
         script.when([&f] { return on(f, f.frPuerto); }, "Ethernet",
                     [&f] { fc::operatorClick(f, "optEthernet"); });
     }},
    {"file", fileStep},
    // The display screen is shown by itself (see showDisplayScreen).
    {"display", [](fc::Firmcast&, fc::OperatorScript&) {}},
    {"scales",
     [](fc::Firmcast& f, fc::OperatorScript& script) {
         pick(f, script, "optBalanzas", "Picture4");
         script.when([&f] { return on(f, f.frPuerto); }, "Ethernet",
                     [&f] { fc::operatorClick(f, "optEthernet"); });
         script.after(300, "Next", [&f] { fc::operatorClick(f, "cmdAdelante"); });
         script.when([&f] { return on(f, f.File1); }, "Next on the file step",
                     [&f] { fc::operatorClick(f, "cmdAdelante"); });
         script.when([&f] { return on(f, f.cmdSave); }, "three scales",
                     [&f] {
                         fc::introduceListaBalanzas(
                             f, {"192.168.1.10", "192.168.1.11", "192.168.1.12"}, false);
                     });
     }},
    {"load",
     [](fc::Firmcast& f, fc::OperatorScript& script) {
         fileStep(f, script);
         script.after(300, "Next", [&f] { fc::operatorClick(f, "cmdAdelante"); });
     }},
    {"visor-load", visorLoad},
    {"visor-end", visorLoad},
    {"ethernet-load",
     [](fc::Firmcast& f, fc::OperatorScript& script) { serieWOverEthernet(f, script, false); }},
    {"ethernet-end",
     [](fc::Firmcast& f, fc::OperatorScript& script) { serieWOverEthernet(f, script, false); }},
    {"record-form",
     [](fc::Firmcast& f, fc::OperatorScript& script) { serieWOverEthernet(f, script, true); }},
};

// A Serie_W firmware file of two banks, for the Ethernet scenes.
void writeEthernetFirmware(const fs::path& file) {
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    for (unsigned bank : {0x4000u, 0x5000u}) {
        unsigned sum = 2 + 2 + (bank >> 8) + (bank & 0xFF);
        char record[32];
        std::snprintf(record, sizeof record, ":02000002%04X%02X\r\n", bank,
                      (0x100 - (sum & 0xFF)) & 0xFF);
        out << record;
        for (unsigned n = 0; n < 1024; ++n) out << dataRecord(n * 16, 16) << "\r\n";
    }
    out << ":00000001FF\r\n";
}

// Three scales on the loopback, one port for all, as config.ini names them.
struct LoopbackScales {
    // `slowErase`: each scale takes 2.5 s to erase, so that the load is
    // caught on its way.
    LoopbackScales(fc::Pump& pump, const fs::path& home, bool slowErase) {
        for (int i = 0; i < 3; ++i) {
            auto scale = std::make_unique<fc::EthernetScale>();
            scale->eraseTime = slowErase ? 2'500'000 : 800'000;
            scale->faults.wrongChecksum = i == 1;
            int port = hosts.empty() ? 0 : hosts.front()->port();
            hosts.push_back(std::make_unique<fc::TcpDeviceHost>(
                pump, *scale, "127.0.0." + std::to_string(i + 1), port));
            scales.push_back(std::move(scale));
        }
        std::ofstream ini(home / "config.ini", std::ios::binary);
        ini << "[Balanzas]\r\nNumero=3\r\n[Direcciones]\r\n";
        for (int i = 1; i <= 3; ++i) ini << "dir" << i << "=127.0.0." << i << "\r\n";
        ini << "[Puertos]\r\nTx=" << hosts.front()->port() << "\r\n";
    }
    std::vector<std::unique_ptr<fc::EthernetScale>> scales;
    std::vector<std::unique_ptr<fc::TcpDeviceHost>> hosts;
};

// Message boxes answered at once, for the scene that shows the record form
// rather than the boxes before it.
class AnsweringDialogs : public fc::QtDialogs {
  public:
    using fc::QtDialogs::QtDialogs;
    int msgBox(const std::string&, int, const std::string&) override { return fc::mb::kOk; }
};

}  // namespace

// The graphic display's load screen in its own window, on RS-232 with a
// display's file chosen, as cmdDisplayGrafico shows it from the way step.
int showDisplayScreen(fc::Firmcast& form, fc::QtPump& pump) {
    fc::frmCargaDisplayGrafico display(form.services(), form.common(), {});
    display.Form_Load();
    fc::ScreenWindow window(display, pump);
    display.load();
    window.show();
    fc::operatorClick(display, "optrs232");
    fc::operatorSelectText(display, "File1", "Display W-420 v2.11.hex");
    for (;;) pump.doEvents();
}

int main(int argc, char** argv) {
    auto scene = argc == 2 ? kScenes.find(argv[1]) : kScenes.end();
    if (scene == kScenes.end()) {
        std::cerr << "usage: firmcast_screens SCENE\nscenes:";
        for (const auto& [name, _] : kScenes) std::cerr << " " << name;
        std::cerr << "\n";
        return 2;
    }
    int qtArgc = 1;
    QApplication application(qtArgc, argv);
    QApplication::setApplicationName(fc::kAppTitle);
    const fs::path root = fs::temp_directory_path() / "firmcast-screens";
    makeDrives(root);
    fc::LinuxMachine machine(
        fc::Drives({{'c', (root / "C").string()}, {'t', (root / "T").string()}}));

    fc::QtPump pump;
    scenePump = &pump;
    fc::NumberedScale::Config config;
    config.eraseTime = 1'500'000;
    fc::NumberedScale scale(config);
    fc::PtyDeviceHost line(pump, scale);
    setenv("FIRMCAST_COM1", line.ttyPath().c_str(), 1);
    fc::VisorBootLoader::Config visorConfig;
    if (std::string(argv[1]) == "visor-load")
        visorConfig.programTime = 150'000;
    fc::VisorSerial visor(visorConfig);
    fc::PtyDeviceHost visorLine(pump, visor);
    setenv("FIRMCAST_COM2", visorLine.ttyPath().c_str(), 1);

    const std::string name = argv[1];
    const bool ethernet = name.rfind("ethernet", 0) == 0 || name == "record-form";
    std::unique_ptr<LoopbackScales> loopback;
    if (ethernet) {
        // Level 1 looks in T:'s Serie_W folder, level 3 in C:\.
        writeEthernetFirmware(root / "T" / "Programas" / "Balanzas" / "Serie_W" /
                              "W-300 v2.04.hex");
        writeEthernetFirmware(root / "C" / "W-300 v2.04.hex");
        loopback = std::make_unique<LoopbackScales>(pump, root / "Home", name == "ethernet-load");
    }
    std::unique_ptr<fc::QtDialogs> shownDialogs = name == "record-form"
                                                      ? std::make_unique<AnsweringDialogs>(pump)
                                                      : std::make_unique<fc::QtDialogs>(pump);
    fc::QtDialogs& dialogs = *shownDialogs;
    fc::TermiosPortOpener serialPorts;
    fc::FileTable files;
    fc::LinuxProcessLauncher launcher(machine.drives);
    fc::Firmcast form(
        machine.services(pump, dialogs, serialPorts, files, (root / "Home").string()));
    form.hooks().startProgram = [&launcher](const std::string& c) { return launcher.start(c); };
    fc::registerFirmcastLayout();
    fc::registerDisplayLayout();
    if (scene->first == "display")
        return showDisplayScreen(form, pump);
    fc::registerDatosBalanzaLayout();
    // The record form's register: a SQLite file with the scale's row.
    fc::UnixOdbcEnvironment odbc;
    fc::MacModule mac{form.common(), odbc,
                      "DRIVER={SQLite3};Database=" + (root / "Home" / "mac.db").string() + ";",
                      nullptr, nullptr};
    if (name == "record-form") {
        auto bd = odbc.openConnection(mac.origen);
        fc::CreaTablasMac(*bd);
        fc::wireMacSteps(form, mac);
    }
    fc::registerVisorLayout();
    fc::ScreenWindow window(form, pump);
    fc::OperatorScript script(pump);
    scene->second(form, script);
    try {
        form.Form_Load(ethernet && name != "record-form" ? "3" : "1");
    } catch (const fc::ProgramEnd& end) {
        return end.exitStatus;
    }
}
