// The visor screen's load over UDP to a simulated visor in a scale's own
// namespace: the records go to its port 3000 across the bed's LAN, the
// answers come back to the loader's port 3001, and the verify catches a
// wrong byte there as on the serial line.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "bed_fixture.h"
#include "loader_world.h"
#include "support/first_line_process.h"
#include "support/intel_hex.h"
#include "visor/frm_carga_mv510.h"

namespace fc::netbed {
namespace {

std::string programFolder() {
    const char* bin = std::getenv("FIRMCAST_NETBED_BIN");
    return bin ? bin : FIRMCAST_BIN_DIR;
}

std::vector<std::string> visorInScale(const BedScale& scale,
                                      const std::vector<std::string>& options) {
    std::vector<std::string> words{
        "ip",       "netns", "exec",  scale.ns, programFolder() + "/firmcast-sim",
        "--device", "visor", "--udp", "3000",   "--erase-ms",
        "100"};
    words.insert(words.end(), options.begin(), options.end());
    return words;
}

class VisorOnBed : public BedTest {
  protected:
    // Loads a 1 KB image into the visor of `scale` from the visor screen.
    std::string load(const BedScale& scale) {
        std::vector<std::string> lines;
        const auto bytes = test::patternBytes(3, 1024);
        for (int at = 0; at < 1024; at += 16)
            lines.push_back(test::intelRecord(
                at, 0, std::vector<int>(bytes.begin() + at, bytes.begin() + at + 16)));
        lines.push_back(test::endRecord());
        const std::string file = world.home.str() + "/visor.hex";
        FILE* out = std::fopen(file.c_str(), "wb");
        const std::string content = test::hexFile(lines);
        std::fwrite(content.data(), 1, content.size(), out);
        std::fclose(out);
        frmCargaMV510 visor(world.services, &world.network);
        visor.Form_Load("0", 0);
        visor.fichero_firmware = file;
        visor.optEthernet.setValue(true);
        visor.txtDirTCP.setText(text(scale.ip));
        visor.cmdAdelante.click();
        return visor.Label2.caption();
    }

    LoaderWorld world;
};

TEST_F(VisorOnBed, AVisorInItsOwnNamespaceIsLoadedOverUdp) {
    FirstLineProcess sim(visorInScale(bed.scales[0], {"--split-dump", "2"}));
    ASSERT_EQ(sim.firstLine(), "listening on 3000");
    EXPECT_EQ(load(bed.scales[0]), "Firmcast OK");
    EXPECT_TRUE(world.dialogs.texts().empty());
}

TEST_F(VisorOnBed, TheVerifyCatchesAWrongByteAcrossTheLan) {
    FirstLineProcess sim(visorInScale(bed.scales[1], {"--wrong-dump-byte-at", "0x0200"}));
    ASSERT_EQ(sim.firstLine(), "listening on 3000");
    EXPECT_EQ(load(bed.scales[1]), "Please Wait, verifying.");
    EXPECT_EQ(world.dialogs.texts(), std::vector<std::string>{"Bad answer from the visor"});
}

}  // namespace
}  // namespace fc::netbed
