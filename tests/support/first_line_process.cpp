#include "first_line_process.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fc {

FirstLineProcess::FirstLineProcess(const std::vector<std::string>& words) {
    int out[2];
    if (words.empty() || pipe(out) != 0)
        return;
    pid_ = fork();
    if (pid_ == 0) {
        dup2(out[1], STDOUT_FILENO);
        close(out[0]);
        close(out[1]);
        std::vector<std::string> copy = words;
        std::vector<char*> argv;
        for (auto& w : copy) argv.push_back(w.data());
        argv.push_back(nullptr);
        execvp(argv[0], argv.data());
        _exit(127);
    }
    close(out[1]);
    char c;
    while (read(out[0], &c, 1) == 1 && c != '\n') firstLine_ += c;
    close(out[0]);
}

FirstLineProcess::~FirstLineProcess() {
    stop(SIGTERM);
}

int FirstLineProcess::stop(int signal) {
    if (pid_ <= 0)
        return -1;
    kill(pid_, signal);
    int raw = 0;
    waitpid(pid_, &raw, 0);
    pid_ = -1;
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
}

}  // namespace fc
