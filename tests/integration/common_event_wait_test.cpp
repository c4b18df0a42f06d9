// EsperaEventoRecursos over the real kernel objects: a blocking sleep that
// the driver's process cuts short by signalling "Evento_Recursos_KorvaCOM".
#include <fcntl.h>
#include <gtest/gtest.h>
#include <semaphore.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "common/kernel_waits.h"
#include "platform/linux/posix_kernel_objects.h"
#include "platform/linux/real_pump.h"
#include "tests/unit/common_fixture.h"
#include "virtual/virtual_network.h"

namespace fc {
namespace {

using Clock = std::chrono::steady_clock;

// The real kernel objects, keeping the result of the last wait for the test.
class WatchedKernel : public PosixKernelObjects {
  public:
    using PosixKernelObjects::PosixKernelObjects;
    Long lastWait = 12345;
    Long waitForSingleObject(Handle handle, Long milliseconds) override {
        return lastWait = PosixKernelObjects::waitForSingleObject(handle, milliseconds);
    }
};

struct RealEventRig {
    std::string prefix = "fctest-" + std::to_string(getpid()) + "-wait-";
    WatchedKernel kernel{prefix};
    RealPump pump;
    RecordingDialogs dialogs{pump};
    commontest::NoSerialPorts serialPorts;
    FileTable files;
    commontest::ScratchFolder home;
    LinuxFileSystem fileSystem;
    VirtualCalendar calendar{pump, LocalDateTime{}};
    SqliteDatabaseEngine databases;
    Drives drives;  // none: the tests name host paths
    VirtualNetwork network{pump};
    Services services{pump,       dialogs, serialPorts, files,     home.str(), drives,
                      fileSystem, kernel,  calendar,    databases, network};
    CommonModule c{services};

    ~RealEventRig() {
        std::string sem = kernel.semaphoreName(kEventoRecursos);
        sem_unlink(sem.c_str());
        std::filesystem::remove("/dev/shm/firmcast-handles." + sem.substr(1));
    }
};

TEST(EsperaEventoRecursosReal, With20ReturnsAfter20MsWhenNobodySignals) {
    RealEventRig rig;
    auto start = Clock::now();
    EsperaEventoRecursos(rig.c, 20);
    EXPECT_EQ(rig.kernel.lastWait, wait::kTimeout);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(20));
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(EsperaEventoRecursosReal, TheDriverProcessCutsALongSleepShort) {
    RealEventRig rig;
    std::string sem = rig.kernel.semaphoreName(kEventoRecursos);
    pid_t driver = fork();
    if (driver == 0) {
        // The driver keeps signalling until someone is there to see it: the
        // event must be open on this side for the signal to last.
        for (int i = 0; i < 6000; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            sem_t* s = sem_open(sem.c_str(), 0);
            if (s == SEM_FAILED)
                continue;
            sem_post(s);
            sem_close(s);
        }
        _exit(0);
    }
    // The sleep would last 60 s; the signal ends it.
    EsperaEventoRecursos(rig.c, 60000);
    EXPECT_EQ(rig.kernel.lastWait, wait::kObject0);
    kill(driver, SIGKILL);
    waitpid(driver, nullptr, 0);
}

}  // namespace
}  // namespace fc
