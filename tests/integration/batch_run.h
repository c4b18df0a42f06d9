// Runs firmcast-batch (build/bin) as a process of its own, its standard
// output and standard error kept apart, with a patience: a run that has not
// ended by then is killed and reported as hung, so that a test of a program
// that must end never hangs itself.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace fc::test {

struct BatchResult {
    int status = -1;  // the exit status, or -1 when killed
    bool hung = false;
    std::string out;
    std::string err;

    std::vector<std::string> errLines() const {
        std::vector<std::string> lines;
        std::istringstream in(err);
        for (std::string line; std::getline(in, line);) lines.push_back(line);
        return lines;
    }
    // For a failing expectation: what the run printed.
    std::string said() const { return "stdout:\n" + out + "stderr:\n" + err; }
};

using BatchEnvironment = std::vector<std::pair<std::string, std::string>>;

inline std::string contentOfFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Runs firmcast-batch with `args`, the variables of `env` set (an empty value
// unsets one), standard input closed.
inline BatchResult runBatchProcess(const std::vector<std::string>& args,
                                   const BatchEnvironment& env = {}, int patienceSeconds = 120) {
    const std::string program = std::string(FIRMCAST_BIN_DIR) + "/firmcast-batch";
    char outName[] = "/tmp/firmcast-batch-out-XXXXXX";
    char errName[] = "/tmp/firmcast-batch-err-XXXXXX";
    int outFd = mkstemp(outName);
    int errFd = mkstemp(errName);
    BatchResult result;
    if (outFd < 0 || errFd < 0)
        return result;
    std::vector<std::string> words{program};
    words.insert(words.end(), args.begin(), args.end());
    pid_t pid = fork();
    if (pid == 0) {
        dup2(outFd, STDOUT_FILENO);
        dup2(errFd, STDERR_FILENO);
        int nothing = open("/dev/null", O_RDONLY);
        dup2(nothing, STDIN_FILENO);
        for (const auto& [name, value] : env) {
            if (value.empty()) {
                unsetenv(name.c_str());
            } else {
                setenv(name.c_str(), value.c_str(), 1);
            }
        }
        std::vector<char*> argv;
        for (std::string& word : words) argv.push_back(word.data());
        argv.push_back(nullptr);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    close(outFd);
    close(errFd);
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(patienceSeconds);
    int raw = 0;
    while (waitpid(pid, &raw, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > limit) {
            result.hung = true;
            kill(pid, SIGKILL);
            waitpid(pid, &raw, 0);
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    result.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    result.out = contentOfFile(outName);
    result.err = contentOfFile(errName);
    unlink(outName);
    unlink(errName);
    return result;
}

}  // namespace fc::test
