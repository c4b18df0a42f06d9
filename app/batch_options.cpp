#include "app/batch_options.h"

#include <algorithm>
#include <map>
#include <set>

#include "control/catalogue.h"
#include "serial/line_speeds.h"

#ifndef FIRMCAST_VERSION
#define FIRMCAST_VERSION "1.22"
#endif

namespace fc::batch {

namespace {

// The options that stand alone on the command line.
bool standsAlone(const std::string& word) {
    return word == "--help" || word == "-h" || word == "--version" || word == "--list-ports" ||
           word == "--inspect" || word == "--inspect-synthetic";
}

Options single(Mode mode, const std::vector<std::string>& args, std::size_t expected) {
    if (args.size() != expected) {
        if (expected == 2)
            throw UsageError{args[0] + " takes one file and nothing else"};
        throw UsageError{args[0] + " stands alone"};
    }
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
                         std::to_string(high) + " (not \"" + text + "\")"};
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

std::string joined(const std::vector<std::string>& words, const std::string& between) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
    return text;
}

std::string speed(const std::string& value) {
    const std::vector<std::string> entries = speedListEntries();
    if (std::find(entries.begin(), entries.end(), value) == entries.end())
        throw UsageError{"--speed takes an entry of the speed list: " + joined(entries, ", ") +
                         " (not \"" + value + "\")"};
    return value;
}

Progress progress(const std::string& value) {
    if (value == "auto")
        return Progress::Auto;
    if (value == "bar")
        return Progress::Bar;
    if (value == "plain")
        return Progress::Plain;
    if (value == "json")
        return Progress::Json;
    if (value == "none")
        return Progress::None;
    throw UsageError{"--progress takes auto, bar, plain, json or none (not \"" + value + "\")"};
}

// "IP[:PORT]": the visor's address as typed into its screen, and its UDP
// port, 3000 when none is given.
void udpTarget(const std::string& value, Options& o) {
    const auto colon = value.find(':');
    o.udpAddress = value.substr(0, colon);
    o.udpPort = colon == std::string::npos ? "3000" : value.substr(colon + 1);
    if (o.udpAddress.empty() || o.udpPort.empty())
        throw UsageError{"--udp takes IP[:PORT] (not \"" + value + "\")"};
}

// The models whose speed list the operator may change on the file step.
bool speedListInUse(int model) {
    ModelFlag flag = catalogueEntry(model).flag;
    return flag == ModelFlag::SerieW || flag == ModelFlag::Tr8200;
}

// The visor: a serial port or a UDP address, the speed free on the port.
void checkVisorLoad(const Options& o) {
    if (o.ethernet)
        throw UsageError{"the visor is reached over UDP: --udp IP[:PORT], not --ethernet"};
    if (o.udpAddress.empty() == (o.com == 0))
        throw UsageError{"give either --com N or --udp IP[:PORT]"};
    if (!o.speed.empty() && !o.udpAddress.empty())
        throw UsageError{"--speed is the speed of a serial line: it goes with --com, not --udp"};
    if (o.passes != 1 || !o.serials.empty() || !o.scales.empty() || o.save || o.parallel != 1 ||
        o.worker != 0 || !o.record.empty())
        throw UsageError{
            "the visor is loaded once, from its own screen: --passes, --serial, "
            "--scales, --save, --parallel, --worker and --record are not for model 7"};
}

// The limit of the scale list, and so of the scales loaded at once.
constexpr int kMostScales = 20;

void checkParallel(const Options& o) {
    if (o.parallel > 1 && !o.ethernet)
        throw UsageError{"--parallel loads Ethernet scales: it goes with --ethernet"};
    if (o.parallel > 1 && o.scales.empty())
        throw UsageError{"--parallel needs the scale list: give --scales IP,IP,..."};
    if (o.parallel > 1 && o.save)
        throw UsageError{
            "--save goes with a load of the list one scale after another, not --parallel"};
    if (o.worker != 0 && (!o.ethernet || o.scales.size() != 1 || o.parallel != 1 || o.save))
        throw UsageError{
            "--worker loads one scale of a parallel run: --ethernet and one --scales address"};
}

void checkLoad(const Options& o) {
    if (o.model < 0)
        throw UsageError{"--model is needed"};
    if (o.model == 3)
        throw UsageError{"model 3 is loaded by its own tool or screen, not here"};
    if (o.file.empty())
        throw UsageError{"--file is needed"};
    if (o.model == 7) {
        checkVisorLoad(o);
        return;
    }
    if (!o.udpAddress.empty())
        throw UsageError{"--udp is for model 7, the visor"};
    if (o.ethernet == (o.com != 0))
        throw UsageError{"give either --com N or --ethernet"};
    if (o.ethernet && o.model != 0 && o.model != 6 && o.model != 8)
        throw UsageError{"only models 0, 6 and 8 are loaded over Ethernet"};
    if (o.adsl && !o.ethernet)
        throw UsageError{"--adsl is a box of the Ethernet scale list: it goes with --ethernet"};
    if (!o.speed.empty() && o.ethernet)
        throw UsageError{
            "--speed is the speed of a serial line: it goes with --com, not --ethernet"};
    checkParallel(o);
    if (!o.speed.empty() && !speedListInUse(o.model))
        throw UsageError{"--speed is for models 0, 6 and 8: model " + std::to_string(o.model) +
                         " always starts at 57600 and its speed list cannot be changed"};
}

const std::set<std::string> kFlags = {"--ethernet", "--save", "--check-file", "--adsl"};
const std::set<std::string> kValued = {"--level",    "--model",  "--com",    "--speed",    "--file",
                                       "--passes",   "--serial", "--scales", "--progress", "--udp",
                                       "--parallel", "--record", "--worker"};

// A word that is one of the options, with or without "=value".
bool isOption(const std::string& word) {
    const std::string name = word.substr(0, word.find('='));
    return kFlags.count(name) != 0 || kValued.count(name) != 0 || standsAlone(name);
}

Options parseLoadOptions(const std::vector<std::string>& args) {
    Options o;
    o.mode = Mode::Load;
    std::map<std::string, std::string> given;  // option -> its value
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string option = args[i];
        std::string value;
        bool inlineValue = false;
        // "--model=1" is "--model 1".
        if (std::size_t equals = option.find('=');
            option.rfind("--", 0) == 0 && equals != std::string::npos) {
            value = option.substr(equals + 1);
            option = option.substr(0, equals);
            inlineValue = true;
        }
        if (standsAlone(option))
            throw UsageError{option + " stands alone"};
        if (kFlags.count(option) == 0 && kValued.count(option) == 0) {
            if (option.rfind("-", 0) == 0)
                throw UsageError{"unknown option " + option};
            throw UsageError{"unexpected argument \"" + option +
                             "\": every value follows its option"};
        }
        if (kFlags.count(option) != 0) {
            if (given.count(option) != 0)
                throw UsageError{option + " is given twice"};
            given[option];
            if (inlineValue)
                throw UsageError{option + " takes no value"};
            (option == "--ethernet" ? o.ethernet
             : option == "--save"   ? o.save
             : option == "--adsl"   ? o.adsl
                                    : o.checkFile) = true;
            continue;
        }
        if (!inlineValue) {
            if (i + 1 >= args.size() || isOption(args[i + 1]))
                throw UsageError{option + " needs a value"};
            value = args[++i];
        }
        if (option != "--serial" && given.count(option) != 0)
            throw UsageError{option + " is given twice (" + given[option] + ", then " + value +
                             ")"};
        given[option] = value;
        if (option == "--level") {
            number(option, value, 0, 9);
            o.level = value;
        } else if (option == "--model") {
            o.model = number(option, value, 0, 8);
        } else if (option == "--com") {
            o.com = number(option, value, 1, 4);
        } else if (option == "--speed") {
            o.speed = speed(value);
        } else if (option == "--file") {
            o.file = value;
        } else if (option == "--passes") {
            o.passes = number(option, value, 1, 100000);
        } else if (option == "--serial") {
            o.serials.push_back(value);
        } else if (option == "--scales") {
            o.scales = splitCommas(value);
        } else if (option == "--progress") {
            o.progress = progress(value);
        } else if (option == "--udp") {
            udpTarget(value, o);
        } else if (option == "--parallel") {
            o.parallel = number(option, value, 1, kMostScales);
        } else if (option == "--record") {
            if (value.empty())
                throw UsageError{"--record needs a file"};
            o.record = value;
        } else if (option == "--worker") {
            o.worker = number(option, value, 1, kMostScales);
        }
    }
    checkLoad(o);
    return o;
}

