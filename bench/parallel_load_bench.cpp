// The same 704 KB firmware file into one simulated scale, then into a list
// of them one after another (--parallel 1), then into the same list at once
// (--parallel N), each run a firmcast-batch process at the level that gives
// no MAC, the scales firmcast-sim processes on loopback addresses of their
// own. It prints the three wall times and the ratios of one run: the
// parallel run against one scale alone (the goal is 1.3 at most for
// twenty), and the run one after another against the parallel one.
//
//   bench_parallel_load [RATE [SCALES]]
//     RATE    bytes a second each scale reads (default 102400; 0: at once)
//     SCALES  the length of the list (default 20)
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/child_process.h"
#include "support/first_line_process.h"
#include "whole_flash.h"

namespace fs = std::filesystem;

namespace {

constexpr int kEraseMs = 300;

std::string address(int n) {
    return "127.0.5." + std::to_string(n);
}

struct Timed {
    double seconds = 0;
    int ok = 0;
    std::string ending;
};

// Runs firmcast-batch with `args` in `home`, reading its output to the end.
Timed runBatch(const std::vector<std::string>& args, const fs::path& home) {
    setenv("FIRMCAST_HOME", home.c_str(), 1);
    const auto start = std::chrono::steady_clock::now();
    fc::ChildProcess batch(std::string(FIRMCAST_BIN) + "/firmcast-batch", args);
    while (!batch.drained()) {
        std::vector<pollfd> fds;
        for (int fd : {batch.outFd(), batch.errFd()}) {
            if (fd >= 0)
                fds.push_back(pollfd{fd, POLLIN, 0});
        }
        ::poll(fds.data(), fds.size(), -1);
        for (const pollfd& p : fds) {
            if (p.revents != 0)
                batch.readFrom(p.fd);
        }
    }
    Timed t;
    t.ending = fc::endingText(batch.wait());
    t.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    for (std::size_t at = 0; (at = batch.out().find(" ok: ", at)) != std::string::npos; ++at)
        ++t.ok;
    return t;
}

std::vector<std::string> loadArgs(const fs::path& file, int scales, int parallel) {
    std::string list;
    for (int n = 1; n <= scales; ++n) list += (n > 1 ? "," : "") + address(n);
    return {"--model",
            "0",
            "--ethernet",
            "--level",
            "3",
            "--file",
            file.string(),
            "--scales",
            list,
            "--parallel",
            std::to_string(parallel),
            "--progress",
            "none"};
}

}  // namespace

int main(int argc, char** argv) {
    const long rate = argc > 1 ? std::atol(argv[1]) : 102400;
    const int scales = argc > 2 ? std::atoi(argv[2]) : 20;
    const fs::path root = fs::temp_directory_path() / ("fc-bench-par-" + std::to_string(getpid()));
    fs::remove_all(root);
    fs::create_directories(root / "Home");
    const fs::path file = root / "flash.hex";
    fc::bench::writeWholeFlash(file);

    std::vector<std::unique_ptr<fc::FirstLineProcess>> sims;
    int port = 0;
    for (int n = 1; n <= scales; ++n) {
        sims.push_back(std::make_unique<fc::FirstLineProcess>(std::vector<std::string>{
            std::string(FIRMCAST_BIN) + "/firmcast-sim", "--tcp", std::to_string(port), "--address",
            address(n), "--device", "ethernet-scale", "--erase-ms", std::to_string(kEraseMs),
            "--read-rate", std::to_string(rate)}));
        if (port == 0)
            std::sscanf(sims.back()->firstLine().c_str(), "listening on %d", &port);
    }
    std::ofstream(root / "Home" / "config.ini", std::ios::binary)
        << "[Puertos]\r\nTx=" << port << "\r\n";

    std::printf("704 KB into simulated scales reading %s, erase %d ms\n",
                rate ? (std::to_string(rate) + " B/s").c_str() : "at once", kEraseMs);
    const Timed one = runBatch(loadArgs(file, 1, 1), root / "Home");
    std::printf("  1 scale:                      %7.1f s  (%d ok, %s)\n", one.seconds, one.ok,
                one.ending.c_str());
    const Timed sequential = runBatch(loadArgs(file, scales, 1), root / "Home");
    std::printf("  %2d scales one after another:  %7.1f s  (%d ok, %s)\n", scales,
                sequential.seconds, sequential.ok, sequential.ending.c_str());
    const Timed parallel = runBatch(loadArgs(file, scales, scales), root / "Home");
    std::printf("  %2d scales with --parallel %2d: %7.1f s  (%d ok, %s)\n", scales, scales,
                parallel.seconds, parallel.ok, parallel.ending.c_str());
    std::printf("  parallel / one scale: %.2f (goal: 1.3 at most)\n",
                parallel.seconds / one.seconds);
    std::printf("  one after another / parallel: %.1f\n", sequential.seconds / parallel.seconds);
    for (auto& s : sims) s->stop(SIGTERM);
    fs::remove_all(root);
}
