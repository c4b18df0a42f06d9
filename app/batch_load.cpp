#include "app/batch_load.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>

#include "app/batch_exit.h"
#include "app/batch_parallel.h"
#include "app/batch_progress.h"
#include "app/batch_record_form.h"
#include "app/batch_visor.h"
#include "app/batch_world.h"
#include "app/mac_station.h"
#include "app/port_notices.h"
#include "common/error_log.h"
#include "firmware/file_check.h"
#include "operator/model_choice.h"
#include "operator/operator_script.h"
#include "operator/scale_list_entry.h"
#include "platform/ipv4_text.h"
#include "platform/linux/linux_record_station.h"
#include "platform/own_rows_network.h"
#include "platform/program_folder.h"
#include "record/load_recorder.h"
#include "record/record_setting.h"

namespace fc::batch {

namespace {

// The firmware file's folder is shown to the file step as drive B:, which
// nothing else uses, so any path of this machine can be chosen from the
// file list as an operator would.
constexpr const char* kFileDrive = "b:";

struct LoadEnded {};

// The run stopped where the screen waits for an operator the options have
// nothing more for; `where` says so in one line.
struct LoadStopped {
    std::string where;
};

class LoadScript {
  public:
    LoadScript(const Options& options, BatchWorld& world, Firmcast& form, std::ostream& out,
               std::ostream& err, SerialLoadFollower* follower)
        : options_(options),
          world_(world),
          form_(form),
          out_(out),
          err_(err),
          follower_(follower),
          script_(world.pump) {}

    // Lays out the whole operator's part, pass after pass, and ends the run
    // where the screen waits for something the script will never do.
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
                         "the scale list", [this] { enterScaleList(); });
        }
        planPassEnd(1);
        // The record form is answered wherever it opens: the script's own
        // steps wait for the end of the pass meanwhile.
        script_.endWhenStuck([this](const std::string&) {
            if (recordForms_.answer())
                return;
            throw LoadStopped{whereItStopped()};
        });
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

    void enterScaleList() {
        if (!options_.scales.empty() || options_.save)
            introduceListaBalanzas(form_, options_.scales, options_.save);
        if (options_.adsl && form_.chkADSL.value() == 0)
            operatorClick(form_, "chkADSL");
        operatorClick(form_, "cmdAdelante");
    }

    // At the end of pass `pass`: judge it, then go on to the next or stop.
    void planPassEnd(int pass) {
        Firmcast* f = &form_;
        script_.when([f] { return f->cmdAgain.reachable(); },
                     "pass " + std::to_string(pass) + " ended", [this, pass] { passEnded(pass); });
    }

    void passEnded(int pass) {
        bool ready = options_.ethernet ? reportScales(form_, out_) : false;
        const auto& boxes = world_.dialogs.boxes();
        for (std::size_t i = boxesSeen_; i < boxes.size(); ++i)
            ready = ready || boxes[i].text == "The scale is ready";
        std::string lastBox = boxes.size() > boxesSeen_ ? boxes.back().text : std::string();
        boxesSeen_ = boxes.size();
        pass_ = pass;
        if (!ready)
            ++failed_;
        if (follower_ != nullptr)
            follower_->passEnded(pass, ready, lastBox);
        if (pass >= options_.passes)
            throw LoadEnded{};
        if (form_.optProduccion.value() != 1)
            operatorClick(form_, "optProduccion");
        if (follower_ != nullptr)
            follower_->nextPass(pass + 1);
        operatorClick(form_, "cmdAgain");
        Firmcast* f = &form_;
        script_.when([f] { return f->paso_asistente == 3 && f->cmdAdelante.reachable(); },
                     "next device", [this] { operatorClick(form_, "cmdAdelante"); });
        planPassEnd(pass + 1);
    }

    // "stopped on step 1 (the connection): the last box was "Error at port COM1"".
    std::string whereItStopped() const {
        std::string where;
        if (const Screen* modal = world_.dialogs.modalScreen()) {
            where = "stopped on the screen \"" + modal->caption() + "\"";
        } else if (form_.esperando_otra) {
            where =
                "stopped at the end of pass " + std::to_string(pass_ + 1) + " (the wait for Again)";
        } else {
            where =
                "stopped on step " + std::to_string(form_.paso_asistente) + " (" + stepName() + ")";
        }
        const auto& boxes = world_.dialogs.boxes();
        if (boxes.empty())
            return where + ": no box was shown";
        return where + ": the last box was \"" + boxes.back().text + "\"";
    }

    std::string stepName() const {
        switch (form_.paso_asistente) {
            case 0:
                return "the model";
            case 1:
                return "the connection";
            case 2:
                return "the firmware file";
            case 3:
                return form_.frBalanzasEth.visible() ? "the scale list" : "the next device";
            default:
                return "the load";
        }
    }

