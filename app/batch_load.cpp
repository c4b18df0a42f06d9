#include "app/batch_load.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>

#include "app/batch_exit.h"
#include "app/batch_progress.h"
#include "app/batch_world.h"
#include "operator/model_choice.h"
#include "operator/operator_script.h"
#include "operator/scale_list_entry.h"

namespace fc::batch {

namespace {

// The firmware file's folder is shown to the file step as drive B:, which
// nothing else uses, so any path of this machine can be chosen from the
// file list as an operator would.
constexpr const char* kFileDrive = "b:";

struct LoadEnded {};

class LoadScript {
  public:
    LoadScript(const Options& options, BatchWorld& world, Firmcast& form, std::ostream& out)
        : options_(options), world_(world), form_(form), out_(out), script_(world.pump) {}

    // Lays out the whole operator's part, pass after pass.
    void plan() {
        Firmcast* f = &form_;
        script_.when([f] { return f->Seleccion.reachable(); }, "choose the model",
                     [this] { chooseModel(); });
        script_.when([f] { return f->frPuerto.reachable(); }, "choose the way",
                     [this] { chooseWay(); });
        script_.when([f] { return f->paso_asistente == 2 && f->File1.reachable(); },
                     "choose the file", [this] { chooseFile(); });
        if (options_.ethernet) {
            script_.when([f] { return f->paso_asistente == 3 && f->frBalanzasEth.visible(); },
                         "the scale list", [this] { stopBeforeEthernetLoad(); });
        }
        planPassEnd(1);
    }

    int passesFailed() const { return failed_; }

  private:
    void chooseModel() { operatorPickModel(form_, options_.model); }

    void chooseWay() {
        if (options_.ethernet) {
            operatorClick(form_, "optEthernet");
        } else {
            operatorClick(form_, "optrs232");
            operatorClick(form_, "Option" + std::to_string(options_.com));
        }
        operatorClick(form_, "cmdAdelante");
    }

    void chooseFile() {
        if (!options_.speed.empty())
            operatorSelectText(form_, "cmbvelocidades", options_.speed);
        form_.Drive1.setDrive(kFileDrive);
        std::string name = std::filesystem::path(options_.file).filename().string();
        operatorSelectText(form_, "File1", name);
        operatorClick(form_, "cmdAdelante");
    }

    void stopBeforeEthernetLoad() {
        if (!options_.scales.empty() || options_.save)
            introduceListaBalanzas(form_, options_.scales, options_.save);
        out_ << "firmcast-batch: the Ethernet load is not available in this build; stopped at the "
                "scale list"
             << std::endl;
        failed_ = options_.passes;
        throw LoadEnded{};
    }

    // At the end of pass `pass`: judge it, then go on to the next or stop.
    void planPassEnd(int pass) {
        Firmcast* f = &form_;
        script_.when([f] { return f->cmdAgain.reachable(); },
                     "pass " + std::to_string(pass) + " ended", [this, pass] { passEnded(pass); });
    }

    void passEnded(int pass) {
        bool ready = false;
        const auto& boxes = world_.dialogs.boxes();
        for (std::size_t i = boxesSeen_; i < boxes.size(); ++i)
            ready = ready || boxes[i].text == "The scale is ready";
        boxesSeen_ = boxes.size();
        if (!ready)
            ++failed_;
        if (pass >= options_.passes)
            throw LoadEnded{};
        if (form_.optProduccion.value() != 1)
            operatorClick(form_, "optProduccion");
        operatorClick(form_, "cmdAgain");
        Firmcast* f = &form_;
        script_.when([f] { return f->paso_asistente == 3 && f->cmdAdelante.reachable(); },
                     "next device", [this] { operatorClick(form_, "cmdAdelante"); });
        planPassEnd(pass + 1);
    }

    const Options& options_;
    BatchWorld& world_;
    Firmcast& form_;
    std::ostream& out_;
    OperatorScript script_;
    std::size_t boxesSeen_ = 0;
    int failed_ = 0;
};

// Why `file` cannot be loaded, or nothing when it can be read.
std::optional<std::string> unreadable(const std::filesystem::path& file) {
    std::error_code ec;
    std::filesystem::file_status status = std::filesystem::status(file, ec);
    if (ec)
        return ec.message();
    if (!std::filesystem::is_regular_file(status))
        return std::string(std::filesystem::is_directory(status) ? "a folder" : "not a file") +
               ", not a firmware file";
    std::ifstream in(file, std::ios::binary);
    if (!in)
        return std::string(std::strerror(errno));
    return std::nullopt;
}

}  // namespace

int runLoad(const Options& options, std::ostream& out, std::ostream& progress) {
    std::filesystem::path file = std::filesystem::absolute(options.file);
    if (std::optional<std::string> why = unreadable(file)) {
        progress << "firmcast-batch: --file " << options.file << ": " << *why << std::endl;
        return kExitBadUsage;
    }
    setenv("FIRMCAST_DRIVE_B", file.parent_path().c_str(), 1);

    BatchWorld world(out);
    Firmcast form(world.services());
    ProgressReport report(form.Barra, progress, isatty(STDERR_FILENO) != 0);
    LoadScript script(options, world, form, out);
    script.plan();
    try {
        form.Form_Load(options.level);
    } catch (const LoadEnded&) {
        return script.passesFailed() == 0 ? kExitOk : kExitDeviceFailed;
    } catch (const ProgramEnd& end) {
        return end.exitStatus == 0 ? kExitDeviceFailed : end.exitStatus;
    } catch (const OperatorCannot& cannot) {
        out << "firmcast-batch: " << cannot.what() << std::endl;
        return kExitDeviceFailed;
    }
    return kExitDeviceFailed;
}

}  // namespace fc::batch
