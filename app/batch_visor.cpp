#include "app/batch_visor.h"

#include <cstdlib>
#include <filesystem>

#include "app/batch_exit.h"
#include "app/batch_world.h"
#include "operator/model_choice.h"
#include "operator/operator_script.h"

namespace fc::batch {

namespace {

// The file's folder stands as drive B:, as for the other loads.
constexpr const char* kFileDrive = "b:";
constexpr int kVisorCode = 7;

struct VisorLoadEnded {
    int status;
};

// Clears a text box and types `text` into it, as an operator does over what
// the box held.
void typeOver(frmCargaMV510& visor, const std::string& name, const std::string& text) {
    static_cast<TextBox&>(reach(visor, name)).setText("");
    operatorType(visor, name, text);
}

// The operator's part on the visor screen, once it is shown.
void operateVisor(const Options& options, frmCargaMV510& visor) {
    if (options.udpAddress.empty()) {
        operatorClick(visor, "Option" + std::to_string(options.com));
        if (!options.speed.empty())
            operatorSelectText(visor, "cmbvelocidades", options.speed);
        operatorClick(visor, "optrs232");
    } else {
        operatorClick(visor, "optEthernet");
        typeOver(visor, "txtDirTCP", options.udpAddress);
        typeOver(visor, "TxtPort", options.udpPort);
    }
    visor.Drive1.setDrive(kFileDrive);
    const std::string name = std::filesystem::path(options.file).filename().string();
    operatorSelectText(visor, "File1", name);
    operatorClick(visor, "cmdAdelante");
}

}  // namespace

int runVisorLoad(const Options& options, std::ostream& out, std::ostream& err) {
    const std::filesystem::path file = std::filesystem::absolute(options.file);
    setenv("FIRMCAST_DRIVE_B", file.parent_path().c_str(), 1);
    BatchWorld world(out);
    Firmcast form(world.services());
    OperatorScript script(world.pump);
    script.when([&form] { return form.Seleccion.reachable(); }, "choose the visor",
                [&form] { operatorPickModel(form, kVisorCode); });
    // The visor screen opens inside the picture's click, which is still
    // acting: its part is a script of its own. No watch ends the run, for
    // the picture always opens the screen.
    OperatorScript onVisor(world.pump);
    onVisor.when([&form] { return form.visorScreen() != nullptr && form.visorScreen()->loaded(); },
                 "load the visor",
                 [&] {
                     frmCargaMV510& visor = *form.visorScreen();
                     operateVisor(options, visor);
                     out << "label: " << visor.Label2.caption() << std::endl;
                     throw VisorLoadEnded{
                         visor.Label2.caption() == "Firmcast OK" ? kExitOk : kExitDeviceFailed};
                 });
    try {
        form.Form_Load(options.level);
    } catch (const VisorLoadEnded& ended) {
        return ended.status;
    } catch (const OperatorCannot& cannot) {
        err << "firmcast-batch: " << cannot.what() << std::endl;
        return kExitDeviceFailed;
    } catch (const ProgramEnd& end) {
        return end.exitStatus == 0 ? kExitDeviceFailed : end.exitStatus;
    }
    return kExitDeviceFailed;
}

}  // namespace fc::batch
