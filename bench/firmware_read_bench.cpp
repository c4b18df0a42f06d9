// The reading of a whole Ethernet firmware file: a generated Intel HEX file
// covering 0x40000 to 0xEFFFF (eleven 64 KB banks in 16-byte records, about
// 2 MB of text) goes through PreprocesaFile and then carga_ficheroL on the
// main screen, on the real pump, as the Ethernet path reads it. In the same
// run, srec_cat (Debian's srecord) converts the same file to a binary image,
// as a yardstick of what reading such a file costs. Each is timed five
// times; the medians and their ratio are printed.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "control/firmcast_form.h"
#include "control/firmware_panels.h"
#include "firmware/file_loader.h"
#include "firmware/preprocesa_file.h"
#include "operator/recording_dialogs.h"
#include "platform/file_table.h"
#include "platform/linux/linux_machine.h"
#include "platform/linux/real_pump.h"
#include "platform/linux/termios_port.h"

namespace {

constexpr int kRuns = 5;

std::string record(int address, int type, const std::vector<int>& data) {
    std::vector<int> bytes = {static_cast<int>(data.size()), (address >> 8) & 0xFF, address & 0xFF,
                              type};
    bytes.insert(bytes.end(), data.begin(), data.end());
    int sum = 0;
    std::string text = ":";
    char pair[3];
    for (int b : bytes) {
        std::snprintf(pair, sizeof pair, "%02X", b & 0xFF);
        text += pair;
        sum += b;
    }
    std::snprintf(pair, sizeof pair, "%02X", -sum & 0xFF);
    return text + pair + "\r\n";
}

// Banks 0x4000 to 0xE000, each a 02 record and 4096 data records.
std::string generatedFile() {
    std::string text;
    for (int bank = 0x4000; bank <= 0xE000; bank += 0x1000) {
        text += record(0, 2, {bank >> 8, 0});
        for (int address = 0; address < 0x10000; address += 16) {
            std::vector<int> data;
            for (int k = 0; k < 16; ++k)
                data.push_back((bank / 0x100 + address / 16 + k * 31) & 0xFF);
            text += record(address, 0, data);
        }
    }
    return text + ":00000001FF\r\n";
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double timeMs(const std::function<bool()>& work, bool& ok) {
    const auto start = std::chrono::steady_clock::now();
    ok = work() && ok;
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

// PreprocesaFile and carga_ficheroL on a fresh main screen.
bool readAsTheEthernetPathDoes(const std::string& path) {
    fc::RealPump pump;
    fc::RecordingDialogs dialogs(pump);
    fc::TermiosPortOpener serialPorts;
    fc::FileTable files;
    fc::LinuxMachine machine(fc::Drives{});  // the file is named by its host path
    fc::Firmcast form(machine.services(pump, dialogs, serialPorts, files, "."));
    form.es_serie_w = fc::kTrue;
    form.fichero_firmware = path;
    fc::PreprocessPanel preproceso = fc::preprocessPanel(form);
    fc::ReaderPanel lector = fc::readerPanel(form);
    const bool procesado = fc::PreprocesaFile(preproceso, path);
    const bool enMemoria = fc::carga_ficheroL(lector, fc::segmentState(form));
    return procesado && enMemoria && form.mensajes.size() == 1 + 11 * 65 + 2 &&
           dialogs.boxes().empty();
}

bool haveSrecCat() {
    return std::system("command -v srec_cat >/dev/null 2>&1") == 0;
}

}  // namespace

int main() {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path();
    const std::string hex =
        (folder / ("firmcast-bench-" + std::to_string(getpid()) + ".hex")).string();
    const std::string bin = hex + ".bin";
    const std::string text = generatedFile();
    std::ofstream(hex, std::ios::binary) << text;
    std::printf("file: %zu bytes of Intel HEX, 0x40000 to 0xEFFFF\n", text.size());

    bool ok = true;
    std::vector<double> ours;
    for (int run = 0; run < kRuns; ++run)
        ours.push_back(timeMs([&] { return readAsTheEthernetPathDoes(hex); }, ok));
    std::printf("PreprocesaFile + carga_ficheroL: median %.1f ms of %d runs%s\n", median(ours),
                kRuns, ok ? "" : " (THE READ FAILED)");

    if (!haveSrecCat()) {
        std::printf("srec_cat: not installed (Debian package srecord); no ratio\n");
    } else {
        const std::string command = "srec_cat '" + hex + "' -intel -o '" + bin + "' -binary";
        std::vector<double> theirs;
        bool converted = true;
        for (int run = 0; run < kRuns; ++run)
            theirs.push_back(timeMs([&] { return std::system(command.c_str()) == 0; }, converted));
        std::printf("srec_cat to binary: median %.1f ms of %d runs%s\n", median(theirs), kRuns,
                    converted ? "" : " (THE CONVERSION FAILED)");
        std::printf("ratio (ours / srec_cat): %.2f\n", median(ours) / median(theirs));
    }
    fs::remove(hex);
    fs::remove(bin);
    return ok ? 0 : 1;
}
