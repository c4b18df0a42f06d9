// A program started as a child with its standard output and error read
// through pipes, for a parent that watches several at once: it polls their
// descriptors, reads what has come, and reaps each when both pipes end.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace fc {

class ChildProcess {
  public:
    // Starts `program` with `args` (the words after its name), in the
    // parent's environment and folder, standard input from /dev/null.
    // Throws std::runtime_error when it cannot be started.
    ChildProcess(const std::string& program, const std::vector<std::string>& args);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t pid() const { return pid_; }
    // The pipes still open, for poll(); -1 once one has ended.
    int outFd() const { return out_; }
    int errFd() const { return err_; }

    // Reads what the pipe `fd` holds now into out() or err(); closes it at
    // its end.
    void readFrom(int fd);
    // Both pipes have ended.
    bool drained() const { return out_ < 0 && err_ < 0; }
    // Waits for the child to end (both pipes drained first, or not), and
    // returns its wait status as waitpid() gives it. Once only.
    int wait();
    void signal(int number) const;

    const std::string& out() const { return outText_; }
    const std::string& err() const { return errText_; }

  private:
    pid_t pid_ = -1;
    int out_ = -1;
    int err_ = -1;
    bool reaped_ = false;
    std::string outText_;
    std::string errText_;
};

// "exit status 3" or "signal 9 (Killed)": how a child ended, in words.
std::string endingText(int waitStatus);

}  // namespace fc
