#include "sim/sim_options.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "sim/banked_device.h"
#include "sim/numbered_scale.h"

namespace fc {

namespace {

bool number(const char* text, long long& out) {
    char* end = nullptr;
    out = std::strtoll(text, &end, 0);
    return end != text && *end == '\0';
}

bool realNumber(const char* text, double& out) {
    char* end = nullptr;
    out = std::strtod(text, &end);
    return end != text && *end == '\0';
}

// A byte count, 0 or more.
bool count(const char* text, long& out) {
    long long value = 0;
    if (!number(text, value) || value < 0)
        return false;
    out = static_cast<long>(value);
    return true;
}

// "N:X" into two numbers.
bool pair(const char* text, long long& first, long long& second) {
    const char* colon = std::strchr(text, ':');
    if (!colon)
        return false;
    std::string head(text, colon);
    return number(head.c_str(), first) && number(colon + 1, second);
}

std::string printable(const std::string& text) {
    std::string out;
    for (unsigned char c : text) {
        if (c >= 0x20 && c < 0x7F) {
            out += static_cast<char>(c);
        } else {
            char hex[8];
            std::snprintf(hex, sizeof hex, "<%02X>", c);
            out += hex;
        }
    }
    return out;
}

// The options of the TCP mode; false for any other, or a bad value.
bool tcpOption(const std::string& option, const char* v, SimOptions& out) {
    long long a = 0;
    if (option == "--tcp" && number(v, a) && a >= 0 && a <= 65535) {
        out.tcpPort = static_cast<int>(a);
        return true;
    }
    if (option == "--read-rate")
        return realNumber(v, out.readRate) && out.readRate >= 0;
    if (option == "--receive-buffer" && number(v, a) && a > 0) {
        out.receiveBuffer = static_cast<int>(a);
        return true;
    }
    if (option == "--stop-reading-after")
        return count(v, out.tcpFaults.stopReadingAfter);
    if (option == "--close-after")
        return count(v, out.tcpFaults.closeAfter);
    if (option == "--reset-after")
        return count(v, out.tcpFaults.resetAfter);
    if (option == "--stop-reading-at")
        return count(v, out.scaleFaults.stopReadingAt);
    if (option == "--drop-at")
        return count(v, out.scaleFaults.dropAt);
    if (option == "--address") {
        out.listenAddress = v;
        return !out.listenAddress.empty();
    }
    if (option == "--interface") {
        out.interfaceName = v;
        return !out.interfaceName.empty();
    }
    long long b = 0;
    if (option == "--fail-at" && pair(v, a, b) && a >= 0 && b >= 0 && b <= 255) {
        out.scaleFaults.failAt = static_cast<long>(a);
        out.scaleFaults.errorNumber = static_cast<int>(b);
        return true;
    }
    return false;
}

// The visor's options; false for any other, or a bad value.
bool visorOption(const std::string& option, const char* v, SimOptions& out) {
    long long a = 0;
    if (!number(v, a) || a < 0)
        return false;
    if (option == "--udp" && a <= 65535)
        out.udpPort = static_cast<int>(a);
    else if (option == "--off-ms")
        out.offMs = a;
    else if (option == "--wrong-dump-byte-at" && a <= 0xFFFF)
        out.visorFaults.wrongDumpByteAt = static_cast<long>(a);
    else if (option == "--slow-answer-ms")
        out.visorFaults.slowAnswer = a * 1000;
    else if (option == "--silent-record")
        out.visorFaults.silentAtRecord = static_cast<long>(a);
    else if (option == "--silent-dump")
        out.visorFaults.silentDumps.insert(static_cast<long>(a));
    else if (option == "--lose-datagram")
        out.bridgeFaults.loseDatagram = static_cast<long>(a);
    else if (option == "--split-dump" && a >= 1)
        out.bridgeFaults.splitDump = static_cast<int>(a);
    else
        return false;
    return true;
}

// Microseconds as milliseconds with three decimals.
std::string milliseconds(Micros at) {
    char text[32];
    std::snprintf(text, sizeof text, "%lld.%03lld", static_cast<long long>(at / 1000),
                  static_cast<long long>(at % 1000));
    return text;
}

}  // namespace

std::string simUsage() {
    return "usage: firmcast-sim [options]\n"
           "  A simulated device on a pseudo-terminal; its path is printed on the first line.\n"
           "  --device KIND        numbered (Serie_N, Serie_W, TR-8200), banked (Serie_H,\n"
           "                       TR-6100, Matrix 4000) or echo; default numbered\n"
           "  --baud N             the device's speed (default 57600)\n"
           "  --erase-ms N         how long the flash erase takes (default 2000)\n"
           "  --bank-ms N          how long a banked device takes to record a bank\n"
           "                       (default 200)\n"
           "  --wants-mac          answer the end command asking for a MAC address\n"
           "  --silent-end         say nothing to the end command\n"
           "  --silent-at F        no answer to frame F\n"
           "  --wrong-byte-at F:B  answer frame F with byte B (0x.. or decimal)\n"
           "  --refuse F:N         refuse frame F N times (0x15)\n"
           "  --close-at F         the line drops at frame F\n"
           "  --slow FACTOR        answer FACTOR times slower\n"
           "  --log FILE           write every frame received to FILE\n"
           "  --help               this text\n"
           "  Frames: the H number of a numbered scale; for a banked device the place\n"
           "  of the frame among all received, from 0 (probe 0, first line 1, erase 2).\n"
           "\n"
           "usage: firmcast-sim --tcp PORT [options]\n"
           "  A scale's Ethernet boot loader that takes whatever it is sent, on\n"
           "  0.0.0.0:PORT (0: any free port); the first line says \"listening on PORT\".\n"
           "  --read-rate N           read N bytes a second (default 0: at once)\n"
           "  --receive-buffer N      the socket's receive buffer (default 2048)\n"
           "  --stop-reading-after N  stop reading after N bytes: the sender waits for ever\n"
           "  --close-after N         close the connection after N bytes\n"
           "  --reset-after N         reset the connection after N bytes\n"
           "  --log FILE              write the connections and byte counts to FILE\n"
           "  Counts run over all connections; each fault happens once.\n"
           "\n"
           "usage: firmcast-sim [--tcp PORT] --device graphic-display [options]\n"
           "  A scale's graphic display behind the communications driver, on a pty or\n"
           "  on a port: it takes the records as lines, checks their order and the\n"
           "  image's CRC, and answers each question with SI or NO and its tag.\n"
           "  --rejects-crc           answer NO to the last question\n"
           "  --rejects-questions     answer NO to the questions before it\n"
           "  --silent-at-end         never answer the last question\n"
           "\n"
           "usage: firmcast-sim --tcp PORT --device ethernet-scale [options]\n"
           "  A scale's Ethernet boot loader that takes the loader's messages of 1029\n"
           "  bytes, keeps its flash and answers code 3 after its erase, code 5 with\n"
           "  its checksum after 0x67, and code 10 when told to fail.\n"
           "  --erase-ms N            how long the flash erase takes (default 2000)\n"
           "  --read-rate N           read N bytes a second (default 0: at once)\n"
           "  --receive-buffer N      the socket's receive buffer (default 2048)\n"
           "  --stop-reading-at K     read no further than message K (from 0)\n"
           "  --fail-at K:E           answer message K with code 10, error E, then read no more\n"
           "  --wrong-checksum        report a checksum one more than the image's\n"
           "  --silent-erase          erase without answering code 3\n"
           "  --silent-end-of-load    take the end of the load (0x67) without answering\n"
           "  --drop-at K             take message K whole, then reset the connection\n"
           "  --address A             listen on address A only (default 0.0.0.0)\n"
           "  --interface IF          take a 0x68 message's MAC as interface IF's address\n"
           "                          (in a network namespace of its own, as root)\n"
           "  --split-answers         send every answer in two segments\n"
           "  --log FILE              write the message types taken and the answers to FILE\n"
           "  Messages count over one connection.\n"
           "\n"
           "usage: firmcast-sim --device visor [--udp PORT] [options]\n"
           "  An MV-510 visor's ISP boot loader: on a pty (at --baud, default 115200), or\n"
           "  with --udp behind a bridge on UDP PORT (3000 for the screen; 0: any free\n"
           "  one) that answers to the sender's port 3001; the first line says\n"
           "  \"listening on PORT\".\n"
           "  --erase-ms N             how long the flash erase takes (default 2000)\n"
           "  --off-ms N               switched off for N ms from the start\n"
           "  --double-sync            answer the first \"U\" with \"UU\"\n"
           "  --wrong-dump-byte-at A   dumps show the byte at address A changed\n"
           "  --slow-answer-ms N       every answer to a record N ms later\n"
           "  --silent-record K        no answer to record K (from 0: erase 0, blank check 1)\n"
           "  --silent-dump K          no answer to dump K (from 0); may be repeated\n"
           "  --lose-datagram K        (UDP) answer datagram K (from 0) is lost\n"
           "  --split-dump N           (UDP) each dump answer in N datagrams\n"
           "  --log FILE               write every record taken to FILE\n";
}

bool parseSimOptions(int argc, char** argv, SimOptions& out, std::string& error) {
    for (int i = 1; i < argc; ++i) {
        std::string option = argv[i];
        auto value = [&](const char*& v) {
            if (i + 1 >= argc) {
                error = option + " needs a value";
                return false;
            }
            v = argv[++i];
            return true;
        };
        const char* v = nullptr;
        long long a = 0, b = 0;
        if (option == "--help" || option == "-h") {
            out.help = true;
        } else if (option == "--wants-mac") {
            out.wantsMac = true;
        } else if (option == "--silent-end") {
            out.silentEndCommand = true;
        } else if (option == "--wrong-checksum") {
            out.scaleFaults.wrongChecksum = true;
        } else if (option == "--silent-erase") {
            out.scaleFaults.silentErase = true;
        } else if (option == "--silent-end-of-load") {
            out.scaleFaults.silentEndOfLoad = true;
        } else if (option == "--split-answers") {
            out.scaleFaults.splitAnswers = true;
        } else if (option == "--rejects-crc") {
            out.displayFaults.rejectsCrc = true;
        } else if (option == "--rejects-questions") {
            out.displayFaults.rejectsQuestions = true;
        } else if (option == "--silent-at-end") {
            out.displayFaults.silentAtEnd = true;
        } else if (option == "--double-sync") {
            out.visorFaults.doubleSync = true;
        } else if (!value(v)) {
            return false;
        } else if (option == "--device") {
            out.kind = v;
            if (out.kind != "numbered" && out.kind != "banked" && out.kind != "echo" &&
                out.kind != "ethernet-scale" && out.kind != "graphic-display" &&
                out.kind != "visor") {
                error = "unknown device " + out.kind;
                return false;
            }
        } else if (option == "--baud" && number(v, a)) {
            out.baud = static_cast<int>(a);
            out.baudGiven = true;
        } else if (option == "--erase-ms" && number(v, a)) {
            out.eraseMs = a;
        } else if (option == "--bank-ms" && number(v, a) && a >= 0) {
            out.bankMs = a;
        } else if (option == "--silent-at" && number(v, a)) {
            out.faults.silentAt[static_cast<long>(a)] = true;
        } else if (option == "--wrong-byte-at" && pair(v, a, b)) {
            out.faults.wrongByteAt[static_cast<long>(a)] = static_cast<char>(b);
        } else if (option == "--refuse" && pair(v, a, b)) {
            out.faults.refusals[static_cast<long>(a)] = static_cast<int>(b);
        } else if (option == "--close-at" && number(v, a)) {
            out.faults.closeAt = static_cast<long>(a);
        } else if (option == "--slow") {
            out.slowFactor = std::strtod(v, nullptr);
            if (out.slowFactor <= 0) {
                error = "--slow needs a factor above 0";
                return false;
            }
        } else if (tcpOption(option, v, out) || visorOption(option, v, out)) {
            // taken
        } else if (option == "--log") {
            out.logPath = v;
        } else {
            error = "bad option or value: " + option + " " + v;
            return false;
        }
    }
    if (out.kind == "visor" && !out.baudGiven)
        out.baud = 115200;
    if (out.udpPort >= 0 && out.kind != "visor") {
        error = "--udp PORT is for --device visor";
        return false;
    }
    if (out.kind == "ethernet-scale" && out.tcpPort < 0) {
        error = "--device ethernet-scale needs --tcp PORT";
        return false;
    }
    return true;
}

size_t logNewFrames(const SerialDevice& device, size_t alreadyLogged, std::ostream& out) {
    if (auto* scale = dynamic_cast<const NumberedScale*>(&device)) {
        const auto& frames = scale->frames();
        for (size_t i = alreadyLogged; i < frames.size(); ++i) {
            out << milliseconds(frames[i].at) << " ms H" << frames[i].number << " "
                << frames[i].record << "\n";
        }
        out.flush();
        return frames.size();
    }
    if (auto* banked = dynamic_cast<const BankedDevice*>(&device)) {
        const auto& frames = banked->frames();
        for (size_t i = alreadyLogged; i < frames.size(); ++i) {
            out << milliseconds(frames[i].at) << " ms #" << frames[i].index << " "
                << printable(frames[i].text) << "\n";
        }
        out.flush();
        return frames.size();
    }
    return alreadyLogged;
}

}  // namespace fc
