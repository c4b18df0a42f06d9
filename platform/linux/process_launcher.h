// Starting a program on Linux from a Windows command line: the program's
// path has its back slashes turned into slashes (a drive path such as
// "C:\Tools\Gseries.exe" resolves under its drive), loses its ".exe", and is
// matched case-insensitively in its folder when the exact name is not there.
// The program is started detached (double fork), so that it never lingers
// as a child of the loader once it ends.
#pragma once

#include "platform/drives.h"
#include "platform/process_launcher.h"

namespace fc {

class LinuxProcessLauncher : public ProcessLauncher {
  public:
    explicit LinuxProcessLauncher(const Drives& drives) : drives_(drives) {}

    long start(const std::string& commandLine) override;

    // The host path of the program written in a command line.
    std::string hostProgram(const std::string& program) const;

  private:
    const Drives& drives_;
};

}  // namespace fc
