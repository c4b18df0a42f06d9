// A program the tests start in a process of its own, which tells on its first
// line where to reach it (a simulator's tty or port). The process is stopped
// when the object goes.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace fc {

class FirstLineProcess {
  public:
    // Starts `words` (the program, found on PATH if it has no "/", then its
    // arguments) and reads its first line of output.
    explicit FirstLineProcess(const std::vector<std::string>& words);
    ~FirstLineProcess();
    FirstLineProcess(const FirstLineProcess&) = delete;
    FirstLineProcess& operator=(const FirstLineProcess&) = delete;

    const std::string& firstLine() const { return firstLine_; }
    // Sends `signal` and waits for the end; the exit status, or -1.
    int stop(int signal);

  private:
    pid_t pid_ = -1;
    std::string firstLine_;
};

}  // namespace fc
