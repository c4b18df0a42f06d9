// Runs firmcast-macdb (build/bin) as a separate process, its output to a file.
#pragma once

#include <fcntl.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace fc::test {

inline std::vector<std::string> linesOf(const std::filesystem::path& file) {
    std::vector<std::string> lines;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

using Environment = std::vector<std::pair<std::string, std::string>>;

// Starts the tool with `args` and the variables of `env` set (an empty value
// unsets one); its standard output goes to `out`, and its standard error to
// `err` when one is named.
inline pid_t startMacTool(const std::vector<std::string>& args, const Environment& env,
                          const std::filesystem::path& out, const std::filesystem::path& err = {}) {
    std::string tool = std::string(FIRMCAST_BIN_DIR) + "/firmcast-macdb";
    std::vector<char*> argv{const_cast<char*>(tool.c_str())};
    for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    pid_t pid = fork();
    if (pid == 0) {
        int fd = open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        dup2(fd, STDOUT_FILENO);
        if (!err.empty())
            dup2(open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), STDERR_FILENO);
        // The SQLite ODBC driver leaks a little at each connection through a
        // data source name, from a library it has unloaded by the end, where
        // no suppression can name it. The tool's own code is checked for
        // leaks in the test process, which runs the same allocation.
        std::string sanitizer = getenv("ASAN_OPTIONS") ? getenv("ASAN_OPTIONS") : "";
        setenv("ASAN_OPTIONS", (sanitizer + ":detect_leaks=0").c_str(), 1);
        for (const auto& [name, value] : env) {
            if (value.empty()) {
                unsetenv(name.c_str());
            } else {
                setenv(name.c_str(), value.c_str(), 1);
            }
        }
        execv(tool.c_str(), argv.data());
        _exit(127);
    }
    return pid;
}

// Waits for the tool; its exit status, or -signal when it was killed.
inline int waitMacTool(pid_t pid) {
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace fc::test
