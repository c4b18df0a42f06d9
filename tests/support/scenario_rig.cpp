#include "support/scenario_rig.h"

#include <cstdlib>
#include <fstream>
#include <random>

namespace fc::test {

TempFolder::TempFolder() {
    std::random_device random;
    path_ = std::filesystem::temp_directory_path() /
            ("firmcast-test-" + std::to_string(random()) + std::to_string(random()));
    std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
}

std::string TempFolder::write(const std::string& relative, const std::string& content) const {
    std::filesystem::path file = path_ / relative;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out << content;
    return file.string();
}

ScenarioRig::ScenarioRig() {
    addDrive('c', driveC.path());
}

void ScenarioRig::addDrive(char letter, const std::filesystem::path& folder) {
    driveRoots_[letter] = folder.string();
}

Services ScenarioRig::servicesWith(SerialPortOpener& ports) {
    if (!drives_)
        drives_ = std::make_unique<Drives>(driveRoots_);
    Network& seen = networkSeen != nullptr ? *networkSeen : network;
    return Services{pump,     dialogs,    ports,  files,    home.path().string(),
                    *drives_, fileSystem, kernel, calendar, databases, seen};
}

Firmcast& ScenarioRig::form() {
    if (!form_)
        form_ = std::make_unique<Firmcast>(servicesWith(serial), hooks);
    return *form_;
}

int ScenarioRig::run(const std::string& commandLine) {
    try {
        form().Form_Load(commandLine);
    } catch (const ProgramEnd& end) {
        return end.exitStatus;
    } catch (const ScenarioDone&) {
        return -1;
    }
}

void ScenarioRig::click(const std::string& control) {
    operatorClick(form(), control);
}

void ScenarioRig::select(const std::string& control, int index) {
    operatorSelect(form(), control, index);
}

void ScenarioRig::selectText(const std::string& control, const std::string& text) {
    operatorSelectText(form(), control, text);
}

OperatorScript& ScenarioRig::whenStep(Integer step, const std::string& what,
                                      std::function<void()> act) {
    Firmcast* f = &form();
    return script.when([f, step] { return f->paso_asistente == step; }, what, std::move(act));
}

OperatorScript& ScenarioRig::stopWhen(std::function<bool()> condition, const std::string& what) {
    return script.when(std::move(condition), what, [] { throw ScenarioDone{}; });
}

void ScenarioRig::scriptSerialLoad(int modelCode, int port, const std::string& fileName) {
    Firmcast* f = &form();
    script.when(
        [f] { return f->cmdAdelante.reachable() && f->paso_asistente == 0; }, "pick the model",
        [this, f, modelCode] {
            const char* group[] = {"optBalanzas",      "optBalanzas",      "optBalanzas",
                                   "optBalanzas",      "optEtiquetadoras", "optEtiquetadoras",
                                   "optEtiquetadoras", "optVisores",       "optEtiquetadoras"};
            click(group[modelCode]);
            operatorClick(*f, f->pictureOf(modelCode).name());
        });
    script.when([f] { return f->frPuerto.reachable(); }, "choose RS-232",
                [this] { click("optrs232"); });
    script.after(10, "choose the port", [this, port] { click("Option" + std::to_string(port)); });
    script.after(10, "Next", [this] { click("cmdAdelante"); });
    script.when([f] { return f->paso_asistente == 2 && f->File1.reachable(); }, "pick the file",
                [this, fileName] { selectText("File1", fileName); });
    script.after(10, "Next", [this] { click("cmdAdelante"); });
}

}  // namespace fc::test
