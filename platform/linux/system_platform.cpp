#include "platform/system_platform.h"

#include "platform/linux/linux_file_system.h"
#include "platform/linux/linux_network.h"
#include "platform/linux/posix_kernel_objects.h"
#include "platform/linux/sqlite_database.h"
#include "platform/linux/system_calendar.h"

namespace fc {

// One of each for the whole program, made on first use.

FileSystem& systemFileSystem() {
    static LinuxFileSystem fileSystem;
    return fileSystem;
}

const Calendar& systemCalendar() {
    static SystemCalendar calendar;
    return calendar;
}

KernelObjects& systemKernelObjects() {
    static PosixKernelObjects kernel;
    return kernel;
}

DatabaseEngine& systemDatabases() {
    static SqliteDatabaseEngine databases;
    return databases;
}

Network& systemNetwork() {
    static LinuxNetwork network;
    return network;
}

}  // namespace fc
