#include "app/batch_options.h"

namespace fc::batch {

namespace {

Options single(Mode mode, const std::vector<std::string>& args, std::size_t expected) {
    if (args.size() != expected)
        throw UsageError{args[0] + (expected == 2 ? " takes one file" : " takes nothing else")};
    Options options;
    options.mode = mode;
    if (expected == 2)
        options.file = args[1];
    return options;
}

}  // namespace

Options parseOptions(const std::vector<std::string>& args) {
    if (args.empty())
        throw UsageError{"nothing to do"};
    const std::string& first = args[0];
    if (first == "--help" || first == "-h")
        return single(Mode::Help, args, 1);
    if (first == "--inspect")
        return single(Mode::Inspect, args, 2);
    if (first == "--inspect-synthetic")
        return single(Mode::InspectSynthetic, args, 1);
    throw UsageError{"unknown option " + first};
}

std::string usageText() {
    return "usage: firmcast-batch --inspect FILE\n"
           "       firmcast-batch --inspect-synthetic\n"
           "       firmcast-batch --help\n"
           "\n"
           "--inspect FILE        read FILE as an Ethernet load of a Serie_W scale would\n"
           "                      (the message list, then the image and its checksum) and\n"
           "                      print the model header, the messages and the checksum\n"
           "--inspect-synthetic   print the synthetic message list of the whole flash\n"
           "\n"
           "Every message box is printed as a line \"msgbox: <text>\" when it is shown.\n"
           "Exit status: 0 success, 1 a read (or a device) failed, 2 bad usage,\n"
           "3 the program ended by its fatal trap.\n";
}

}  // namespace fc::batch
