// The loader's side of the test bed: the common module and the network
// module on the real pump and the machine's network, with a program folder of
// its own. The kernel objects are the in-process ones: the bed is about the
// network, and the machine's named objects are shared with whatever else runs.
#pragma once

#include "common/common_module.h"
#include "ethernet/network_module.h"
#include "operator/recording_dialogs.h"
#include "platform/drives.h"
#include "platform/file_table.h"
#include "platform/linux/linux_file_system.h"
#include "platform/linux/linux_network.h"
#include "platform/linux/real_pump.h"
#include "platform/linux/sqlite_database.h"
#include "platform/linux/system_calendar.h"
#include "platform/window_timer.h"
#include "unit/common_fixture.h"
#include "virtual/virtual_kernel_objects.h"

namespace fc::netbed {

struct LoaderWorld {
    // `helper` is the network helper the loader asks for what it may not do.
    explicit LoaderWorld(const std::string& helper = netHelperBesideProgram()) : network(helper) {
        TimerClose.onTimer = [this] { TimerClose.setEnabled(false); };
    }

    RealPump pump;
    RecordingDialogs dialogs{pump};
    commontest::NoSerialPorts serialPorts;
    FileTable files;
    commontest::ScratchFolder home;
    LinuxFileSystem fileSystem;
    VirtualKernelObjects kernel{pump};
    SystemCalendar calendar;
    SqliteDatabaseEngine databases;
    Drives drives;  // none: the tests name host paths
    LinuxNetwork network;
    Services services{pump,       dialogs, serialPorts, files,     home.str(), drives,
                      fileSystem, kernel,  calendar,    databases, network};
    CommonModule c{services};
    WindowTimer TimerClose{pump, "TimerClose"};
    NetworkModule m{c, network, TimerClose};
};

}  // namespace fc::netbed
