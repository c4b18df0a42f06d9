#include "platform/linux/posix_kernel_objects.h"

#include <fcntl.h>
#include <semaphore.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <ctime>

namespace fc {

namespace {

// A named semaphore held open, with the shared lock that marks this process
// as one of its users.
class Semaphore {
  public:
    Semaphore() = default;
    Semaphore(const Semaphore&) = delete;
    Semaphore& operator=(const Semaphore&) = delete;
    // The last user to let go removes the object's name and its companion
    // file, as a kernel object dies with its last handle: nothing of it is
    // left behind.
    ~Semaphore() {
        if (lockFd_ >= 0 && flock(lockFd_, LOCK_EX | LOCK_NB) == 0) {
            sem_unlink(semName_.c_str());
            unlink(lockPath_.c_str());
        }
        closeBoth();
    }

    // Opens the semaphore; `fresh` tells whether nobody else held it, so that
    // its value is ours to set. False on failure.
    bool open(const std::string& semName, const std::string& lockPath, bool& fresh) {
        if (lockPath.empty())
            return openUnnamed(semName, fresh);
        semName_ = semName;
        lockPath_ = lockPath;
        // A companion file whose last user removed it while this one was
        // opening it is left for a fresh one.
        for (int attempt = 0; attempt < 100; ++attempt) {
            lockFd_ = ::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
            if (lockFd_ < 0)
                return false;
            fresh = flock(lockFd_, LOCK_EX | LOCK_NB) == 0;
            if (!fresh)
                flock(lockFd_, LOCK_SH);
            if (stillNamed()) {
                sem_ = sem_open(semName.c_str(), O_CREAT, 0666, 0);
                return sem_ != SEM_FAILED;
            }
            closeBoth();
        }
        return false;
    }

    // Holds the object as one user among others. A first user calls it once
    // the value is settled: others opening meanwhile wait for it here.
    void share() {
        if (lockFd_ >= 0)
            flock(lockFd_, LOCK_SH);
    }

    int value() const {
        int v = 0;
        sem_getvalue(sem_, &v);
        return v;
    }
    void post() { sem_post(sem_); }
    void drain() {
        while (sem_trywait(sem_) == 0) {
        }
    }

    // Takes one from the value within the time; kObject0, kTimeout or kFailed.
    Long take(Long milliseconds) {
        int r;
        // Any negative time is above 2^31 ms as the kernel reads it: endless.
        if (milliseconds < 0) {
            while ((r = sem_wait(sem_)) != 0 && errno == EINTR) {
            }
        } else {
            timespec deadline = deadlineAfter(milliseconds);
            while ((r = sem_clockwait(sem_, CLOCK_MONOTONIC, &deadline)) != 0 && errno == EINTR) {
            }
        }
        if (r == 0)
            return wait::kObject0;
        return errno == ETIMEDOUT ? wait::kTimeout : wait::kFailed;
    }

  private:
    static timespec deadlineAfter(Long milliseconds) {
        timespec t{};
        clock_gettime(CLOCK_MONOTONIC, &t);
        long long ns = t.tv_nsec + static_cast<long long>(milliseconds) % 1000 * 1000000LL;
        t.tv_sec += static_cast<Long>(milliseconds) / 1000 + ns / 1000000000LL;
        t.tv_nsec = static_cast<long>(ns % 1000000000LL);
        return t;
    }

    // An unnamed object is a semaphore nobody else can find: its name is
    // removed as soon as it is open.
    bool openUnnamed(const std::string& semName, bool& fresh) {
        sem_ = sem_open(semName.c_str(), O_CREAT | O_EXCL, 0600, 0);
        if (sem_ == SEM_FAILED)
            return false;
        sem_unlink(semName.c_str());
        fresh = true;
        return true;
    }

    bool stillNamed() const {
        struct stat st {};
        return fstat(lockFd_, &st) == 0 && st.st_nlink > 0;
    }

