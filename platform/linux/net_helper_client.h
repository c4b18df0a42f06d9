// The loader's side of the network helper: the program is started the first
// time a table row must be deleted or an echo sent that this process may not
// do itself, kept for the rest of the run (one process, not one a row), and
// asked over a socket pair, a line each way. A helper that is missing, cannot
// be started or is itself refused makes the operation NotPermitted, as the
// loader's own attempt was; the loader's error log says so once.
#pragma once

#include <sys/types.h>

#include <string>

#include "platform/network.h"

namespace fc {

class NetHelperClient {
  public:
    explicit NetHelperClient(std::string program);
    NetHelperClient(const NetHelperClient&) = delete;
    NetHelperClient& operator=(const NetHelperClient&) = delete;
    // Closes the pipe, which ends the helper, and waits for it.
    ~NetHelperClient();

    NetResult deleteNeighbour(const NeighbourRow& row);
    NetResult echo(const Ipv4& address, int timeoutMs, bool& answered);

    // The helper's process while it runs (for the tests).
    bool running() const { return pid_ > 0; }
    pid_t pid() const { return pid_; }

  private:
    // The answer line to `request`, or false when the helper could not be
    // reached or did not answer within `patienceMs`.
    bool ask(const std::string& request, int patienceMs, std::string& answer);
    bool start();
    void stop(bool kill);
    bool readLine(int patienceMs, std::string& line);

    std::string program_;
    pid_t pid_ = -1;
    int fd_ = -1;
    bool unavailable_ = false;   // it could not be started: not tried again
    bool answeredOnce_ = false;  // the running helper has answered a request
    std::string pending_;        // read past the last answer's newline
};

// firmcast-net-helper in the folder of the running program.
std::string netHelperBesideProgram();

}  // namespace fc
