// A common module on the virtual clock for the tests: recorded boxes, a
// program folder of its own that goes away with the test, the real file
// system and database engine, virtual kernel objects, and a calendar that
// starts at 21/03/2005 10:42.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "common/common_module.h"
#include "operator/recording_dialogs.h"
#include "platform/drives.h"
#include "platform/file_table.h"
#include "platform/linux/linux_file_system.h"
#include "platform/linux/sqlite_database.h"
#include "platform/runtime_error.h"
#include "platform/serial_port.h"
#include "platform/services.h"
#include "virtual/virtual_calendar.h"
#include "virtual/virtual_kernel_objects.h"
#include "virtual/virtual_network.h"
#include "virtual/virtual_pump.h"

namespace fc::commontest {

// The common procedures open no serial port; one that tried would fail here.
class NoSerialPorts : public SerialPortOpener {
  public:
    std::unique_ptr<SerialPort> open(int) override { throw RuntimeError(err::kInvalidPortNumber); }
};

// A folder removed with everything in it when the test ends.
class ScratchFolder {
  public:
    ScratchFolder() {
        static int count = 0;
        path_ = std::filesystem::temp_directory_path() /
                ("fc-common-" + std::to_string(getpid()) + "-" + std::to_string(++count));
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~ScratchFolder() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    std::string str() const { return path_.string(); }
    std::filesystem::path operator/(const std::string& relative) const { return path_ / relative; }

  private:
    std::filesystem::path path_;
};

inline std::string readAll(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void writeAll(const std::filesystem::path& file, const std::string& content) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << content;
}

struct CommonRig {
    explicit CommonRig(FileSystem* fileSystemOverride = nullptr)
        : fileSystem(fileSystemOverride ? *fileSystemOverride : realFileSystem) {}

    VirtualPump pump;
    RecordingDialogs dialogs{pump};
    NoSerialPorts serialPorts;
    FileTable files;
    ScratchFolder home;
    LinuxFileSystem realFileSystem;
    FileSystem& fileSystem;
    VirtualKernelObjects kernel{pump};
    VirtualCalendar calendar{pump, LocalDateTime{2005, 3, 21, 10, 42, 0}};
    SqliteDatabaseEngine databases;
    Drives drives;  // none: the tests name host paths
    VirtualNetwork network{pump};
    Services services{pump,       dialogs, serialPorts, files,     home.str(), drives,
                      fileSystem, kernel,  calendar,    databases, network};
    CommonModule c{services};

    std::filesystem::path logFile() const { return home / "Balanza_Logs/Errores.log"; }
    std::filesystem::path logFolder() const { return home / "Balanza_Logs"; }
};

// The three lines of one entry, as written.
inline std::string entry(const std::string& line1, const std::string& line2) {
    const std::string indent(17, ' ');
    return line1 + "\r\n" + indent + line2 + "\r\n" + indent + std::string(53, '*') + "\r\n";
}

}  // namespace fc::commontest
