#include "platform/linux/child_process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

extern char** environ;

namespace fc {

namespace {

void closeIfOpen(int& fd) {
    if (fd >= 0)
        ::close(fd);
    fd = -1;
}

}  // namespace

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& args) {
    int outPipe[2], errPipe[2];
    if (::pipe2(outPipe, O_CLOEXEC) != 0)
        throw std::runtime_error(std::string("pipe: ") + std::strerror(errno));
    if (::pipe2(errPipe, O_CLOEXEC) != 0) {
        ::close(outPipe[0]);
        ::close(outPipe[1]);
        throw std::runtime_error(std::string("pipe: ") + std::strerror(errno));
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, outPipe[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errPipe[1], STDERR_FILENO);
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    const int failed =
        ::posix_spawn(&pid_, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(outPipe[1]);
    ::close(errPipe[1]);
    out_ = outPipe[0];
    err_ = errPipe[0];
    if (failed != 0) {
        closeIfOpen(out_);
        closeIfOpen(err_);
        reaped_ = true;
        throw std::runtime_error(program + ": " + std::strerror(failed));
    }
}

ChildProcess::~ChildProcess() {
    closeIfOpen(out_);
    closeIfOpen(err_);
    if (!reaped_) {
        ::kill(pid_, SIGKILL);
        int status = 0;
        while (::waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
        }
    }
}

void ChildProcess::readFrom(int fd) {
    int& which = fd == out_ ? out_ : err_;
    std::string& text = fd == out_ ? outText_ : errText_;
    if (which < 0 || fd != which)
        return;
    char block[4096];
    const ssize_t n = ::read(which, block, sizeof block);
    if (n > 0)
        text.append(block, static_cast<std::size_t>(n));
    else if (n == 0 || (errno != EINTR && errno != EAGAIN))
        closeIfOpen(which);
}

int ChildProcess::wait() {
    int status = 0;
    while (::waitpid(pid_, &status, 0) < 0) {
        if (errno != EINTR)
            break;
    }
    reaped_ = true;
    return status;
}

void ChildProcess::signal(int number) const {
    if (!reaped_)
        ::kill(pid_, number);
}

std::string endingText(int status) {
    if (WIFEXITED(status))
        return "exit status " + std::to_string(WEXITSTATUS(status));
    if (WIFSIGNALED(status)) {
        const int number = WTERMSIG(status);
        const char* name = ::strsignal(number);
        return "signal " + std::to_string(number) + (name ? std::string(" (") + name + ")" : "");
    }
    return "wait status " + std::to_string(status);
}

}  // namespace fc