// "--display (--com N | --ethernet IP) --file F [--logic-address DD] [--speed BAUD]".
Options parseDisplayOptions(const std::vector<std::string>& args) {
    Options o;
    o.mode = Mode::Display;
    const std::set<std::string> valued = {"--com", "--ethernet", "--file", "--logic-address",
                                          "--speed"};
    std::set<std::string> given;
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string option = args[i], value;
        bool inlineValue = false;
        if (std::size_t equals = option.find('=');
            option.rfind("--", 0) == 0 && equals != std::string::npos) {
            value = option.substr(equals + 1);
            option = option.substr(0, equals);
            inlineValue = true;
        }
        if (!given.insert(option).second)
            throw UsageError{option + " is given twice"};
        if (option == "--display") {
            if (inlineValue)
                throw UsageError{"--display takes no value"};
            continue;
        }
        if (valued.count(option) == 0)
            throw UsageError{option.rfind("-", 0) == 0 ? "unknown option with --display: " + option
                                                       : "unexpected argument \"" + option +
                                                             "\": every value follows its option"};
        if (!inlineValue) {
            if (i + 1 >= args.size() || args[i + 1].rfind("--", 0) == 0)
                throw UsageError{option + " needs a value"};
            value = args[++i];
        }
        if (option == "--com")
            o.com = number(option, value, 1, 4);
        else if (option == "--ethernet")
            o.displayIp = value;
        else if (option == "--file")
            o.file = value;
        else if (option == "--logic-address") {
            int n = number(option, value, 0, 49);
            if (value.size() != 2)
                throw UsageError{"--logic-address takes two digits, 00 to 49 (not \"" + value +
                                 "\")"};
            o.logicAddress = (n < 10 ? "0" : "") + std::to_string(n);
        } else {
            o.speed = speed(value);
        }
    }
    o.ethernet = given.count("--ethernet") != 0;
    if (o.ethernet == (o.com != 0))
        throw UsageError{"--display needs either --com N or --ethernet IP"};
    if (o.file.empty())
        throw UsageError{"--file is needed"};
    if (!o.speed.empty() && o.ethernet)
        throw UsageError{
            "--speed is the speed of a serial line: it goes with --com, not --ethernet"};
    return o;
}

}  // namespace

