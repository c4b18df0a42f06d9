#include <gtest/gtest.h>

#include "firmware/file_loader.h"
#include "platform/runtime_error.h"
#include "support/intel_hex.h"
#include "unit/firmware_fixture.h"

namespace fc {
namespace {

using test::bankRecord;
using test::endRecord;
using test::hexFile;
using test::intelRecord;

class FileLoader : public ::testing::Test {
  protected:
    bool cargaCorta() {
        ReaderPanel panel = screen.reader();
        return carga_fichero(panel, screen.num_fichero);
    }
    bool cargaLarga() {
        ReaderPanel panel = screen.reader();
        return carga_ficheroL(panel, screen.segment());
    }
    // Characters of `lines` without their line ends.
    static Long textLength(const std::vector<std::string>& lines) {
        Long n = 0;
        for (const std::string& l : lines) n += static_cast<Long>(l.size());
        return n;
    }

    test::FirmwareScreen screen;
};

// carga_fichero

TEST_F(FileLoader, VisorReaderFillsTheImageAndShowsTheFileInMemory) {
    screen.memoria.assign(kLimiteMemoriaMV510 + 1, 0x00);
    const std::string text =
        hexFile({intelRecord(0x0010, 0, {1, 2}), intelRecord(0xFFFE, 0, {3, 4}), endRecord()});
    screen.useFile(text);
    EXPECT_TRUE(cargaCorta());
    EXPECT_EQ(screen.memoria[0x0000], 0xFF);
    EXPECT_EQ(screen.memoria[0x0010], 1);
    EXPECT_EQ(screen.memoria[0x0011], 2);
    EXPECT_EQ(screen.memoria[0xFFFF], 4);
    EXPECT_EQ(screen.memoria[0x10000], 0xFF);
    EXPECT_TRUE(screen.Barra.visible());
    EXPECT_EQ(screen.Barra.min(), 0);
    EXPECT_EQ(screen.Barra.max(), static_cast<Long>(text.size()));
    EXPECT_EQ(screen.Barra.value(), screen.Barra.max());
    EXPECT_EQ(screen.Label2.caption(), "File is in memory");
    EXPECT_EQ(screen.estado_lector, estado::kFinFichero);
    EXPECT_FALSE(screen.files.isOpen(screen.num_fichero));
    EXPECT_TRUE(screen.boxes().empty());
}

TEST_F(FileLoader, VisorReaderTakesAFreeFileNumber) {
    screen.files.open(1, screen.useFile("other\r\n", "other.txt"), FileTable::Mode::Input);
    screen.useFile(hexFile({intelRecord(0, 0, {1}), endRecord()}));
    EXPECT_TRUE(cargaCorta());
    EXPECT_EQ(screen.num_fichero, 2);
    EXPECT_TRUE(screen.files.isOpen(1));
}

TEST_F(FileLoader, VisorReaderRejectsAFileWithoutEndRecordSilently) {
    const std::vector<std::string> lines = {intelRecord(0, 0, {1, 2, 3}), intelRecord(3, 0, {4})};
    screen.useFile(hexFile(lines));
    EXPECT_FALSE(cargaCorta());
    EXPECT_TRUE(screen.boxes().empty());
    EXPECT_FALSE(screen.files.isOpen(screen.num_fichero));
    EXPECT_EQ(screen.memoria[3], 4);
    // Line ends are not counted: the bar stops short of its maximum.
    EXPECT_EQ(screen.Barra.value(), textLength(lines));
    EXPECT_LT(screen.Barra.value(), screen.Barra.max());
}

TEST_F(FileLoader, VisorReaderRejectsAnEmptyLine) {
    screen.useFile(hexFile({intelRecord(0, 0, {1}), "", intelRecord(1, 0, {2}), endRecord()}));
    EXPECT_FALSE(cargaCorta());
    EXPECT_FALSE(screen.files.isOpen(screen.num_fichero));
    EXPECT_EQ(screen.memoria[1], 0xFF);
    EXPECT_TRUE(screen.boxes().empty());
}

TEST_F(FileLoader, VisorReaderRejectsALineNotStartingWithAColon) {
    screen.useFile(hexFile({intelRecord(0, 0, {1}), "S00600004844521B", endRecord()}));
    EXPECT_FALSE(cargaCorta());
    EXPECT_TRUE(screen.boxes().empty());
}

TEST_F(FileLoader, VisorReaderStopsAtABadChecksumWithTheReadersMessage) {
    screen.useFile(hexFile({intelRecord(0, 0, {1}), ":0100010005F8", endRecord()}));
    EXPECT_FALSE(cargaCorta());
    EXPECT_EQ(screen.boxes(), std::vector<std::string>{"Corrupted file, bad checksum"});
    EXPECT_EQ(screen.estado_lector, estado::kChecksumMalo);
    EXPECT_EQ(screen.memoria[0], 1);  // the image is left half filled
}

TEST_F(FileLoader, VisorReaderLetsAMissingFileFail) {
    screen.fichero_firmware = (screen.folder.path() / "missing.hex").string();
    try {
        cargaCorta();
        FAIL() << "opening a missing file must fail";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::kFileNotFound);
    }
}

// carga_ficheroL

TEST_F(FileLoader, EthernetReaderLoadsABankedFile) {
    screen.banco_fichero = 7;  // left from an earlier file: reset at the start
    screen.base_segmento = 0x90000;
    screen.useFile(hexFile({bankRecord(0x4000), intelRecord(0x0000, 0, {1, 2}), bankRecord(0x5000),
                            intelRecord(0x8000, 0, {3}), endRecord()}));
    EXPECT_TRUE(cargaLarga());
    EXPECT_EQ(screen.memoria[0x00000], 1);
    EXPECT_EQ(screen.memoria[0x00001], 2);
    EXPECT_EQ(screen.memoria[0x18000], 3);
    EXPECT_EQ(screen.memoria[0xC0000], 0xFF);
    EXPECT_EQ(screen.Barra.value(), screen.Barra.max());
    EXPECT_EQ(screen.Label2.caption(), "File is in memory");
    EXPECT_FALSE(screen.files.isOpen(1));
    EXPECT_TRUE(screen.boxes().empty());
}

TEST_F(FileLoader, EthernetReaderFillsTheWholeImageWithErasedFlash) {
    screen.memoria.assign(kLimiteMemoria + 1, 0x00);
    screen.useFile(hexFile({bankRecord(0x4000), endRecord()}));
    EXPECT_TRUE(cargaLarga());
    for (std::size_t i : {std::size_t{0}, std::size_t{0x60000}, std::size_t{0xC0000}}) {
        EXPECT_EQ(screen.memoria[i], 0xFF) << i;
    }
}

TEST_F(FileLoader, EthernetReaderPassesAnEmptyLineAsAnEmptyRecord) {
    screen.useFile(hexFile({bankRecord(0x4000), "", intelRecord(0, 0, {9}), endRecord()}));
    EXPECT_TRUE(cargaLarga());
    EXPECT_EQ(screen.memoria[0], 9);
}

TEST_F(FileLoader, EthernetReaderReopensFileOne) {
    screen.files.open(1, screen.useFile("other\r\n", "other.txt"), FileTable::Mode::Input);
    screen.useFile(hexFile({bankRecord(0x4000), intelRecord(0, 0, {9}), endRecord()}));
    EXPECT_TRUE(cargaLarga());
    EXPECT_EQ(screen.memoria[0], 9);
}

TEST_F(FileLoader, EthernetReaderRejectsAFileWithoutEndRecord) {
    screen.useFile(hexFile({bankRecord(0x4000), intelRecord(0, 0, {9})}));
    EXPECT_FALSE(cargaLarga());
    EXPECT_FALSE(screen.files.isOpen(1));
    EXPECT_TRUE(screen.boxes().empty());
}

TEST_F(FileLoader, EthernetReaderRejectsABadChecksum) {
    screen.useFile(hexFile({bankRecord(0x4000), ":0100000005FF", endRecord()}));
    EXPECT_FALSE(cargaLarga());
    EXPECT_FALSE(screen.files.isOpen(1));
    EXPECT_EQ(screen.boxes(), std::vector<std::string>{"Corrupted file, bad checksum"});
}

TEST_F(FileLoader, EthernetReaderTellsAMissingFileByNumberAndDescription) {
    screen.fichero_firmware = (screen.folder.path() / "missing.hex").string();
    EXPECT_FALSE(cargaLarga());
    ASSERT_EQ(screen.boxes(), std::vector<std::string>{"53File not found"});
    EXPECT_EQ(screen.dialogs.boxes()[0].style, mb::kCritical);
}

TEST_F(FileLoader, EthernetReaderTellsAnImageTooSmallToFill) {
    screen.memoria.assign(kLimiteMemoriaMV510 + 1, 0xFF);
    screen.useFile(hexFile({endRecord()}));
    EXPECT_FALSE(cargaLarga());
    EXPECT_EQ(screen.boxes(), std::vector<std::string>{"9Subscript out of range"});
}

}  // namespace
}  // namespace fc
