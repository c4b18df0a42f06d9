// CPU cost of a loader wait on the real pump. A wait is a loop of doEvents()
// until a 2000 ms window timer sets the flag that ends it; the pump blocks in
// ppoll() for at most 1 ms a turn when nothing is due, so the wait should cost
// next to nothing. Printed as CPU time (getrusage) in percent of one core.
//
// Three waits: the bare loop; an answer wait on an open serial line whose
// device stays silent (InBufferCount read every turn); and espera_tiempo's
// loop, which also sleeps 1 ms a turn. First, how long one doEvents() with
// nothing pending blocks, against the 1 ms it may block at most.
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

#include "bench/bench_pty.h"
#include "platform/linux/real_pump.h"
#include "platform/linux/termios_port.h"
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

// One doEvents() with nothing pending, 1000 times: the time each blocked.
void measureOneTurn(fc::RealPump& pump) {
    std::vector<long> blocked;
    for (int i = 0; i < 1000; ++i) {
        fc::Micros before = pump.nowMicros();
        pump.doEvents();
        blocked.push_back(static_cast<long>(pump.nowMicros() - before));
    }
    std::sort(blocked.begin(), blocked.end());
    std::printf(
        "one doEvents, nothing pending: min %ld us, median %ld us, p99 %ld us"
        "  (a turn is 1000 us; far below it would be spinning)\n",
        blocked.front(), blocked[blocked.size() / 2], blocked[blocked.size() * 99 / 100]);
}

}  // namespace

int main() {
    fc::RealPump pump;
    measureOneTurn(pump);
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
