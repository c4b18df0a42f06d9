#include <gtest/gtest.h>

#include "control/firmware_panels.h"
#include "firmware/file_loader.h"
#include "firmware/preprocesa_file.h"
#include "support/intel_hex.h"
#include "support/scenario_rig.h"

namespace fc {
namespace {

using test::bankRecord;
using test::endRecord;
using test::hexFile;
using test::intelRecord;

TEST(FirmwarePanels, TheMainScreensImageReachesIndex0xC0000) {
    test::ScenarioRig rig;
    EXPECT_EQ(rig.form().memoria.size(), static_cast<std::size_t>(kLimiteMemoria + 1));
}

TEST(FirmwarePanels, PreprocessingShowsTheHeaderOnTheMainScreen) {
    test::ScenarioRig rig;
    Firmcast& form = rig.form();
    form.es_serie_w = kTrue;
    std::vector<int> header;
    for (char c : std::string("W300ES2105")) header.push_back(c);
    const std::string path = rig.driveC.write(
        "fw.hex", hexFile({bankRecord(0x4000), intelRecord(0, 0, {1}), kMarcaCabecera,
                           intelRecord(0, 0, header), endRecord()}));
    PreprocessPanel panel = preprocessPanel(form);
    EXPECT_TRUE(PreprocesaFile(panel, path));
    EXPECT_EQ(form.lblModelo.caption(),
              "Model: W300       Country: ES       Display: 2       Version: 105");
    EXPECT_EQ(form.mensajes.size(), 7u);
    EXPECT_EQ(form.cabecera_modelo, "W300ES2105");
}

TEST(FirmwarePanels, ARefusedFileEndsWithTheMainScreensAcaba2) {
    test::ScenarioRig rig;
    Firmcast& form = rig.form();
    form.es_serie_w = kTrue;
    form.estado_lector = 2;
    form.Tiempo1.setEnabled(true);
    const std::string path = rig.driveC.write("fw.hex", hexFile({endRecord()}));
    PreprocessPanel panel = preprocessPanel(form);
    EXPECT_FALSE(PreprocesaFile(panel, path));
    EXPECT_EQ(rig.boxes(), std::vector<std::string>{"The file is empty"});
    EXPECT_EQ(form.estado_lector, 0);
    EXPECT_FALSE(form.Tiempo1.enabled());
}

TEST(FirmwarePanels, TheEthernetReaderFindsTheChosenWindowsPath) {
    test::ScenarioRig rig;
    Firmcast& form = rig.form();
    rig.driveC.write("Firmware/W300.HEX",
                     hexFile({bankRecord(0x5000), intelRecord(0x0002, 0, {7}), endRecord()}));
    form.fichero_firmware = "c:\\firmware\\w300.hex";
    ReaderPanel panel = readerPanel(form);
    EXPECT_TRUE(carga_ficheroL(panel, segmentState(form)));
    EXPECT_EQ(form.memoria[0x10002], 7);
    EXPECT_EQ(form.base_segmento, 0x50000);
    EXPECT_EQ(form.Label2.caption(), "File is in memory");
    EXPECT_EQ(form.Barra.value(), form.Barra.max());
    EXPECT_EQ(form.estado_lector, 2);
}

}  // namespace
}  // namespace fc
