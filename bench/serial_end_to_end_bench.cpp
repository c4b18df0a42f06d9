// A serial load timed from end to end, as a user would time one: firmcast-batch
// loads a 64 KB image into firmcast-sim over a real pseudo-terminal, each in a
// process of its own, and the simulator's log of the frames it heard gives
// the time from the first data frame to the end of the load. The limit is
// the time the wire needs for the same characters in both directions: every
// frame after the first data frame, and every answer from the first data
// frame's to the one before the end, at the bits a character of the line's
// settings takes. Two loads:
//  - numbered, Serie_N (--model 1) at 57600,e,7,1 (10 bits a character):
//    4096 data records and the end record;
//  - banked, Serie_H (--model 2) at 19200,N,8,1 (10 bits a character):
//    4096 S2 lines over two banks, the bank command and the end command. The
//    device answers at 19200 only, so the loader finds it there after its
//    probe at 57600, before the first data frame. The simulator records a
//    bank at once (--bank-ms 0), so that only the line is left in the limit.
// Printed for each: the time, the wire's time, their ratio, and what each
// frame took beyond the wire (median, 99th percentile, the worst).
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/firmware_files.h"
#include "support/first_line_process.h"
#include "support/scenario_rig.h"

namespace {

namespace fs = std::filesystem;

// One frame of the simulator's log: when its last character arrived, and the
// frame as logged ("H<number>" and the record, or "#<index>" and the text).
struct LoggedFrame {
    double ms = 0;
    std::string tag;
    std::string text;
};

std::vector<LoggedFrame> readLog(const std::string& path) {
    std::vector<LoggedFrame> frames;
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream words(line);
        LoggedFrame f;
        std::string unit;
        words >> f.ms >> unit >> f.tag;
        std::getline(words, f.text);
        if (!f.text.empty() && f.text[0] == ' ')
            f.text.erase(0, 1);
        frames.push_back(f);
    }
    return frames;
}

// Characters of a frame on the wire and of the device's answer to it.
struct Dialect {
    int firstDataFrame;  // its place in the log
    std::size_t (*frameCharacters)(const LoggedFrame&);
    std::size_t (*answerCharacters)(const LoggedFrame&);
};

// "H" and four digits of number (five from 0x10000), then the record.
std::size_t numberedFrame(const LoggedFrame& f) {
    long number = std::stol(f.tag.substr(1));
    return (number >= 0x10000 ? 6 : 5) + f.text.size();
}

// One byte for a data record, two for any other.
std::size_t numberedAnswer(const LoggedFrame& f) {
    return f.text.size() >= 9 && f.text.substr(7, 2) == "00" ? 1 : 2;
}

// A line and its carriage return, or a control byte (logged as "<05>").
std::size_t bankedFrame(const LoggedFrame& f) {
    return f.text.size() == 4 && f.text[0] == '<' ? 1 : f.text.size() + 1;
}

std::size_t bankedAnswer(const LoggedFrame&) {
    return 1;
}

double percentile(std::vector<double> values, double p) {
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(p * static_cast<double>(values.size() - 1))];
}

int runBatch(const std::string& bin, const std::string& tty, const std::vector<std::string>& args) {
    std::fflush(stdout);
    pid_t pid = fork();
    if (pid == 0) {
        setenv("FIRMCAST_COM1", tty.c_str(), 1);
        std::vector<std::string> words{bin + "/firmcast-batch"};
        words.insert(words.end(), args.begin(), args.end());
        std::vector<char*> argv;
        for (auto& w : words) argv.push_back(w.data());
        argv.push_back(nullptr);
        execv(argv[0], argv.data());
        _exit(127);
    }
    int raw = 0;
    waitpid(pid, &raw, 0);
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
}

struct Load {
    const char* key;
    const char* name;
    std::vector<std::string> simArgs;
    std::vector<std::string> batchArgs;
    int baud;
    int bitsPerCharacter;
    Dialect dialect;
};

