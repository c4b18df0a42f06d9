// Starting the site's own programs (the Serie_G tool, the display's
// communications driver), as the run time's Shell does: one command line in
// the Windows form, the program first and its arguments after it, such as
// "<program folder>\Gseries.exe 2". The program runs on its own; nothing
// waits for it.
#pragma once

#include <string>
#include <vector>

namespace fc {

class ProcessLauncher {
  public:
    virtual ~ProcessLauncher() = default;

    // Starts the program of `commandLine` and returns its process number, or
    // 0 when it could not be started.
    virtual long start(const std::string& commandLine) = 0;
};

// A command line taken apart: the program as written ("C:\Tools\Gseries.exe")
// and the arguments that follow it.
struct CommandLine {
    std::string program;
    std::vector<std::string> arguments;
};

// The program ends at a closing quote when it begins with one, else after
// ".exe" followed by a blank or the end, else at the first blank; the
// arguments are the words after it, a quoted word kept whole.
CommandLine splitCommandLine(const std::string& commandLine);

}  // namespace fc
