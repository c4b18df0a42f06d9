// The named kernel objects on Linux, between real processes, in real time.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <semaphore.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "platform/linux/posix_kernel_objects.h"

namespace fc {
namespace {

using Clock = std::chrono::steady_clock;

// Names of their own for each test, so that runs side by side never meet;
// the semaphores and companion files go away with the test.
class PosixObjectsTest : public ::testing::Test {
  protected:
    std::string prefix() const {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        return "fctest-" + std::to_string(getpid()) + "-" + info->name() + "-";
    }
    void TearDown() override {
        for (const char* name : {"E", "M", "Evento_Recursos_KorvaCOM"}) {
            std::string sem = PosixKernelObjects(prefix()).semaphoreName(name);
            sem_unlink(sem.c_str());
            std::filesystem::remove("/dev/shm/firmcast-handles." + sem.substr(1));
        }
    }
    // Runs `child` in a process of its own; returns its exit status.
    template <typename F>
    pid_t spawn(F child) {
        pid_t pid = fork();
        if (pid == 0) {
            child();
            _exit(0);
        }
        return pid;
    }
    static int reap(pid_t pid) {
        int status = 0;
        waitpid(pid, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

TEST_F(PosixObjectsTest, AnotherProcessSignallingTheEventCutsTheWaitShort) {
    PosixKernelObjects kernel(prefix());
    Handle h = kernel.createEvent(true, false, "Evento_Recursos_KorvaCOM");
    ASSERT_NE(h, 0);
    std::string sem = kernel.semaphoreName("Evento_Recursos_KorvaCOM");
    // The other side needs nothing of ours: it opens the semaphore and posts.
    pid_t driver = spawn([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        sem_t* s = sem_open(sem.c_str(), 0);
        if (s == SEM_FAILED)
            _exit(1);
        sem_post(s);
        sem_close(s);
    });
    EXPECT_EQ(kernel.waitForSingleObject(h, 60000), wait::kObject0);
    EXPECT_EQ(reap(driver), 0);
    kernel.closeHandle(h);
}

TEST_F(PosixObjectsTest, AWaitThatNobodySignalsTimesOutAfterItsTime) {
    PosixKernelObjects kernel(prefix());
    Handle h = kernel.createEvent(true, false, "Evento_Recursos_KorvaCOM");
    auto start = Clock::now();
    EXPECT_EQ(kernel.waitForSingleObject(h, 20), wait::kTimeout);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(20));
    kernel.closeHandle(h);
}

TEST_F(PosixObjectsTest, AManualEventStaysSignalledForEveryWaitUntilReset) {
    PosixKernelObjects kernel(prefix());
    Handle h = kernel.createEvent(true, false, "E");
    EXPECT_EQ(kernel.setEvent(h), 1);
    EXPECT_EQ(kernel.waitForSingleObject(h, 0), wait::kObject0);
    EXPECT_EQ(kernel.waitForSingleObject(h, 0), wait::kObject0);
    EXPECT_EQ(kernel.resetEvent(h), 1);
    EXPECT_EQ(kernel.waitForSingleObject(h, 0), wait::kTimeout);
    kernel.closeHandle(h);
}

TEST_F(PosixObjectsTest, AnAutomaticEventIsTakenByOneWait) {
    PosixKernelObjects kernel(prefix());
    Handle h = kernel.createEvent(false, true, "E");
    EXPECT_EQ(kernel.waitForSingleObject(h, 0), wait::kObject0);
    EXPECT_EQ(kernel.waitForSingleObject(h, 0), wait::kTimeout);
    kernel.closeHandle(h);
}

TEST_F(PosixObjectsTest, ASignalLeftByAProcessThatHasGoneDoesNotCutALaterWaitShort) {
    std::string p = prefix();
    pid_t gone = spawn([&] {
        PosixKernelObjects kernel(p);
        Handle h = kernel.createEvent(true, false, "Evento_Recursos_KorvaCOM");
        kernel.setEvent(h);
    });
    ASSERT_EQ(reap(gone), 0);
    PosixKernelObjects kernel(p);
    Handle h = kernel.createEvent(true, false, "Evento_Recursos_KorvaCOM");
    EXPECT_EQ(kernel.waitForSingleObject(h, 0), wait::kTimeout);
    kernel.closeHandle(h);
}

TEST_F(PosixObjectsTest, WhileAnotherProcessHoldsTheEventItsSignalStays) {
    std::string p = prefix();
    int ready[2];
    int finish[2];
    ASSERT_EQ(pipe(ready), 0);
    ASSERT_EQ(pipe(finish), 0);
    pid_t holder = spawn([&] {
        PosixKernelObjects kernel(p);
        Handle h = kernel.createEvent(true, false, "E");
        kernel.setEvent(h);
        char c = 1;
        if (write(ready[1], &c, 1) != 1)
            _exit(1);
        if (read(finish[0], &c, 1) != 1)
            _exit(1);  // holds it until told
    });
    char c = 0;
    ASSERT_EQ(read(ready[0], &c, 1), 1);
    PosixKernelObjects kernel(p);
    Handle h = kernel.createEvent(true, false, "E");
    EXPECT_EQ(kernel.waitForSingleObject(h, 0), wait::kObject0);
    ASSERT_EQ(write(finish[1], &c, 1), 1);
    EXPECT_EQ(reap(holder), 0);
    kernel.closeHandle(h);
    for (int fd : {ready[0], ready[1], finish[0], finish[1]}) close(fd);
}

TEST_F(PosixObjectsTest, AMutexHeldByAnotherProcessTimesOutUntilReleased) {
    std::string p = prefix();
    int ready[2];
    int finish[2];
    ASSERT_EQ(pipe(ready), 0);
    ASSERT_EQ(pipe(finish), 0);
    pid_t owner = spawn([&] {
        PosixKernelObjects kernel(p);
        Handle m = kernel.createMutex(false, "M");
        if (kernel.waitForSingleObject(m, 0) != wait::kObject0)
            _exit(1);
        char c = 1;
        if (write(ready[1], &c, 1) != 1)
            _exit(1);
        if (read(finish[0], &c, 1) != 1)
            _exit(1);
        if (kernel.releaseMutex(m) != 1)
            _exit(2);
        if (write(ready[1], &c, 1) != 1)
            _exit(1);
        if (read(finish[0], &c, 1) != 1)
            _exit(1);
    });
    char c = 0;
    ASSERT_EQ(read(ready[0], &c, 1), 1);
    PosixKernelObjects kernel(p);
    Handle m = kernel.createMutex(false, "M");
    EXPECT_EQ(kernel.waitForSingleObject(m, 20), wait::kTimeout);
    EXPECT_EQ(kernel.releaseMutex(m), 0);  // not ours
    ASSERT_EQ(write(finish[1], &c, 1), 1);
    ASSERT_EQ(read(ready[0], &c, 1), 1);
    EXPECT_EQ(kernel.waitForSingleObject(m, 1000), wait::kObject0);
    EXPECT_EQ(kernel.waitForSingleObject(m, 0), wait::kObject0);  // again, by its owner
    EXPECT_EQ(kernel.releaseMutex(m), 1);
    EXPECT_EQ(kernel.releaseMutex(m), 1);
    EXPECT_EQ(kernel.releaseMutex(m), 0);
    ASSERT_EQ(write(finish[1], &c, 1), 1);
    EXPECT_EQ(reap(owner), 0);
    kernel.closeHandle(m);
    for (int fd : {ready[0], ready[1], finish[0], finish[1]}) close(fd);
}

TEST_F(PosixObjectsTest, ANullHandleFailsEveryCallAtOnce) {
    PosixKernelObjects kernel(prefix());
    EXPECT_EQ(kernel.waitForSingleObject(0, 15000), wait::kFailed);
    EXPECT_EQ(kernel.releaseMutex(0), 0);
    EXPECT_EQ(kernel.resetEvent(0), 0);
    EXPECT_EQ(kernel.closeHandle(0), 0);
}

TEST_F(PosixObjectsTest, UnnamedObjectsLeaveNoNameBehind) {
    PosixKernelObjects kernel(prefix());
    Handle a = kernel.createEvent(true, true, "");
    Handle b = kernel.createEvent(true, false, "");
    EXPECT_EQ(kernel.waitForSingleObject(a, 0), wait::kObject0);
    EXPECT_EQ(kernel.waitForSingleObject(b, 0), wait::kTimeout);
    for (const auto& entry : std::filesystem::directory_iterator("/dev/shm")) {
        EXPECT_EQ(
            entry.path().filename().string().find("firmcast-unnamed-" + std::to_string(getpid())),
            std::string::npos);
    }
    kernel.closeHandle(a);
    kernel.closeHandle(b);
}

TEST_F(PosixObjectsTest, TheLastHandleToCloseLeavesNothingOfTheNamedEventBehind) {
    PosixKernelObjects loader(prefix());
    PosixKernelObjects driver(prefix());
    const std::string sem =
        "/dev/shm/sem." + loader.semaphoreName("Evento_Recursos_KorvaCOM").substr(1);
    const std::string lock =
        "/dev/shm/firmcast-handles." + loader.semaphoreName("Evento_Recursos_KorvaCOM").substr(1);
    Handle a = loader.createEvent(true, false, "Evento_Recursos_KorvaCOM");
    Handle b = driver.createEvent(true, false, "Evento_Recursos_KorvaCOM");
    ASSERT_NE(a, 0);
    ASSERT_NE(b, 0);
    EXPECT_EQ(driver.setEvent(b), 1);
    EXPECT_EQ(loader.waitForSingleObject(a, 0), wait::kObject0) << "one object for both";
    EXPECT_EQ(driver.closeHandle(b), 1);
    EXPECT_TRUE(std::filesystem::exists(sem)) << "still held by the loader";
    EXPECT_EQ(loader.closeHandle(a), 1);
    EXPECT_FALSE(std::filesystem::exists(sem));
    EXPECT_FALSE(std::filesystem::exists(lock));
    Handle again = loader.createEvent(true, false, "Evento_Recursos_KorvaCOM");
    EXPECT_EQ(loader.waitForSingleObject(again, 0), wait::kTimeout)
        << "a fresh event, not signalled";
    loader.closeHandle(again);
}

TEST_F(PosixObjectsTest, AHandleInAnotherProcessKeepsTheEventAliveUntilItEnds) {
    const std::string names = prefix();  // the parent's: the child's pid differs
    PosixKernelObjects kernel(names);
    const std::string sem = "/dev/shm/sem." + kernel.semaphoreName("E").substr(1);
    int toChild[2], fromChild[2];
    ASSERT_EQ(pipe(toChild), 0);
    ASSERT_EQ(pipe(fromChild), 0);
    pid_t child = spawn([&] {
        PosixKernelObjects own(names);
        Handle h = own.createEvent(true, false, "E");
        char c = h != 0 ? 'y' : 'n';
        (void)!write(fromChild[1], &c, 1);
        (void)!read(toChild[0], &c, 1);
        own.closeHandle(h);
    });
    char c = 0;
    ASSERT_EQ(read(fromChild[0], &c, 1), 1);
    ASSERT_EQ(c, 'y');
    Handle mine = kernel.createEvent(true, false, "E");
    kernel.closeHandle(mine);
    EXPECT_TRUE(std::filesystem::exists(sem)) << "the other process still holds it";
    (void)!write(toChild[1], "x", 1);
    EXPECT_EQ(reap(child), 0);
    EXPECT_FALSE(std::filesystem::exists(sem));
    for (int fd : {toChild[0], toChild[1], fromChild[0], fromChild[1]}) close(fd);
}

}  // namespace
}  // namespace fc