bool measure(const std::string& bin, const fs::path& folder, const Load& load) {
    std::string log = (folder / (std::string(load.key) + ".log")).string();
    std::vector<std::string> simWords{bin + "/firmcast-sim"};
    simWords.insert(simWords.end(), load.simArgs.begin(), load.simArgs.end());
    simWords.insert(simWords.end(), {"--log", log});
    fc::FirstLineProcess sim(simWords);
    if (sim.firstLine().empty()) {
        std::fprintf(stderr, "%s: firmcast-sim gave no tty\n", load.name);
        return false;
    }
    int status = runBatch(bin, sim.firstLine(), load.batchArgs);
    sim.stop(SIGTERM);
    if (status != 0) {
        std::fprintf(stderr, "%s: firmcast-batch ended with status %d\n", load.name, status);
        return false;
    }
    std::vector<LoggedFrame> frames = readLog(log);
    const int first = load.dialect.firstDataFrame;
    if (static_cast<int>(frames.size()) < first + 2) {
        std::fprintf(stderr, "%s: only %zu frames in the log\n", load.name, frames.size());
        return false;
    }
    const double characterMs = 1000.0 * load.bitsPerCharacter / load.baud;
    double wireMs = 0;
    std::vector<double> beyond;  // microseconds a frame took beyond the wire
    for (std::size_t k = static_cast<std::size_t>(first) + 1; k < frames.size(); ++k) {
        std::size_t characters =
            load.dialect.frameCharacters(frames[k]) + load.dialect.answerCharacters(frames[k - 1]);
        double frameWireMs = static_cast<double>(characters) * characterMs;
        wireMs += frameWireMs;
        beyond.push_back(1000 * (frames[k].ms - frames[k - 1].ms - frameWireMs));
    }
    double tookMs = frames.back().ms - frames[static_cast<std::size_t>(first)].ms;
    std::printf("%s: %zu frames from the first data frame to the end\n", load.name,
                frames.size() - static_cast<std::size_t>(first));
    std::printf("  load %.3f s, wire %.3f s: %.1f %% of the wire's speed\n", tookMs / 1000,
                wireMs / 1000, 100 * wireMs / tookMs);
    std::printf("  beyond the wire, a frame: median %.0f us, p99 %.0f us, worst %.0f us\n",
                percentile(beyond, 0.5), percentile(beyond, 0.99), percentile(beyond, 1.0));
    return true;
}

}  // namespace

int main() {
    const std::string bin = fs::read_symlink("/proc/self/exe").parent_path().string();
    if (!fs::exists(bin + "/firmcast-sim") || !fs::exists(bin + "/firmcast-batch")) {
        std::fprintf(stderr, "firmcast-sim and firmcast-batch must be built beside this program\n");
        return 1;
    }
    fc::test::TempFolder folder;
    const int records = 4096;  // 64 KB in records of 16 bytes
    std::string hex = folder.write("fw64.hex", fc::test::intelHexFile(records));
    std::string srec =
        folder.write("fw64.s19", fc::test::sRecordFile(fc::test::consecutive(0, records)));

    const Load numbered{"numbered",
                        "numbered 57600,e,7,1 (Serie_N)",
                        {"--device", "numbered", "--baud", "57600", "--erase-ms", "500"},
                        {"--model", "1", "--com", "1", "--progress", "none", "--file", hex},
                        57600,
                        10,
                        {2, numberedFrame, numberedAnswer}};
    const Load banked{
        "banked",
        "banked 19200,N,8,1 (Serie_H)",
        {"--device", "banked", "--baud", "19200", "--erase-ms", "500", "--bank-ms", "0"},
        {"--model", "2", "--com", "1", "--progress", "none", "--file", srec},
        19200,
        10,
        {3, bankedFrame, bankedAnswer}};
    bool ok = measure(bin, folder.path(), numbered);
    ok = measure(bin, folder.path(), banked) && ok;
    return ok ? 0 : 1;
}
