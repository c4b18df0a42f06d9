#include "support/display_rig.h"

#include <sqlite3.h>

#include <fstream>
#include <iterator>

#include "support/intel_hex.h"

namespace fc::test {

namespace {

void makeDatabase(const std::filesystem::path& file) {
    std::filesystem::create_directories(file.parent_path());
    sqlite3* db = nullptr;
    sqlite3_open(file.c_str(), &db);
    sqlite3_exec(db,
                 "CREATE TABLE DAT_Parametro (Parametro TEXT, ValorParametro TEXT);"
                 "INSERT INTO DAT_Parametro VALUES ('VERSION', 'D');",
                 nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

}  // namespace

std::string displayFirmware(int dataLines, int seed) {
    std::vector<std::string> lines;
    for (int i = 0; i < dataLines; ++i)
        lines.push_back(intelRecord(i * 16, 0, patternBytes(seed + i, 16)));
    lines.push_back(endRecord());
    return hexFile(lines);
}

DisplayRig::DisplayRig(sim::DriverFaults driverFaults, sim::DisplayFaults displayFaults)
    : drives({{'c', driveC.path().string()}}),
      services{pump,   dialogs,    serial, files,    home.path().string(),
               drives, fileSystem, kernel, calendar, databases, network} {
    std::filesystem::current_path(currentFolder.path());
    home.write("korvacom/Korctrl.txt", kSwitchesShipped);
    makeDatabase(home.path() / "Database/KorvaFirmcast.mdb");
    driver = std::make_unique<sim::KorvacomOnPump>(pump, kernel, home.path() / "korvacom",
                                                   driverFaults, displayFaults);
    form = std::make_unique<frmCargaDisplayGrafico>(
        services, common, [this](const std::string& commandLine) -> long {
            started.push_back(commandLine);
            ctrlAtStart.push_back(std::filesystem::exists(korvacom("ctrl.txt")));
            driver->launch();
            return 4242;
        });
    form->Label2.addObserver([this](Control& c) {
        if (label2.empty() || label2.back() != c.caption())
            label2.push_back(c.caption());
    });
    form->linea_comandos = "";
    form->Form_Load();
    form->load();
}

DisplayRig::~DisplayRig() {
    std::error_code ec;
    std::filesystem::current_path(formerFolder, ec);
}

std::filesystem::path DisplayRig::korvacom(const std::string& name) const {
    return home.path() / "korvacom" / name;
}

std::string DisplayRig::read(const std::filesystem::path& file) const {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void DisplayRig::chooseFirmware(const std::string& name, const std::string& content) {
    driveC.write(name, content);
    form->Dir1.setPath("C:\\");
    form->Dir1_Change();
    operatorSelectText(*form, "File1", name);
}

void DisplayRig::chooseEthernet(const std::string& ip) {
    operatorClick(*form, "optEthernet");
    form->txtDirTCP.setText(ip);
}

void DisplayRig::chooseSerial(int port) {
    operatorClick(*form, "optrs232");
    operatorClick(*form, "Option" + std::to_string(port));
}

void DisplayRig::load() {
    operatorClick(*form, "cmdAdelante");
}

}  // namespace fc::test
