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

int number(const std::string& option, const std::string& text, int low, int high) {
    std::size_t used = 0;
    int value = 0;
    try {
        value = std::stoi(text, &used);
    } catch (...) {
        used = 0;
    }
    if (used != text.size() || value < low || value > high)
        throw UsageError{option + " takes a number from " + std::to_string(low) + " to " +
                         std::to_string(high)};
    return value;
}

std::vector<std::string> splitCommas(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t comma; (comma = text.find(',', start)) != std::string::npos; start = comma + 1)
        parts.push_back(text.substr(start, comma - start));
    parts.push_back(text.substr(start));
    return parts;
}

void checkLoad(const Options& o) {
    if (o.model < 0)
        throw UsageError{"--model is needed"};
    if (o.model == 3 || o.model == 7)
        throw UsageError{"model " + std::to_string(o.model) +
                         " is loaded by its own tool or screen, not here"};
    if (o.file.empty())
        throw UsageError{"--file is needed"};
    if (o.ethernet == (o.com != 0))
        throw UsageError{"give either --com N or --ethernet"};
    if (o.ethernet && o.model != 0 && o.model != 6 && o.model != 8)
        throw UsageError{"only models 0, 6 and 8 are loaded over Ethernet"};
}

Options parseLoadOptions(const std::vector<std::string>& args) {
    Options o;
    o.mode = Mode::Load;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& option = args[i];
        if (option == "--ethernet") {
            o.ethernet = true;
            continue;
        }
        if (option == "--save") {
            o.save = true;
            continue;
        }
        if (i + 1 >= args.size())
            throw UsageError{option == "--help" ? "--help stands alone"
                                                : "unknown option or missing value: " + option};
        const std::string& value = args[++i];
        if (option == "--level") {
            number(option, value, 0, 9);
            o.level = value;
        } else if (option == "--model") {
            o.model = number(option, value, 0, 8);
        } else if (option == "--com") {
            o.com = number(option, value, 1, 4);
        } else if (option == "--speed") {
            o.speed = value;
        } else if (option == "--file") {
            o.file = value;
        } else if (option == "--passes") {
            o.passes = number(option, value, 1, 100000);
        } else if (option == "--serial") {
            o.serials.push_back(value);
        } else if (option == "--scales") {
            o.scales = splitCommas(value);
        } else {
            throw UsageError{"unknown option " + option};
        }
    }
    checkLoad(o);
    return o;
}

}  // namespace

Options parseOptions(const std::vector<std::string>& args) {
    if (args.empty())
        throw UsageError{"nothing to do"};
    const std::string& first = args[0];
    if (first != "--help" && first != "-h" && first != "--inspect" &&
        first != "--inspect-synthetic")
        return parseLoadOptions(args);
    if (first == "--help" || first == "-h")
        return single(Mode::Help, args, 1);
    if (first == "--inspect")
        return single(Mode::Inspect, args, 2);
    if (first == "--inspect-synthetic")
        return single(Mode::InspectSynthetic, args, 1);
    throw UsageError{"unknown option " + first};
}

std::string usageText() {
    return "usage: firmcast-batch --model CODE (--com N | --ethernet) --file PATH [options]\n"
           "       firmcast-batch --inspect FILE\n"
           "       firmcast-batch --inspect-synthetic\n"
           "       firmcast-batch --help\n"
           "\n"
           "Loads devices as an operator would, through the same screens and driver:\n"
           "--model CODE          0 Serie_W, 1 Serie_N, 2 Serie_H, 4 Matrix 4000,\n"
           "                      5 TR-6100, 6 and 8 TR-8200\n"
           "--com N               the device is on serial port COM N (1..4; COM N is the\n"
           "                      device named by FIRMCAST_COM<N>, else /dev/ttyS<N-1>)\n"
           "--ethernet            the device is on Ethernet (models 0, 6 and 8)\n"
           "--file PATH           the firmware file\n"
           "--level N             the operating level, the digit of the command line (0)\n"
           "--speed BAUD          an entry of the speed list, where the model allows it\n"
           "--passes K            load K devices in Production Way (1)\n"
           "--serial SN           what the operator types into the scale-record form;\n"
           "                      may be repeated, one per form\n"
           "--scales IP[,IP...]   the Ethernet scale list; --save presses Save Config\n"
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
