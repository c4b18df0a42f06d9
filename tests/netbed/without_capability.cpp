#include "without_capability.h"

#include <linux/capability.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>

namespace fc::netbed {

namespace {

constexpr int kCouldNotDrop = 255;

// libcap is not among the build's packages: the two system calls are enough.
bool dropCapability(int capability) {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct sets[_LINUX_CAPABILITY_U32S_3]{};
    if (syscall(SYS_capget, &header, sets) != 0)
        return false;
    const std::uint32_t bit = CAP_TO_MASK(capability);
    __user_cap_data_struct& set = sets[CAP_TO_INDEX(capability)];
    set.effective &= ~bit;
    set.permitted &= ~bit;
    set.inheritable &= ~bit;
    if (syscall(SYS_capset, &header, sets) != 0)
        return false;
    __user_cap_data_struct check[_LINUX_CAPABILITY_U32S_3]{};
    return syscall(SYS_capget, &header, check) == 0 &&
           (check[CAP_TO_INDEX(capability)].effective & bit) == 0;
}

}  // namespace

int runWithoutCapability(int capability, const std::function<int()>& work) {
    std::fflush(nullptr);
    pid_t child = fork();
    if (child < 0)
        return -1;
    if (child == 0) {
        if (!dropCapability(capability))
            _exit(kCouldNotDrop);
        _exit(work() & 0x7F);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) == kCouldNotDrop)
        return -1;
    return WEXITSTATUS(status);
}

}  // namespace fc::netbed
