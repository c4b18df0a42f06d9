// The command line of the headless program, read into what it is to do.
#pragma once

#include <string>
#include <vector>

namespace fc::batch {

enum class Mode {
    Help,              // --help: the usage, and nothing else
    Inspect,           // --inspect FILE: a dry run of the Ethernet reads of FILE
    InspectSynthetic,  // --inspect-synthetic: the synthetic message list
    Load,              // --model CODE --file PATH ...: load devices as an operator would
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
    int passes = 1;
    std::vector<std::string> serials;  // typed into the scale-record form, one per form
    std::vector<std::string> scales;   // the Ethernet scale list
    bool save = false;                 // press Save Config on the scale list
};

// What went wrong with a command line.
struct UsageError {
    std::string message;
};

// The options of `args` (the words after the program's name). Throws
// UsageError for anything it doesn't know or a missing argument.
Options parseOptions(const std::vector<std::string>& args);

// The usage text, ended by a new line.
std::string usageText();

}  // namespace fc::batch
