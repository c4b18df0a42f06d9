#include "platform/linux/real_pump.h"

#include <poll.h>
#include <sys/prctl.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace fc {

namespace {
Micros steadyMicros() {
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}
}  // namespace

RealPump::RealPump() : origin_(steadyMicros()) {
    // The loader's waits sleep 1 ms a pass: let such a sleep end when it is
    // due, not up to the kernel's default 50 us later.
    prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
}

Micros RealPump::nowMicros() const {
    return steadyMicros() - origin_;
}

void RealPump::doEvents() {
    if (runDueSources(nowMicros(), true) > 0) {
        idleYields_ = 0;
        return;
    }
    // A yield between two pieces of work returns at once; only a run of
    // yields that find nothing to do is a wait, and blocks.
    Micros timeout = 0;
    if (++idleYields_ > kQuickYields) {
        Micros now = nowMicros();
        timeout = std::min<Micros>(1000, std::max<Micros>(0, earliestDue(false) - now));
    }
    std::vector<int> ready = waitForWake(timeout);
    if (runDueSources(nowMicros(), true, ready) > 0)
        idleYields_ = 0;
}

void RealPump::doPendingEvents() {
    runDueSources(nowMicros(), true, waitForWake(0));
}

std::vector<int> RealPump::waitForWake(Micros timeout) {
    std::vector<pollfd> fds;
    for (EventSource* source : snapshot()) {
        if (source->wakeFd() >= 0)
            fds.push_back(pollfd{source->wakeFd(), POLLIN, 0});
    }
    // Nothing to look at and no time to wait: the yield of a long piece of
    // work, which would otherwise cost a system call a step.
    if (fds.empty() && timeout <= 0)
        return {};
    timespec ts{0, static_cast<long>(timeout) * 1000};
    std::vector<int> ready;
    if (ppoll(fds.data(), fds.size(), &ts, nullptr) > 0) {
        for (const pollfd& p : fds) {
            if (p.revents != 0)
                ready.push_back(p.fd);
        }
    }
    return ready;
}

void RealPump::sleep(int ms) {
    // A loop that sleeps between its yields gives the processor back itself.
    idleYields_ = 0;
    if (ms > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

}  // namespace fc
