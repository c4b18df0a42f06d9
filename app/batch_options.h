// The command line of the headless program, read into what it is to do.
#pragma once

#include <string>
#include <vector>

namespace fc::batch {

enum class Mode {
    Help,              // --help: the usage, and nothing else
    Version,           // --version: the program's name and version
    ListPorts,         // --list-ports: the serial devices of this machine
    Inspect,           // --inspect FILE: a dry run of the Ethernet reads of FILE
    InspectSynthetic,  // --inspect-synthetic: the synthetic message list
    Load,              // --model CODE --file PATH ...: load devices as an operator would
    Display,           // --display ...: load a graphic display from its own screen
};

// How a load shows its progress on standard error.
enum class Progress {
    Auto,   // Bar on a terminal, Plain otherwise
    Bar,    // one line drawn over and over, as on a terminal
    Plain,  // a line for each phase and each tenth of the load
    Json,   // one JSON object a line, for a program that follows the load
    None,   // nothing
};

struct Options {
    Mode mode = Mode::Help;
    std::string file;  // a path of this machine
    // A load.
    std::string level = "0";  // the command line's digit
    int model = -1;           // a code of the catalogue
    int com = 0;              // 1..4, or 0 with --ethernet
    bool ethernet = false;
    std::string speed;  // an entry of the speed list, or empty
    // The visor over UDP: its address and port as typed into its screen.
    std::string udpAddress;
    std::string udpPort;
    int passes = 1;
    std::vector<std::string> serials;  // typed into the scale-record form, one per form
    std::vector<std::string> scales;   // the Ethernet scale list
    bool save = false;                 // press Save Config on the scale list
    bool adsl = false;                 // tick the ADSL box of the scale list
    bool checkFile = false;            // refuse a file with a bad line before the port opens
    // Ethernet scales loaded this many at a time, each by a worker process of
    // its own; 1 loads them one after another in this process.
    int parallel = 1;
    // A worker of a parallel run: the one scale of `scales` is the
    // `worker`-th of the whole list. 0 when this is not a worker.
    int worker = 0;
    // The record file every device loaded is appended to; empty for none
    // (then the record= key of config.ini's [Record] section, if any).
    std::string record;
    Progress progress = Progress::Auto;
    // A graphic display: the way (com, or the display's IP address) and its
    // logical address, an entry of the screen's list "00" to "49".
    std::string displayIp;
    std::string logicAddress;
};

// What went wrong with a command line.
struct UsageError {
    std::string message;
};

// The options of `args` (the words after the program's name). Throws
// UsageError, saying what is wrong, for an option it doesn't know, a missing
// or wrong value, an option given twice (only --serial may be repeated), or
// options that do not go together.
Options parseOptions(const std::vector<std::string>& args);

// The usage text, ended by a new line.
std::string usageText();

// "firmcast-batch 1.22": the program and the version of the project.
std::string versionText();

}  // namespace fc::batch
