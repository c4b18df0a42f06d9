#include <gtest/gtest.h>

#include "firmware/checksum_memoria.h"
#include "firmware/hex_record.h"
#include "platform/runtime_error.h"

namespace fc {
namespace {

std::vector<Byte> image(Byte fill) {
    return std::vector<Byte>(kLimiteMemoria + 1, fill);
}

TEST(ChecksumMemoria, AnErasedImageGives7FFF) {
    // 0x58000 words of 0xFFFF add up to -0x58000, that is 0x8000 modulo 65536.
    EXPECT_EQ(calcula_checksum_memoria(image(0xFF)), 0x7FFF);
}

TEST(ChecksumMemoria, AnImageOfZerosGivesFFFF) {
    EXPECT_EQ(calcula_checksum_memoria(image(0x00)), 0xFFFF);
}

TEST(ChecksumMemoria, WordsAreTakenLowByteFirst) {
    std::vector<Byte> m = image(0x00);
    m[0] = 0x34;
    m[1] = 0x12;
    EXPECT_EQ(calcula_checksum_memoria(m), 0xFFFF - 0x1234);
    m[0xAFFFE] = 0x01;  // the last word, 0xEFFFE
    EXPECT_EQ(calcula_checksum_memoria(m), 0xFFFF - 0x1235);
}

TEST(ChecksumMemoria, TheSumWrapsModulo65536) {
    std::vector<Byte> m = image(0x00);
    m[0] = 0xFF;
    m[1] = 0xFF;
    m[2] = 0x02;
    EXPECT_EQ(calcula_checksum_memoria(m), 0xFFFF - 0x0001);
}

TEST(ChecksumMemoria, CellsPast0xEFFFFDoNotCount) {
    std::vector<Byte> m = image(0x00);
    m[0xB0000] = 0x55;
    m[0xC0000] = 0x66;
    EXPECT_EQ(calcula_checksum_memoria(m), 0xFFFF);
}

TEST(ChecksumMemoria, AnImageTooShortForTheRangeFails) {
    try {
        calcula_checksum_memoria(std::vector<Byte>(0x10001, 0xFF));
        FAIL() << "an image short of 0xEFFFF must fail";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::kSubscriptOutOfRange);
    }
}

}  // namespace
}  // namespace fc
