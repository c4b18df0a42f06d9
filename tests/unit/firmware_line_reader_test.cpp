#include <gtest/gtest.h>

#include "firmware/line_reader.h"
#include "platform/runtime_error.h"
#include "support/intel_hex.h"
#include "unit/firmware_fixture.h"

namespace fc {
namespace {

using test::bankRecord;
using test::intelRecord;

class LineReader : public ::testing::Test {
  protected:
    // Opens a file as `number` so that the readers have one to close.
    void openAs(Integer number) {
        screen.files.open(number, screen.useFile("x\r\n", "open" + std::to_string(number)),
                          FileTable::Mode::Input);
    }

    Byte leeCorto(const std::string& line) {
        screen.linea_fichero = line;
        ReaderPanel panel = screen.reader();
        return leelineafichero(panel, 1);
    }

    Byte leeLargo(const std::string& line) {
        screen.linea_fichero = line;
        ReaderPanel panel = screen.reader();
        return leelineaficheroL(panel, screen.segment());
    }

    // The image address `address` as the extended reader keeps it.
    Byte at(Long address) { return screen.memoria[static_cast<std::size_t>(address - 0x40000)]; }

    test::FirmwareScreen screen;
};

// leelineafichero

TEST_F(LineReader, PlainReaderTakesAnEmptyLineAsARecordOfNoData) {
    EXPECT_EQ(leeCorto(""), estado::kLineaTomada);
    EXPECT_EQ(screen.memoria[0], 0xFF);
    EXPECT_TRUE(screen.boxes().empty());
}

TEST_F(LineReader, PlainReaderStoresDataAtTheSixteenBitAddress) {
    EXPECT_EQ(leeCorto(intelRecord(0x8123, 0, {0x11, 0x22, 0x33})), estado::kLineaTomada);
    EXPECT_EQ(screen.memoria[0x8123], 0x11);
    EXPECT_EQ(screen.memoria[0x8124], 0x22);
    EXPECT_EQ(screen.memoria[0x8125], 0x33);
    EXPECT_EQ(screen.memoria[0x8126], 0xFF);
}

TEST_F(LineReader, PlainReaderWritesTheTwoBytesOfASegmentRecordAtImageAddressZero) {
    EXPECT_EQ(leeCorto(bankRecord(0x4000)), estado::kLineaTomada);
    EXPECT_EQ(screen.memoria[0], 0x40);
    EXPECT_EQ(screen.memoria[1], 0x00);
}

TEST_F(LineReader, PlainReaderStoresABankMarkerAsDataAtItsAddress) {
    EXPECT_EQ(leeCorto(":010000660792"), estado::kLineaTomada);
    EXPECT_EQ(screen.memoria[0], 0x07);
}

TEST_F(LineReader, PlainReaderLeavesPosMemoriaAfterTheLastByte) {
    leeCorto(intelRecord(0x1230, 0, test::patternBytes(1, 16)));
    EXPECT_EQ(screen.pos_memoria, 0x1240);
}

TEST_F(LineReader, PlainReaderEndsOnAnEndRecordEvenWithAWrongChecksum) {
    openAs(1);
    EXPECT_EQ(leeCorto(":00000001FE"), estado::kFinFichero);
    EXPECT_FALSE(screen.files.isOpen(1));
    EXPECT_TRUE(screen.boxes().empty());
}

TEST_F(LineReader, PlainReaderClosesTheFileAndTellsABadChecksum) {
    openAs(1);
    EXPECT_EQ(leeCorto(":0100000011EF"), estado::kChecksumMalo);
    EXPECT_FALSE(screen.files.isOpen(1));
    ASSERT_EQ(screen.boxes(), std::vector<std::string>{"Corrupted file, bad checksum"});
    EXPECT_EQ(screen.dialogs.boxes()[0].style, mb::kOkOnly);
    EXPECT_EQ(screen.dialogs.boxes()[0].title, "");
    EXPECT_EQ(screen.memoria[0], 0xFF);
}

TEST_F(LineReader, PlainReaderClosesTheFileNumberItIsGiven) {
    openAs(1);
    openAs(3);
    screen.linea_fichero = ":00000001FF";
    ReaderPanel panel = screen.reader();
    EXPECT_EQ(leelineafichero(panel, 3), estado::kFinFichero);
    EXPECT_FALSE(screen.files.isOpen(3));
    EXPECT_TRUE(screen.files.isOpen(1));
}

TEST_F(LineReader, PlainReaderFailsOnAStoreBeyondTheImage) {
    screen.memoria.assign(kLimiteMemoriaMV510 + 1, 0xFF);
    EXPECT_EQ(leeCorto(intelRecord(0xFFFF, 0, {1})), estado::kLineaTomada);
    EXPECT_EQ(screen.memoria[0xFFFF], 1);
    try {
        leeCorto(intelRecord(0xFFFF, 0, {1, 2, 3}));
        FAIL() << "a store past the image must fail";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::kSubscriptOutOfRange);
    }
    EXPECT_EQ(screen.memoria[0x10000], 2);
}

TEST_F(LineReader, LaterDataOverwritesEarlierData) {
    leeCorto(intelRecord(0x0100, 0, {1, 2, 3, 4}));
    leeCorto(intelRecord(0x0102, 0, {9}));
    EXPECT_EQ(screen.memoria[0x0101], 2);
    EXPECT_EQ(screen.memoria[0x0102], 9);
    EXPECT_EQ(screen.memoria[0x0103], 4);
}

// leelineaficheroL

TEST_F(LineReader, ExtendedReaderTakesAnEmptyLineAsARecordOfNoData) {
    EXPECT_EQ(leeLargo(""), estado::kLineaTomada);
    EXPECT_TRUE(screen.boxes().empty());
}

TEST_F(LineReader, ExtendedReaderPlacesDataAtSegmentBaseLessTheStartOfTheImage) {
    EXPECT_EQ(leeLargo(bankRecord(0x5000)), estado::kLineaTomada);
    EXPECT_EQ(screen.base_segmento, 0x50000);
    leeLargo(intelRecord(0x0010, 0, {0xAB, 0xCD}));
    EXPECT_EQ(at(0x50010), 0xAB);
    EXPECT_EQ(at(0x50011), 0xCD);
    EXPECT_EQ(screen.pos_memoria, 0x50012);
}

TEST_F(LineReader, ExtendedReaderStoresNothingForASegmentRecordAndMovesLaterData) {
    leeLargo(bankRecord(0x4000));
    EXPECT_EQ(screen.memoria[0], 0xFF);
    EXPECT_EQ(screen.memoria[1], 0xFF);
    leeLargo(bankRecord(0x6000));
    leeLargo(intelRecord(0, 0, {5}));
    EXPECT_EQ(at(0x60000), 5);
    EXPECT_EQ(screen.memoria[0], 0xFF);
}

TEST_F(LineReader, ExtendedReaderReadsTheAddressAsUnsigned) {
    leeLargo(bankRecord(0x4000));
    leeLargo(intelRecord(0xFFF0, 0, test::patternBytes(3, 16)));
    EXPECT_EQ(at(0x4FFF0), test::patternBytes(3, 16)[0]);
    EXPECT_EQ(at(0x4FFFF), test::patternBytes(3, 16)[15]);
    EXPECT_TRUE(screen.boxes().empty());
}

TEST_F(LineReader, ExtendedReaderDropsDataBelowTheBankStartOnceANonZeroBankIsSet) {
    leeLargo(bankRecord(0x4000));
    leeLargo(intelRecord(0x1000, 0, {1}));  // 0x41000, before the marker: stored
    EXPECT_EQ(leeLargo(":010000660792"), estado::kLineaTomada);
    EXPECT_EQ(screen.banco_fichero, 7);
    leeLargo(intelRecord(0x2000, 0, {2}));  // 0x42000: dropped
    leeLargo(intelRecord(0x8000, 0, {3}));  // 0x48000: stored
    EXPECT_EQ(at(0x41000), 1);
    EXPECT_EQ(at(0x42000), 0xFF);
    EXPECT_EQ(at(0x48000), 3);
    EXPECT_TRUE(screen.boxes().empty());
}

TEST_F(LineReader, ExtendedReaderStopsDroppingWhenTheBankIsSetBackToZero) {
    leeLargo(bankRecord(0x4000));
    leeLargo(":010000660792");
    leeLargo(intelRecord(0x2000, 0, {2}));
    leeLargo(intelRecord(0, 0x66, {0}));
    EXPECT_EQ(screen.banco_fichero, 0);
    leeLargo(intelRecord(0x2001, 0, {4}));
    EXPECT_EQ(at(0x42000), 0xFF);
    EXPECT_EQ(at(0x42001), 4);
}

TEST_F(LineReader, ExtendedReaderTellsEveryByteOutsideTheImageAndKeepsTheOthers) {
    leeLargo(intelRecord(0x0000, 0, {1, 2, 3}));  // bank 0: address 0 is below the image
    EXPECT_EQ(screen.boxes(), std::vector<std::string>(3, "9Subscript out of range"));
    EXPECT_EQ(screen.dialogs.boxes()[0].style, mb::kCritical);
    EXPECT_EQ(screen.dialogs.boxes()[0].title, "");  // the application's title
    EXPECT_EQ(screen.pos_memoria, 3);

    screen.dialogs.clear();
    leeLargo(bankRecord(0xF000));  // 0xF0000: the image ends at index 0xC0000 = 0x100000
    EXPECT_EQ(leeLargo(intelRecord(0xFFFE, 0, {7, 8, 9, 10})), estado::kLineaTomada);
    EXPECT_EQ(screen.memoria[0xBFFFE], 7);
    EXPECT_EQ(screen.memoria[0xBFFFF], 8);
    EXPECT_EQ(screen.memoria[0xC0000], 9);
    EXPECT_EQ(screen.boxes(), std::vector<std::string>{"9Subscript out of range"});
}

TEST_F(LineReader, ExtendedReaderCountsABadEndRecordAsABadChecksum) {
    openAs(1);
    EXPECT_EQ(leeLargo(":00000001FE"), estado::kChecksumMalo);
    EXPECT_FALSE(screen.files.isOpen(1));
    EXPECT_EQ(screen.boxes(), std::vector<std::string>{"Corrupted file, bad checksum"});
}

TEST_F(LineReader, ExtendedReaderEndsOnTheEndRecordAndClosesFileOne) {
    openAs(1);
    EXPECT_EQ(leeLargo(":00000001FF"), estado::kFinFichero);
    EXPECT_FALSE(screen.files.isOpen(1));
}

TEST_F(LineReader, ExtendedReaderIgnoresOtherRecordTypes) {
    leeLargo(bankRecord(0x4000));
    EXPECT_EQ(leeLargo(intelRecord(0x0000, 4, {0x12, 0x34})), estado::kLineaTomada);
    EXPECT_EQ(leeLargo(intelRecord(0x0000, 3, {1, 2, 3, 4})), estado::kLineaTomada);
    EXPECT_EQ(screen.base_segmento, 0x40000);
    EXPECT_EQ(screen.memoria[0], 0xFF);
}

TEST_F(LineReader, ExtendedReaderTellsARecordTooLongToCheckAndRefusesIt) {
    openAs(1);
    EXPECT_EQ(leeLargo(intelRecord(0, 0, test::patternBytes(0, 124))), estado::kChecksumMalo);
    EXPECT_EQ(screen.boxes(),
              (std::vector<std::string>{"6Overflow", "Corrupted file, bad checksum"}));
}

}  // namespace
}  // namespace fc
