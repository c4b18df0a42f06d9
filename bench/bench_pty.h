// A pseudo-terminal for the benchmarks: the program's serial line opens the
// slave through FIRMCAST_COM<n>, the benchmark plays the device on the master.
#pragma once

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

namespace fc::bench {

class BenchPty {
  public:
    explicit BenchPty(int commPort) {
        master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0 || !ptsname(master_))
            throw std::runtime_error("no pseudo-terminal available");
        std::string variable = "FIRMCAST_COM" + std::to_string(commPort);
        setenv(variable.c_str(), ptsname(master_), 1);
    }
    ~BenchPty() { close(master_); }
    BenchPty(const BenchPty&) = delete;
    BenchPty& operator=(const BenchPty&) = delete;

    int master() const { return master_; }

  private:
    int master_ = -1;
};

}  // namespace fc::bench
