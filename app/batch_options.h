// The command line of the headless program, read into what it is to do.
#pragma once

#include <string>
#include <vector>

namespace fc::batch {

enum class Mode {
    Help,              // --help: the usage, and nothing else
    Inspect,           // --inspect FILE: a dry run of the Ethernet reads of FILE
    InspectSynthetic,  // --inspect-synthetic: the synthetic message list
};

struct Options {
    Mode mode = Mode::Help;
    std::string file;  // a path of this machine
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
