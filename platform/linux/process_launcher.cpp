#include "platform/linux/process_launcher.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <filesystem>

#include "platform/text_case.h"

namespace fs = std::filesystem;

namespace fc {

namespace {

bool endsWithExe(const std::string& path) {
    return path.size() > 4 && lowerCase(path.substr(path.size() - 4)) == ".exe";
}

bool isDrivePath(const std::string& path) {
    return path.size() >= 2 && path[1] == ':' && std::isalpha(static_cast<unsigned char>(path[0]));
}

// The entry of the folder named like `wanted`, ignoring case, or `wanted`.
fs::path matchInFolder(const fs::path& wanted) {
    std::string found = entryIgnoringCase(wanted.parent_path(), wanted.filename().string());
    return found.empty() ? wanted : wanted.parent_path() / found;
}

// Reads exactly `size` bytes, or fewer when the pipe closes first.
size_t readAll(int fd, void* data, size_t size) {
    size_t got = 0;
    while (got < size) {
        ssize_t n = read(fd, static_cast<char*>(data) + got, size - got);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        got += static_cast<size_t>(n);
    }
    return got;
}

// In the child: starts the grandchild, which runs the program, and tells the
// parent its process number. The grandchild reports a failed exec through
// `failed`, which closes by itself when the exec succeeds. Only calls that
// are safe between fork and exec.
[[noreturn]] void runDetached(char* const* argv, int told, int failed) {
    pid_t grandchild = fork();
    if (grandchild == 0) {
        setsid();
        execv(argv[0], argv);
        int error = errno;
        (void)!write(failed, &error, sizeof error);
        _exit(127);
    }
    (void)!write(told, &grandchild, sizeof grandchild);
    _exit(0);
}

}  // namespace

std::string LinuxProcessLauncher::hostProgram(const std::string& program) const {
    std::string path = endsWithExe(program) ? program.substr(0, program.size() - 4) : program;
    if (isDrivePath(path)) {
        std::string resolved = drives_.hostPath(path, true);
        if (!resolved.empty())
            return matchInFolder(resolved).string();
    }
    for (char& c : path) {
        if (c == '\\')
            c = '/';
    }
    return matchInFolder(path).string();
}

long LinuxProcessLauncher::start(const std::string& commandLine) {
    CommandLine parsed = splitCommandLine(commandLine);
    std::vector<std::string> words{hostProgram(parsed.program)};
    words.insert(words.end(), parsed.arguments.begin(), parsed.arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);

    int told[2], failed[2];
    if (pipe2(told, O_CLOEXEC) != 0)
        return 0;
    if (pipe2(failed, O_CLOEXEC) != 0) {
        close(told[0]);
        close(told[1]);
        return 0;
    }
    pid_t child = fork();
    if (child == 0)
        runDetached(argv.data(), told[1], failed[1]);
    close(told[1]);
    close(failed[1]);
    pid_t grandchild = 0;
    int error = 0;
    bool started = child > 0 &&
                   readAll(told[0], &grandchild, sizeof grandchild) == sizeof grandchild &&
                   readAll(failed[0], &error, sizeof error) == 0;
    if (child > 0)
        waitpid(child, nullptr, 0);
    close(told[0]);
    close(failed[0]);
    return started && grandchild > 0 ? static_cast<long>(grandchild) : 0;
}

}  // namespace fc
