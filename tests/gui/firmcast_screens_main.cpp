// firmcast_screens: the main screen in its window, walked by an operator
// script to the scene named on the command line and left there, for the
// screenshots of the documentation (scripts/firmcast_screenshots.sh).
//
//   firmcast_screens model-scales | model-labellers | model-visors |
//                    way-rs232 | way-ethernet | file | scales | load |
//                    visor-load | visor-end
//
// It runs at level 1 on demonstration drives it makes itself (C: and T:,
// with the Serie_N firmware folder of that level) under the temporary
// folder, and keeps a simulated Serie_N scale on a real pseudo-terminal as
// COM1, so that the load scene is a real load in progress, and a simulated
// MV-510 visor on another as COM2, loaded from the visor screen (slowly, for
// the scene of a load in progress). It runs until it is stopped.
#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>

#include "control/firmcast_form.h"
#include "gui/firmcast_layout.h"
#include "gui/visor_layout.h"
#include "operator/operator_script.h"
#include "operator/scale_list_entry.h"
#include "platform/file_table.h"
#include "platform/linux/linux_machine.h"
#include "platform/linux/process_launcher.h"
#include "platform/linux/termios_port.h"
#include "platform/program_folder.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_pump.h"
#include "platform/qt/screen_window.h"
#include "sim/host/pty_device_host.h"
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
};

}  // namespace

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

    fc::QtDialogs dialogs(pump);
    fc::TermiosPortOpener serialPorts;
    fc::FileTable files;
    fc::LinuxProcessLauncher launcher(machine.drives);
    fc::Firmcast form(
        machine.services(pump, dialogs, serialPorts, files, (root / "Home").string()));
    form.hooks().startProgram = [&launcher](const std::string& c) { return launcher.start(c); };
    fc::registerFirmcastLayout();
    fc::registerVisorLayout();
    fc::ScreenWindow window(form, pump);
    fc::OperatorScript script(pump);
    scene->second(form, script);
    try {
        form.Form_Load("1");
    } catch (const fc::ProgramEnd& end) {
        return end.exitStatus;
    }
}
