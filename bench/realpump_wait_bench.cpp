// CPU cost of a loader wait on the real pump. A wait is a loop of doEvents()
// until a 2000 ms window timer sets the flag that ends it; the pump blocks in
// ppoll() for at most 1 ms a turn when nothing is due, so the wait should cost
// next to nothing. Printed as CPU time (getrusage) in percent of one core.
//
// Three waits: the bare loop; an answer wait on an open serial line whose
// device stays silent (InBufferCount read every turn); and espera_tiempo's
// loop, which also sleeps 1 ms a turn.
#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <functional>

#include "bench/bench_pty.h"
#include "platform/linux/termios_port.h"
#include "platform/linux/real_pump.h"
#include "platform/serial_line.h"
#include "platform/window_timer.h"

namespace {

constexpr int kWaitMs = 2000;
constexpr int kCommPort = 9;

double cpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    auto seconds = [](const timeval& t) { return t.tv_sec + t.tv_usec / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Runs one wait of kWaitMs with `turn` as the body of its loop and prints
// what it cost.
void measure(const char* name, fc::RealPump& pump, const std::function<void()>& turn) {
    fc::WindowTimer timerout(pump, "timerout");
    bool timedOut = false;
    timerout.onTimer = [&] { timedOut = true; };
    long turns = 0;
    auto wallStart = std::chrono::steady_clock::now();
    double cpuStart = cpuSeconds();
    timerout.setInterval(kWaitMs);
    timerout.setEnabled(true);
    while (!timedOut) {
        turn();
        ++turns;
    }
    timerout.setEnabled(false);
    double cpu = cpuSeconds() - cpuStart;
    double wall =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - wallStart).count();
    std::printf("%-44s wall %7.1f ms  cpu %6.1f ms  = %5.2f %% of one core  (%ld turns)\n", name,
                wall * 1000, cpu * 1000, 100 * cpu / wall, turns);
}

}  // namespace

int main() {
    fc::RealPump pump;
    measure("doEvents loop, nothing open", pump, [&] { pump.doEvents(); });

    fc::bench::BenchPty pty(kCommPort);
    fc::TermiosPortOpener opener;
    fc::SerialLine line(pump, opener);
    line.setCommPort(kCommPort);
    line.setSettings("57600,e,7,1");
    line.setPortOpen(true);
    measure("answer wait, silent device on a pty", pump, [&] {
        pump.doEvents();
        line.inBufferCount();
    });
    measure("espera_tiempo (doEvents + sleep 1 ms)", pump, [&] {
        pump.doEvents();
        pump.sleep(1);
    });
    return 0;
}
