// The Ethernet load of a 704 KB firmware file (the whole loadable flash,
// 0x40000-0xEFFFF) into 1 and into 20 simulated scales, each a firmcast-sim
// process of its own on a loopback address, by the main screen on the real
// pump and the machine's sockets, at the level that gives no MAC. Per scale
// it prints the time of the connection and its settle, the erase wait, the
// transfer and the checksum wait, read from the information text's changes;
// and messages a second during the transfer against the scale's own reading
// pace, the limit: the transfer's time over the time the scale takes to read
// the same bytes.
//
//   bench_ethernet_load [RATE [SCALES...]]
//     RATE    bytes a second each scale reads (default 102400; 0: at once)
//     SCALES  the list sizes to load (default 1 20)
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "control/firmcast_form.h"
#include "operator/model_choice.h"
#include "operator/operator_script.h"
#include "operator/recording_dialogs.h"
#include "operator/scale_list_entry.h"
#include "platform/file_table.h"
#include "platform/linux/linux_machine.h"
#include "platform/linux/real_pump.h"
#include "platform/linux/termios_port.h"
#include "support/first_line_process.h"
#include "support/intel_hex.h"
#include "whole_flash.h"

namespace fs = std::filesystem;

namespace {

constexpr int kEraseMs = 300;
constexpr int kMessageBytes = 1029;

struct Stop {};

// The scales' receive buffer, from FIRMCAST_BENCH_RECEIVE_BUFFER (the
// simulator's default otherwise).
std::string receiveBuffer() {
    const char* value = std::getenv("FIRMCAST_BENCH_RECEIVE_BUFFER");
    return value ? value : "2048";
}

struct Change {
    double atMs;
    std::string text;
};

struct Phases {
    double connect = 0, erase = 0, transfer = 0, checksum = 0, turn = 0;
    long messages = 0;
};

double at(const std::vector<Change>& c, std::size_t from, const std::string& text,
          std::size_t& index) {
    for (std::size_t i = from; i < c.size(); ++i) {
        if (c[i].text == text) {
            index = i;
            return c[i].atMs;
        }
    }
    index = c.size();
    return -1;
}

// Splits the changes into the turns of the scales: each ends with "Scale n
// loaded OK" (or its failure), the next begins there.
std::vector<Phases> phasesOf(const std::vector<Change>& c, int scales) {
    std::vector<Phases> out;
    std::size_t i = 0;
    at(c, 0, "Processing File ...", i);
    double turnStart = c.at(i).atMs;
    for (int n = 1; n <= scales; ++n) {
        Phases p;
        std::size_t k = i;
        double shown1 = at(c, i, "1", k);
        double deleting = at(c, k, "Deleting Scale\xC2\xB4s Flash ...", k);
        double mensaje1 = at(c, k, "Mensaje 1", k);
        std::size_t lastMessage = k;
        double waiting = at(c, k, "Waiting checksum ...", k);
        for (std::size_t m = lastMessage; m < k; ++m)
            p.messages += c[m].text.rfind("Mensaje ", 0) == 0 ? 1 : 0;
        double cleared = at(c, k, "", k);
        double loaded = at(c, k, "Scale " + std::to_string(n) + " loaded OK", k);
        p.connect = shown1 - turnStart;
        p.erase = mensaje1 - deleting;
        p.transfer = waiting - mensaje1;
        p.checksum = cleared - waiting;
        p.turn = loaded - turnStart;
        out.push_back(p);
        turnStart = loaded;
        i = k;
    }
    return out;
}

void run(int scales, long rate) {
    const fs::path root = fs::temp_directory_path() / ("fc-bench-eth-" + std::to_string(getpid()));
    fs::remove_all(root);
    fs::create_directories(root / "C");
    fs::create_directories(root / "Home");
    fc::bench::writeWholeFlash(root / "C" / "flash.hex");
    const std::string bin = FIRMCAST_BIN;
    std::vector<std::unique_ptr<fc::FirstLineProcess>> sims;
    int port = 0;
    for (int n = 1; n <= scales; ++n) {
        sims.push_back(std::make_unique<fc::FirstLineProcess>(std::vector<std::string>{
            bin + "/firmcast-sim", "--tcp", std::to_string(port), "--address",
            "127.0.0." + std::to_string(n), "--device", "ethernet-scale", "--erase-ms",
            std::to_string(kEraseMs), "--read-rate", std::to_string(rate), "--receive-buffer",
            receiveBuffer()}));
        if (port == 0)
            std::sscanf(sims.back()->firstLine().c_str(), "listening on %d", &port);
    }
    // The port from config.ini; the list typed in, as an operator does (a
    // list of twenty is not taken from the file).
    std::ofstream ini(root / "Home" / "config.ini", std::ios::binary);
    ini << "[Puertos]\r\nTx=" << port << "\r\n";
    ini.close();
    std::vector<std::string> addresses;
    for (int n = 1; n <= scales; ++n) addresses.push_back("127.0.0." + std::to_string(n));

    fc::LinuxMachine machine(fc::Drives({{'c', (root / "C").string()}}));
    fc::RealPump pump;
    fc::RecordingDialogs dialogs(pump);
    fc::TermiosPortOpener ports;
    fc::FileTable files;
    fc::Firmcast form(machine.services(pump, dialogs, ports, files, (root / "Home").string()));
    std::vector<Change> changes;
    const auto start = std::chrono::steady_clock::now();
    form.lblInformacion.addObserver([&](fc::Control& c) {
        if (changes.empty() || changes.back().text != c.caption()) {
            double ms =
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                    .count();
            changes.push_back(Change{ms, c.caption()});
        }
    });
    fc::OperatorScript script(pump);
    fc::Firmcast* f = &form;
    script.when([f] { return f->Seleccion.reachable(); }, "model",
                [f] { fc::operatorPickModel(*f, 0); });
    script.when([f] { return f->frPuerto.reachable(); }, "Ethernet",
                [f] {
                    fc::operatorClick(*f, "optEthernet");
                    fc::operatorClick(*f, "cmdAdelante");
                });
    script.when([f] { return f->paso_asistente == 2 && f->File1.reachable(); }, "file",
                [f] {
                    fc::operatorSelectText(*f, "File1", "flash.hex");
                    fc::operatorClick(*f, "cmdAdelante");
                });
    script.when([f] { return f->paso_asistente == 3 && f->frBalanzasEth.reachable(); }, "list",
                [f, &addresses] {
                    fc::introduceListaBalanzas(*f, addresses, false);
                    fc::operatorClick(*f, "cmdAdelante");
                });
    script.when([f] { return f->esperando_otra != fc::kFalse; }, "end", [] { throw Stop{}; });
    try {
        form.Form_Load("3");
    } catch (const Stop&) {
    } catch (const fc::ProgramEnd& end) {
        std::printf("the program ended (%d); its boxes:\n", end.exitStatus);
        for (const std::string& box : dialogs.texts()) std::printf("  %s\n", box.c_str());
        return;
    }

    std::vector<Phases> phases = phasesOf(changes, scales);
    double total = 0, sumConnect = 0, sumErase = 0, sumTransfer = 0, sumChecksum = 0;
    long ok = 0;
    for (std::size_t n = 0; n < form.estado_balanzas.size(); ++n) ok += form.estado_balanzas[n];
    for (const Phases& p : phases) {
        total += p.turn;
        sumConnect += p.connect;
        sumErase += p.erase;
        sumTransfer += p.transfer;
        sumChecksum += p.checksum;
    }
    const double each = static_cast<double>(scales);
    const long messages = static_cast<long>(form.mensajes.size());
    const double perSecond = messages / (sumTransfer / each / 1000.0);
    std::printf("%d scale(s), %ld messages of %d bytes, read %s: %ld ok\n", scales, messages,
                kMessageBytes, rate ? (std::to_string(rate) + " B/s").c_str() : "at once", ok);
    std::printf(
        "  per scale (ms): connect+settle %.0f, erase wait %.0f (scale's %d), transfer "
        "%.0f, checksum wait %.1f; whole turn %.0f\n",
        sumConnect / each, sumErase / each, kEraseMs, sumTransfer / each, sumChecksum / each,
        total / each);
    std::printf("  transfer: %.0f messages/s", perSecond);
    if (rate > 0) {
        double readMs = 1000.0 * (messages - 1) * kMessageBytes / static_cast<double>(rate);
        std::printf(
            ", the scale reads them in %.0f ms: the loader takes %.3f times that (+%.1f %%)",
            readMs, sumTransfer / each / readMs, 100.0 * (sumTransfer / each / readMs - 1));
    }
    std::printf("\n  whole run %.1f s\n", total / 1000.0);
    for (auto& s : sims) s->stop(SIGTERM);
    fs::remove_all(root);
}

}  // namespace

int main(int argc, char** argv) {
    long rate = argc > 1 ? std::atol(argv[1]) : 102400;
    std::vector<int> sizes;
    for (int i = 2; i < argc; ++i) sizes.push_back(std::atoi(argv[i]));
    if (sizes.empty())
        sizes = {1, 20};
    for (int scales : sizes) run(scales, rate);
}
