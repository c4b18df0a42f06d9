#include "app/batch_parallel.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <sstream>

#include "app/batch_exit.h"
#include "control/catalogue.h"
#include "platform/linux/child_process.h"
#include "platform/linux/linux_record_station.h"
#include "platform/program_folder.h"
#include "record/load_record.h"
#include "record/record_setting.h"

namespace fc::batch {

namespace {

volatile std::sig_atomic_t stopAsked = 0;

extern "C" void askToStop(int) {
    stopAsked = 1;
}

// SIGINT and SIGTERM stop the run: the workers are told to end, and the
// scales they had are reported failed. Put back as they were afterwards.
class StopSignals {
  public:
    StopSignals() {
        stopAsked = 0;
        struct sigaction action {};
        action.sa_handler = askToStop;
        sigemptyset(&action.sa_mask);
        sigaction(SIGINT, &action, &oldInt_);
        sigaction(SIGTERM, &action, &oldTerm_);
    }
    ~StopSignals() {
        sigaction(SIGINT, &oldInt_, nullptr);
        sigaction(SIGTERM, &oldTerm_, nullptr);
    }
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

  private:
    struct sigaction oldInt_ {};
    struct sigaction oldTerm_ {};
};

std::string selfProgram() {
    std::error_code ec;
    std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::string("firmcast-batch") : self.string();
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

// One scale of the list and the worker that loads it.
struct Worker {
    std::size_t index = 0;  // in the list, from 0
    std::string ip;
    std::unique_ptr<ChildProcess> child;
    std::string start;  // UTC, for the record of a worker that ends without one
    std::chrono::steady_clock::time_point startTime;
    std::vector<std::string> scaleLines;  // "scale <n>: ..." by pass
    int waitStatus = 0;
    bool ran = false;
};

class ParallelRun {
  public:
    ParallelRun(const Options& options, std::ostream& out, std::ostream& err)
        : options_(options), out_(out), err_(err), recordFile_(recordFileOf(options)) {
        for (std::size_t i = 0; i < options.scales.size(); ++i) {
            workers_.push_back(Worker{});
            workers_.back().index = i;
            workers_.back().ip = options.scales[i];
        }
    }

    int run() {
        StopSignals signals;
        const std::size_t slots =
            std::min<std::size_t>(static_cast<std::size_t>(options_.parallel), workers_.size());
        std::size_t next = 0;
        while (next < workers_.size() || !running_.empty()) {
            if (stopAsked != 0 && !stopping_)
                stopAll();
            while (!stopping_ && running_.size() < slots && next < workers_.size())
                start(workers_[next++]);
            if (running_.empty())
                break;
            waitForOutput();
            reapDrained();
        }
        return report();
    }

  private:
    static std::string recordFileOf(const Options& options) {
        return options.record.empty() ? configuredRecordFile(programFolder()) : options.record;
    }

    void start(Worker& w) {
        w.start = station_.utcNow();
        w.startTime = std::chrono::steady_clock::now();
        w.ran = true;
        try {
            w.child =
                std::make_unique<ChildProcess>(selfProgram(), workerArguments(options_, w.index));
        } catch (const std::exception& e) {
            err_ << "firmcast-batch: scale " << w.index + 1 << ": " << e.what() << std::endl;
            finish(w, "the worker could not be started");
            return;
        }
        running_.push_back(&w);
    }

    void stopAll() {
        stopping_ = true;
        for (Worker* w : running_) w->child->signal(SIGTERM);
    }

    void waitForOutput() {
        std::vector<pollfd> fds;
        for (Worker* w : running_) {
            for (int fd : {w->child->outFd(), w->child->errFd()}) {
                if (fd >= 0)
                    fds.push_back(pollfd{fd, POLLIN, 0});
            }
        }
        // The time-out only lets a stop signal be seen while nothing is said.
        if (::poll(fds.data(), fds.size(), 200) <= 0)
            return;
        for (const pollfd& p : fds) {
            if (p.revents == 0)
                continue;
            for (Worker* w : running_) w->child->readFrom(p.fd);
        }
    }

    void reapDrained() {
        for (auto it = running_.begin(); it != running_.end();) {
            Worker& w = **it;
            if (!w.child->drained()) {
                ++it;
                continue;
            }
            w.waitStatus = w.child->wait();
            it = running_.erase(it);
            finish(w, "");
        }
    }

    // What a worker said goes on as it was said, its errors marked with its
    // scale; its scale lines are kept for the end.
    void finish(Worker& w, const std::string& whyNotStarted) {
        const std::string scale = "scale " + std::to_string(w.index + 1);
        if (w.child) {
            for (const std::string& line : linesOf(w.child->out())) {
                if (line.rfind(scale + ": ", 0) == 0)
                    w.scaleLines.push_back(line);
                else
                    out_ << line << "\n";
            }
            const std::string prefix = "firmcast-batch: ";
            for (std::string line : linesOf(w.child->err())) {
                if (line.rfind(prefix, 0) == 0)
                    line = line.substr(prefix.size());
                err_ << prefix << scale << ": " << line << "\n";
            }
            out_.flush();
        }
        if (w.scaleLines.size() < static_cast<std::size_t>(options_.passes))
            endedWithoutResult(w, whyNotStarted.empty()
                                      ? "the worker ended by " + endingText(w.waitStatus) +
                                            " before its scale's result"
                                      : whyNotStarted);
        err_ << "firmcast-batch: " << scale << " (" << w.ip << ") done" << std::endl;
    }

    static bool endedWell(const Worker& w) {
        return WIFEXITED(w.waitStatus) && (WEXITSTATUS(w.waitStatus) == kExitOk ||
                                           WEXITSTATUS(w.waitStatus) == kExitDeviceFailed);
    }

    // A worker killed or stopped before its scale's line: the scale failed,
    // and the record says so, since the worker could not.
    void endedWithoutResult(Worker& w, const std::string& why) {
        w.scaleLines.push_back("scale " + std::to_string(w.index + 1) + ": " + w.ip +
                               " failed: " + why);
        if (recordFile_.empty())
            return;
        LoadRecord r = baseRecord();
        r.start = w.start;
        r.end = station_.utcNow();
        r.port = w.ip;
        r.scale = static_cast<int>(w.index) + 1;
        r.pass = static_cast<int>(w.scaleLines.size());
        r.ok = false;
        r.info = why;
        r.durationMs = std::chrono::duration_cast<std::chrono::milliseconds>(
                           std::chrono::steady_clock::now() - w.startTime)
                           .count();
        std::string whyNot;
        if (!station_.appendLine(recordFile_, recordJson(r), whyNot))
            err_ << "firmcast-batch: --record " << recordFile_ << ": " << whyNot << std::endl;
    }

    LoadRecord baseRecord() {
        LoadRecord r;
        r.station = station_.stationName();
        r.level = options_.level;
        r.model = options_.model;
        r.modelName = catalogueEntry(options_.model).device;
        r.way = "ethernet";
        const std::filesystem::path file(options_.file);
        r.firmware = file.filename().string();
        if (!facts_)
            facts_ = station_.fileFacts(std::filesystem::absolute(file).string());
        if (*facts_) {
            r.firmwareSize = (*facts_)->size;
            r.firmwareSha256 = (*facts_)->sha256;
        }
        return r;
    }

    int report() {
        bool allOk = true, fatal = false;
        for (int pass = 0; pass < options_.passes; ++pass) {
            for (const Worker& w : workers_) {
                if (static_cast<std::size_t>(pass) >= w.scaleLines.size()) {
                    allOk = false;
                    continue;
                }
                const std::string& line = w.scaleLines[static_cast<std::size_t>(pass)];
                out_ << line << "\n";
                const std::string ok =
                    "scale " + std::to_string(w.index + 1) + ": " + w.ip + " ok: ";
                allOk = allOk && line.rfind(ok, 0) == 0;
            }
        }
        out_.flush();
        for (const Worker& w : workers_) {
            fatal = fatal || (w.ran && WIFEXITED(w.waitStatus) &&
                              WEXITSTATUS(w.waitStatus) == kExitFatalTrap);
            allOk = allOk && w.ran && endedWell(w) && WEXITSTATUS(w.waitStatus) == kExitOk;
        }
        if (fatal)
            return kExitFatalTrap;
        return allOk ? kExitOk : kExitDeviceFailed;
    }

    const Options& options_;
    std::ostream& out_;
    std::ostream& err_;
    std::string recordFile_;
    LinuxRecordStation station_;
    std::optional<std::optional<FileFacts>> facts_;
    std::vector<Worker> workers_;
    std::vector<Worker*> running_;
    bool stopping_ = false;
};

}  // namespace

std::vector<std::string> workerArguments(const Options& o, std::size_t i) {
    std::vector<std::string> args{"--model",
                                  std::to_string(o.model),
                                  "--ethernet",
                                  "--file",
                                  std::filesystem::absolute(o.file).string(),
                                  "--level",
                                  o.level,
                                  "--passes",
                                  std::to_string(o.passes),
                                  "--scales",
                                  o.scales.at(i),
                                  "--worker",
                                  std::to_string(i + 1),
                                  "--progress",
                                  "none"};
    if (o.adsl)
        args.push_back("--adsl");
    if (o.checkFile)
        args.push_back("--check-file");
    if (!o.record.empty()) {
        args.push_back("--record");
        args.push_back(std::filesystem::absolute(o.record).string());
    }
    // The n-th serial belongs to the n-th scale of the list, pass after pass.
    for (std::size_t at = i; at < o.serials.size(); at += o.scales.size()) {
        args.push_back("--serial");
        args.push_back(o.serials[at]);
    }
    return args;
}

int runParallelLoad(const Options& options, std::ostream& out, std::ostream& err) {
    ParallelRun run(options, out, err);
    return run.run();
}

}  // namespace fc::batch
