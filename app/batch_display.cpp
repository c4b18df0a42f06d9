#include "app/batch_display.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "app/batch_exit.h"
#include "app/batch_world.h"
#include "operator/model_choice.h"
#include "operator/operator_script.h"
#include "platform/linux/process_launcher.h"

namespace fc::batch {

namespace {

// The firmware file's folder, shown to the display screen as drive B:.
constexpr const char* kFileDrive = "b:";

// The load has ended; Label2 says how.
struct DisplayEnded {};

struct DisplayStopped {
    std::string where;
};

// The operator's part on the display screen.
void chooseAndLoad(frmCargaDisplayGrafico& d, const Options& o) {
    if (o.ethernet) {
        operatorClick(d, "optEthernet");
        d.txtDirTCP.setText(o.displayIp);
    } else {
        operatorClick(d, "optrs232");
        operatorClick(d, "Option" + std::to_string(o.com));
        if (!o.speed.empty())
            operatorSelectText(d, "cmbvelocidades", o.speed);
    }
    if (!o.logicAddress.empty())
        operatorSelectText(d, "cmbDirLogica", o.logicAddress);
    d.Drive1.setDrive(kFileDrive);
    operatorSelectText(d, "File1", std::filesystem::path(o.file).filename().string());
    operatorClick(d, "cmdAdelante");
    throw DisplayEnded{};
}

std::string lastBox(const BatchWorld& world) {
    const auto& boxes = world.dialogs.boxes();
    return boxes.empty() ? "no box was shown" : "the last box was \"" + boxes.back().text + "\"";
}

}  // namespace

int runDisplay(const Options& options, std::ostream& out, std::ostream& err) {
    std::filesystem::path file = std::filesystem::absolute(options.file);
    std::error_code ec;
    if (!std::filesystem::is_regular_file(file, ec) || !std::ifstream(file)) {
        err << "firmcast-batch: --file " << options.file << ": cannot be read" << std::endl;
        return kExitBadUsage;
    }
    setenv("FIRMCAST_DRIVE_B", file.parent_path().c_str(), 1);
    BatchWorld world(out);
    LinuxProcessLauncher launcher(world.machine.drives);
    LoadHooks hooks;
    hooks.startProgram = [&launcher](const std::string& line) { return launcher.start(line); };
    Firmcast form(world.services(), hooks);
    OperatorScript onMain(world.pump), onDisplay(world.pump);
    Firmcast* f = &form;
    onMain.when([f] { return f->Seleccion.reachable(); }, "choose the first scale",
                [f] { operatorPickModel(*f, 0); });
    onMain.when([f] { return f->cmdDisplayGrafico.reachable(); }, "open the display screen",
                [f] { operatorClick(*f, "cmdDisplayGrafico"); });
    onDisplay.when([f] { return f->displayScreen() && f->displayScreen()->loaded(); },
                   "load the display",
                   [f, &options] { chooseAndLoad(*f->displayScreen(), options); });
    // One watch serves the pump: the main script's. While the display screen
    // is up, the step that opened it is still acting and the display's own
    // script has the operator's hands.
    onMain.endWhenStuck([&world, f](const std::string& next) {
        if (f->displayScreen() && f->displayScreen()->loaded())
            return;
        throw DisplayStopped{"stopped before \"" + next + "\": " + lastBox(world)};
    });
    int status = kExitDeviceFailed;
    try {
        form.Form_Load(options.level);
    } catch (const DisplayEnded&) {
        status =
            form.displayScreen()->Label2.caption() == "Loaded OK" ? kExitOk : kExitDeviceFailed;
    } catch (const DisplayStopped& stopped) {
        err << "firmcast-batch: " << stopped.where << std::endl;
    } catch (const ProgramEnd& end) {
        status = end.exitStatus == kExitFatalTrap ? kExitFatalTrap : kExitDeviceFailed;
    } catch (const OperatorCannot& cannot) {
        err << "firmcast-batch: " << cannot.what() << std::endl;
    }
    if (frmCargaDisplayGrafico* d = form.displayScreen())
        out << "label: " << d->Label2.caption() << std::endl;
    return status;
}

}  // namespace fc::batch
