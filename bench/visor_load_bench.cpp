// How long a whole visor load takes on the simulated serial line: a 64 KB
// image (every byte programmed) through synchronisation, erase, blank check,
// programming, the verify of all 64 KB and the Boot Status Byte, at 115200
// and at 9600 baud, on the virtual clock. Printed beside it, the limit: the
// time the characters the visor sends take on the wire (its echoes overlap
// what the loader sends, so that direction is the busier one), plus the
// visor's own work (erase, blank check, programming, dumps). Also the real
// time the simulation took.
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "support/intel_hex.h"
#include "support/visor_rig.h"

namespace {

using namespace fc;
using namespace fc::test;

struct Figures {
    double loadSeconds = 0;
    double limitSeconds = 0;
    double realSeconds = 0;
    bool ok = false;
};

// Characters the loader received: the echoes and answers of every record.
long charactersFromVisor(const VisorBootLoader& loader) {
    long total = 1;  // the "U"
    for (const std::string& record : loader.records())
        total += static_cast<long>(record.size()) + 3;
    total += static_cast<long>(loader.dumped().size()) * (8 * 39 - 3);
    return total + 2;  // the byte's "00"
}

Figures measure(const std::string& speed, int baud) {
    VisorRig v;
    VisorBootLoader::Config config;
    v.visor.setSettings(LineSettings{baud, 'N', 8, 1});
    std::vector<int> image(0x10000 - 0x20);
    for (std::size_t i = 0; i < image.size(); ++i) image[i] = static_cast<int>((i * 31 + 7) & 0xFF);
    v.chooseFile("full.hex", VisorRig::imageFile(0, image));
    v.useSerial(1, speed);
    const auto started = std::chrono::steady_clock::now();
    const std::int64_t from = v.rig.pump.nowMicros();
    v.load();
    Figures f;
    f.realSeconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    f.loadSeconds = (v.rig.pump.nowMicros() - from) / 1e6 - 1.0;  // less the line's 1 s pause
    const VisorBootLoader& l = v.serialLoader();
    const double work =
        (config.eraseTime + config.blankCheckTime +
         config.programTime * static_cast<double>(l.programmed().size()) +
         config.dumpTime * static_cast<double>(l.dumped().size()) + 2 * config.commandTime) /
        1e6;
    f.limitSeconds = charactersFromVisor(l) * 10.0 / baud + work;
    f.ok = v.screen->Label2.caption() == "Firmcast OK";
    return f;
}

}  // namespace

int main() {
    std::printf("visor load of a 64 KB image on the simulated line (virtual clock)\n");
    std::printf("%8s %10s %10s %7s %10s %s\n", "baud", "load s", "limit s", "ratio", "real s",
                "result");
    for (auto [speed, baud] : {std::pair<const char*, int>{"115200", 115200}, {"9600", 9600}}) {
        const Figures f = measure(speed, baud);
        std::printf("%8d %10.2f %10.2f %7.3f %10.3f %s\n", baud, f.loadSeconds, f.limitSeconds,
                    f.loadSeconds / f.limitSeconds, f.realSeconds, f.ok ? "Firmcast OK" : "FAILED");
    }
    return 0;
}