Options parseOptions(const std::vector<std::string>& args) {
    if (args.empty())
        throw UsageError{"nothing to do"};
    const std::string& first = args[0];
    if (first == "--help" || first == "-h")
        return single(Mode::Help, args, 1);
    if (first == "--version")
        return single(Mode::Version, args, 1);
    if (first == "--list-ports")
        return single(Mode::ListPorts, args, 1);
    if (first == "--inspect")
        return single(Mode::Inspect, args, 2);
    if (first == "--inspect-synthetic")
        return single(Mode::InspectSynthetic, args, 1);
    if (std::find(args.begin(), args.end(), "--display") != args.end())
        return parseDisplayOptions(args);
    return parseLoadOptions(args);
}

std::string versionText() {
    return std::string("firmcast-batch ") + FIRMCAST_VERSION;
}

std::string usageText() {
    return "usage: firmcast-batch --model CODE (--com N | --ethernet) --file PATH [options]\n"
           "       firmcast-batch --display (--com N | --ethernet IP) --file PATH\n"
           "                      [--logic-address DD] [--speed BAUD]\n"
           "       firmcast-batch --model 7 (--com N | --udp IP[:PORT]) [--speed BAUD] --file "
           "PATH\n"
           "       firmcast-batch --inspect FILE\n"
           "       firmcast-batch --inspect-synthetic\n"
           "       firmcast-batch --list-ports\n"
           "       firmcast-batch --help | --version\n"
           "\n"
           "Loads devices as an operator would, through the same screens and driver:\n"
           "--model CODE          0 Serie_W, 1 Serie_N, 2 Serie_H, 4 Matrix 4000,\n"
           "                      5 TR-6100, 6 and 8 TR-8200, 7 the MV-510 visor (its own\n"
           "                      screen; \"label: <text>\" is its last word; exit 0 on\n"
           "                      \"Firmcast OK\")\n"
           "--com N               the device is on serial port COM N (1..4; COM N is the\n"
           "                      device named by FIRMCAST_COM<N>, else /dev/ttyS<N-1>)\n"
           "--ethernet            the device is on Ethernet (models 0, 6 and 8)\n"
           "--udp IP[:PORT]       the visor (model 7) is reached over UDP at IP, port\n"
           "                      PORT (3000 unless given); answers come to port 3001\n"
           "--file PATH           the firmware file\n"
           "--level N             the operating level, the digit of the command line (0)\n"
           "--speed BAUD          an entry of the speed list (115200, 57600, 38400, 28800,\n"
           "                      19200, 14400, 9600, 2400, 1200) for models 0, 6 and 8 on\n"
           "                      RS-232 (2400 and 1200 run at 9600), and for the visor on\n"
           "                      RS-232 (115200 unless given)\n"
           "--passes K            load K devices in Production Way (1)\n"
           "--serial SN           a serial number read into the next scale-record form as\n"
           "                      a barcode reader does (the field's text replaced, then\n"
           "                      Enter); repeated, one per form, in order; a form with\n"
           "                      none left is accepted as it stands\n"
           "--adsl                tick the ADSL box of the Ethernet scale list\n"
           "--scales IP[,IP...]   the Ethernet scale list; --save presses Save Config; at\n"
           "                      the end of each pass one line a scale on standard\n"
           "                      output: \"scale <n>: <ip> <ok|failed>: <its last text>\"\n"
           "--parallel N          load the scales of --scales N at a time (1 to 20), each\n"
           "                      by a worker process of its own; the n-th --serial goes\n"
           "                      to the n-th scale of the list (in pass p, the\n"
           "                      (n + (p-1) x count)-th); the scale lines come in list\n"
           "                      order once every worker has ended\n"
           "--record FILE         append one JSON line per device and pass to FILE: times,\n"
           "                      station, level, model, port or address, firmware name,\n"
           "                      size and SHA-256, checksums, MACs, serial, result; safe\n"
           "                      when several programs append at once (without it, the\n"
           "                      record= key of config.ini's [Record] section is used)\n"
           "--worker N            (used by --parallel) load the one scale of --scales as\n"
           "                      the N-th of the whole list\n"
           "--check-file          refuse a file with a line that is not a sound record\n"
           "                      (its form or its checksum) before the port is opened\n"
           "--progress HOW        auto (bar on a terminal, plain otherwise), bar, plain\n"
           "                      (a line a phase and a tenth), json (an object a line)\n"
           "                      or none; on standard error\n"
           "Every option but --serial is given once; \"--option=value\" works too.\n"
           "\n"
           "--display             load a graphic display from its own screen, opened from\n"
           "                      the way step of model 0, through the driver\n"
           "                      korvacom/korvacom of the program's folder: over\n"
           "                      --com N or --ethernet IP (the display's address), with\n"
           "                      --logic-address DD (00 to 49, default 00) and --speed\n"
           "                      BAUD on a serial line (default 19200). At the end the\n"
           "                      screen's last word is printed as \"label: <text>\"; exit\n"
           "                      status 0 when it is \"Loaded OK\", 1 otherwise, 3 on the\n"
           "                      fatal trap\n"
           "\n"
           "--inspect FILE        read FILE as an Ethernet load of a Serie_W scale would\n"
           "                      (the message list, then the image and its checksum) and\n"
           "                      print the model header, the messages and the checksum\n"
           "--inspect-synthetic   print the synthetic message list of the whole flash\n"
           "--list-ports          the serial devices of this machine, each with the\n"
           "                      FIRMCAST_COM<N>=... setting that makes it COM N\n"
           "\n"
           "Every message box is printed as a line \"msgbox: <text>\" when it is shown.\n"
           "Where the screen waits for an operator and the options have nothing more to\n"
           "say to it, the run stops and says where on standard error.\n"
           "Exit status: 0 success, 1 a read (or a device) failed or the run stopped,\n"
           "2 bad usage, 3 the program ended by its fatal trap.\n";
}

}  // namespace fc::batch
