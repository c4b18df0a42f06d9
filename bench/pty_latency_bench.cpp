// How soon a loader's answer wait sees bytes that arrive on a serial line.
// A second thread plays the device: at random moments it writes one byte to
// the pty's master. The main thread runs the answer wait (doEvents, then
// InBufferCount, no sleep) and notes when the byte shows. The figure is the
// time from the write to the wait seeing the byte, in microseconds.
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <random>
#include <thread>
#include <vector>

#include "bench/bench_pty.h"
#include "platform/linux/termios_port.h"
#include "platform/linux/real_pump.h"
#include "platform/serial_line.h"

namespace {

constexpr int kRounds = 500;
constexpr int kCommPort = 9;

std::int64_t nowMicros() {
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

// The device: waits a random 0.2..3 ms, stamps the time, writes a byte;
// then waits for the program to have seen it before the next round.
void device(int master, std::atomic<std::int64_t>& writtenAt, std::atomic<int>& seen) {
    std::mt19937 random(12345);
    std::uniform_int_distribution<int> pause(200, 3000);
    for (int round = 0; round < kRounds; ++round) {
        std::this_thread::sleep_for(std::chrono::microseconds(pause(random)));
        writtenAt.store(nowMicros());
        char byte = static_cast<char>(round);
        if (write(master, &byte, 1) != 1)
            return;
        while (seen.load() <= round) std::this_thread::yield();
    }
}

std::int64_t percentile(const std::vector<std::int64_t>& sorted, double p) {
    return sorted[static_cast<std::size_t>(p * (sorted.size() - 1))];
}

}  // namespace

int main() {
    fc::bench::BenchPty pty(kCommPort);
    fc::RealPump pump;
    fc::TermiosPortOpener opener;
    fc::SerialLine line(pump, opener);
    line.setCommPort(kCommPort);
    line.setSettings("57600,e,7,1");
    line.setPortOpen(true);

    std::atomic<std::int64_t> writtenAt{0};
    std::atomic<int> seen{0};
    std::thread deviceThread(device, pty.master(), std::ref(writtenAt), std::ref(seen));
    std::vector<std::int64_t> latencies;
    for (int round = 0; round < kRounds; ++round) {
        while (line.inBufferCount() == 0) pump.doEvents();
        latencies.push_back(nowMicros() - writtenAt.load());
        line.input();
        seen.store(round + 1);
    }
    deviceThread.join();

    std::sort(latencies.begin(), latencies.end());
    std::printf("answer wait on a pty, %d bytes: latency from write to InBufferCount > 0\n",
                kRounds);
    std::printf("  min %lld us  median %lld us  p90 %lld us  p99 %lld us  max %lld us\n",
                (long long)latencies.front(), (long long)percentile(latencies, 0.5),
                (long long)percentile(latencies, 0.9), (long long)percentile(latencies, 0.99),
                (long long)latencies.back());
    return 0;
}