    void closeBoth() {
        if (sem_ != SEM_FAILED)
            sem_close(sem_);
        sem_ = SEM_FAILED;
        if (lockFd_ >= 0)
            close(lockFd_);  // drops the lock
        lockFd_ = -1;
    }

    sem_t* sem_ = SEM_FAILED;
    int lockFd_ = -1;
    std::string semName_;
    std::string lockPath_;
};

class PosixEvent : public KernelObject {
  public:
    explicit PosixEvent(bool manualReset) : manual_(manualReset) {}
    bool open(const std::string& semName, const std::string& lockPath, bool initialState) {
        bool fresh = false;
        if (!sem_.open(semName, lockPath, fresh))
            return false;
        if (fresh) {
            sem_.drain();
            if (initialState)
                sem_.post();
        }
        sem_.share();
        return true;
    }

    bool isEvent() const override { return true; }
    Long wait(Long milliseconds) override {
        Long r = sem_.take(milliseconds);
        if (r == wait::kObject0 && manual_)
            sem_.post();  // stays signalled
        return r;
    }
    bool set() override {
        if (sem_.value() == 0)
            sem_.post();
        return true;
    }
    bool reset() override {
        sem_.drain();
        return true;
    }

  private:
    bool manual_;
    Semaphore sem_;
};

class PosixMutex : public KernelObject {
  public:
    ~PosixMutex() override {
        // A process that lets go of a mutex it holds gives it back.
        if (owned_ > 0)
            sem_.post();
    }
    bool open(const std::string& semName, const std::string& lockPath, bool initialOwner) {
        bool fresh = false;
        if (!sem_.open(semName, lockPath, fresh))
            return false;
        if (fresh) {
            sem_.drain();
            if (initialOwner) {
                owned_ = 1;
            } else {
                sem_.post();
            }
        }
        sem_.share();
        return true;
    }

    bool isEvent() const override { return false; }
    Long wait(Long milliseconds) override {
        if (owned_ > 0) {
            ++owned_;
            return wait::kObject0;
        }
        Long r = sem_.take(milliseconds);
        if (r == wait::kObject0)
            owned_ = 1;
        return r;
    }
    bool release() override {
        if (owned_ == 0)
            return false;
        if (--owned_ == 0)
            sem_.post();
        return true;
    }

  private:
    int owned_ = 0;
    Semaphore sem_;
};

std::string unnamedSemaphore() {
    static std::atomic<int> counter{0};
    return "/firmcast-unnamed-" + std::to_string(getpid()) + "-" + std::to_string(++counter);
}

}  // namespace

PosixKernelObjects::PosixKernelObjects(std::string namePrefix, std::string lockFolder)
    : prefix_(std::move(namePrefix)), lockFolder_(std::move(lockFolder)) {}

std::string PosixKernelObjects::semaphoreName(const std::string& name) const {
    std::string n = prefix_ + name;
    for (char& c : n) {
        if (c == '/' || c == '\\')
            c = '_';
    }
    return "/" + n;
}

std::shared_ptr<KernelObject> PosixKernelObjects::makeEvent(bool manualReset, bool initialState,
                                                            const std::string& name) {
    auto event = std::make_shared<PosixEvent>(manualReset);
    std::string sem = name.empty() ? unnamedSemaphore() : semaphoreName(name);
    std::string lock = name.empty() ? "" : lockFolder_ + "/firmcast-handles." + sem.substr(1);
    return event->open(sem, lock, initialState) ? event : nullptr;
}

std::shared_ptr<KernelObject> PosixKernelObjects::makeMutex(bool initialOwner,
                                                            const std::string& name) {
    auto mutex = std::make_shared<PosixMutex>();
    std::string sem = name.empty() ? unnamedSemaphore() : semaphoreName(name);
    std::string lock = name.empty() ? "" : lockFolder_ + "/firmcast-handles." + sem.substr(1);
    return mutex->open(sem, lock, initialOwner) ? mutex : nullptr;
}

}  // namespace fc