    const Options& options_;
    BatchWorld& world_;
    Firmcast& form_;
    std::ostream& out_;
    std::ostream& err_;
    RecordFormAnswers recordForms_{form_, world_.dialogs, options_.serials,
                                   [this](const std::string& why) { throw LoadStopped{why}; }};
    SerialLoadFollower* follower_;
    OperatorScript script_;
    std::size_t boxesSeen_ = 0;
    int failed_ = 0;
    int pass_ = 0;  // the last pass that ended
};

// The lines of a text file, the last one counted without its line end.
long countLines(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    long lines = 0;
    char last = '\n';
    for (char c; in.get(c); last = c) lines += c == '\n' ? 1 : 0;
    return lines + (last != '\n' ? 1 : 0);
}

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

// The record of the devices loaded, when the options or config.ini name a
// file for it.
std::unique_ptr<LoadRecorder> recorderFor(const Options& options, BatchWorld& world, Firmcast& form,
                                          RecordStation& station, std::ostream& err) {
    const std::string path =
        options.record.empty() ? configuredRecordFile(programFolder()) : options.record;
    if (path.empty())
        return nullptr;
    auto recorder = std::make_unique<LoadRecorder>(form, station, path);
    recorder->onWriteFailure = [&err, path](const std::string& why) {
        err << "firmcast-batch: --record " << path << ": " << why << std::endl;
    };
    LoadRecorder* told = recorder.get();
    world.notedDialogs.onBox = [told](const std::string& text) { told->boxShown(text); };
    return recorder;
}

}  // namespace

int runLoad(const Options& options, std::ostream& out, std::ostream& err) {
    std::filesystem::path file = std::filesystem::absolute(options.file);
    if (std::optional<std::string> why = unreadable(file)) {
        err << "firmcast-batch: --file " << options.file << ": " << *why << std::endl;
        return kExitBadUsage;
    }
    if (options.checkFile) {
        FileCheck check = checkFirmwareFile(file.string());
        if (check.firstBadLine != 0) {
            err << "firmcast-batch: --file " << options.file << ": " << fileCheckText(check)
                << std::endl;
            return kExitBadUsage;
        }
    }
    if (options.model == 7)
        return runVisorLoad(options, out, err);
    if (options.parallel > 1)
        return runParallelLoad(options, out, err);
    setenv("FIRMCAST_DRIVE_B", file.parent_path().c_str(), 1);

    BatchWorld world(out);
    // A worker of a parallel run shares the address table with the others:
    // it deletes only its own scale's rows.
    std::unique_ptr<OwnRowsNetwork> ownRows;
    if (options.worker != 0) {
        std::vector<Ipv4> own;
        if (std::optional<Ipv4> ip = parseDottedIpv4(options.scales.front()))
            own.push_back(*ip);
        ownRows = std::make_unique<OwnRowsNetwork>(world.machine.network, own);
        world.network = ownRows.get();
    }
    Firmcast form(world.services());
    if (options.worker != 0)
        form.primera_balanza = static_cast<Integer>(options.worker);
    PortNotices portNotices(world.serialPorts.machinePorts(), form);
    // A port that will not open is named with its device and the system's
    // reason, on standard error and in the error log; the box itself says
    // "Error at port COMn" as it always has.
    world.serialPorts.onFailure = [&err, &form](int com, const std::string& device,
                                                const std::string& reason) {
        std::string text = "COM" + std::to_string(com) + " (" + device + "): " + reason;
        err << "firmcast-batch: " << text << std::endl;
        EscribirLog(form.common(), "lanza_linea", text, 0);
    };
    std::unique_ptr<ProgressReport> report =
        makeProgressReport(options.progress, err, isatty(STDERR_FILENO) != 0);
    std::unique_ptr<SerialLoadFollower> follower;
    if (!options.ethernet) {
        follower = std::make_unique<SerialLoadFollower>(
            form, *report, "COM" + std::to_string(options.com), countLines(file));
    }
    // The MAC addresses and the record form, as in the window.
    MacStation macStation(form);
    LinuxRecordStation station;
    std::unique_ptr<LoadRecorder> recorder = recorderFor(options, world, form, station, err);
    LoadScript script(options, world, form, out, err, follower.get());
    script.plan();
    try {
        form.Form_Load(options.level);
    } catch (const LoadEnded&) {
        return script.passesFailed() == 0 ? kExitOk : kExitDeviceFailed;
    } catch (const LoadStopped& stopped) {
        err << "firmcast-batch: " << stopped.where << std::endl;
        return kExitDeviceFailed;
    } catch (const ProgramEnd& end) {
        return end.exitStatus == 0 ? kExitDeviceFailed : end.exitStatus;
    } catch (const OperatorCannot& cannot) {
        err << "firmcast-batch: " << cannot.what() << std::endl;
        return kExitDeviceFailed;
    }
    return kExitDeviceFailed;
}

}  // namespace fc::batch
