// A whole program on the virtual clock: the main screen with its driver,
// recorded message boxes, simulated serial ports, a temporary drive C: and
// program folder, and an operator script. A scenario states what the
// operator does and when, runs the driver, and then looks at what happened.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "control/firmcast_form.h"
#include "operator/operator_script.h"
#include "operator/recording_dialogs.h"
#include "platform/drives.h"
#include "platform/file_table.h"
#include "platform/linux/linux_file_system.h"
#include "platform/linux/sqlite_database.h"
#include "virtual/virtual_calendar.h"
#include "virtual/virtual_kernel_objects.h"
#include "virtual/virtual_network.h"
#include "virtual/virtual_pump.h"
#include "virtual/virtual_serial.h"

namespace fc::test {

// Thrown by a script step to end a scenario where the test has seen enough.
struct ScenarioDone {};

// A folder that is removed with everything in it when the test ends.
class TempFolder {
  public:
    TempFolder();
    ~TempFolder();
    const std::filesystem::path& path() const { return path_; }
    // Writes a file (bytes as given) and returns its full host path.
    std::string write(const std::string& relative, const std::string& content) const;

  private:
    std::filesystem::path path_;
};

class ScenarioRig {
  public:
    ScenarioRig();

    VirtualPump pump;
    RecordingDialogs dialogs{pump};
    VirtualSerialOpener serial{pump};
    FileTable files;
    TempFolder driveC;
    TempFolder home;
    // The machine under the screen: its own files, kernel objects and
    // calendar on the virtual clock, and SQLite.
    LinuxFileSystem fileSystem;
    VirtualKernelObjects kernel{pump};
    VirtualCalendar calendar{pump, LocalDateTime{2005, 3, 21, 10, 42, 0}};
    SqliteDatabaseEngine databases;
    // The LAN of the scales, on the same clock.
    VirtualNetwork network{pump};
    // When set before the screen is built, the network it reaches instead of
    // `network` (a view of it, say).
    Network* networkSeen = nullptr;
    LoadHooks hooks;
    OperatorScript script{pump};

    // Lets drive `letter` stand for `folder` ("C:" is `driveC`); only before
    // the screen is built.
    void addDrive(char letter, const std::filesystem::path& folder);

    // Builds the main screen (with the hooks and drives as they are now).
    Firmcast& form();
    // The services of a screen of this rig, on serial ports of the test's
    // choosing; the drives are fixed from here on.
    Services servicesWith(SerialPortOpener& ports);

    // Runs the program with `commandLine` until it ends or a step throws
    // ScenarioDone. Returns the exit status, or -1 when the scenario stopped.
    int run(const std::string& commandLine = "");

    // The operator's hands on the main screen.
    void click(const std::string& control);
    void select(const std::string& control, int index);
    void selectText(const std::string& control, const std::string& text);

    // Script steps that act when the driver waits in a given state.
    OperatorScript& whenStep(Integer step, const std::string& what, std::function<void()> act);
    // Ends the scenario as soon as `condition` holds.
    OperatorScript& stopWhen(std::function<bool()> condition, const std::string& what);

    // Walks the wizard to the load of `fileName` (a file in C:\) for a model
    // code over COM `port`, pressing Next on the file step.
    void scriptSerialLoad(int modelCode, int port, const std::string& fileName);

    std::vector<std::string> boxes() const { return dialogs.texts(); }

  private:
    std::map<char, std::string> driveRoots_;
    std::unique_ptr<Drives> drives_;
    std::unique_ptr<Firmcast> form_;
};

}  // namespace fc::test
