#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <string>

#include "firmware/hex_record.h"
#include "firmware/hex_text.h"
#include "operator/recording_dialogs.h"
#include "platform/runtime_error.h"
#include "virtual/virtual_pump.h"

namespace fc {
namespace {

const char* const kDameHexMessage = "Datos mal pasados a DameHex";
const char* const kDameCheckSumMessage = "La longitud del String pasado a DameCheckSum no es par";

class HexText : public ::testing::Test {
  protected:
    // One plain OK box without a title of its own, with `text`.
    void expectOneOkBox(const std::string& text) {
        ASSERT_EQ(dialogs.boxes().size(), 1u);
        EXPECT_EQ(dialogs.boxes()[0].text, text);
        EXPECT_EQ(dialogs.boxes()[0].style, mb::kOkOnly);
        EXPECT_EQ(dialogs.boxes()[0].title, "");
    }

    VirtualPump pump;
    RecordingDialogs dialogs{pump};
};

std::string upperHexPair(int value) {
    char text[3];
    std::snprintf(text, sizeof text, "%02X", value);
    return text;
}

// ValHex and CHex2Lng

TEST_F(HexText, ValHexStopsAtTheFirstCharacterThatIsNotAHexDigit) {
    EXPECT_EQ(ValHex("1G2"), 1);
    EXPECT_EQ(ValHex("12:34"), 0x12);
    EXPECT_EQ(ValHex("AB\r\n"), 0xAB);
    EXPECT_EQ(ValHex(" 12"), 0);
}

TEST_F(HexText, ValHexReadsDigitsInEitherCase) {
    EXPECT_EQ(ValHex("ff"), 255);
    EXPECT_EQ(ValHex("aBcD"), ValHex("ABCD"));
    EXPECT_EQ(ValHex("7fff"), 32767);
}

TEST_F(HexText, ValHexOfNoDigitsIsZero) {
    EXPECT_EQ(ValHex(""), 0);
    EXPECT_EQ(ValHex(":"), 0);
    EXPECT_EQ(ValHex("xyz"), 0);
}

TEST_F(HexText, ValHexReadsAValueThatFitsIn16BitsAsSigned16Bits) {
    EXPECT_EQ(ValHex("8000"), -32768);
    EXPECT_EQ(ValHex("FFFF"), -1);
    EXPECT_EQ(ValHex("ABCD"), 0xABCD - 0x10000);
    EXPECT_EQ(ValHex("0FFFF"), -1);  // leading zeros don't make it wider
}

TEST_F(HexText, ValHexReadsALargerValueAsSigned32Bits) {
    EXPECT_EQ(ValHex("10000"), 65536);
    EXPECT_EQ(ValHex("C0000"), 0xC0000);
    EXPECT_EQ(ValHex("7FFFFFFF"), 2147483647);
    EXPECT_EQ(ValHex("80000000"), -2147483647 - 1);
    EXPECT_EQ(ValHex("FFFFFFFF"), -1);
}

TEST_F(HexText, ValHexOfMoreThan32BitsOfValueOverflows) {
    EXPECT_EQ(ValHex("0000000000FF"), 255);
    try {
        ValHex("100000000");
        FAIL() << "a 33-bit value was read";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::kOverflow);
    }
}

// Eight characters and more than eight are read by the same rule: the width
// of the text, its leading zeros and what follows the digits change nothing.
TEST_F(HexText, ValHexIsTheSameAtEveryWidthAroundEightCharacters) {
    for (const std::string digits : {"FFFF", "FFFFFFFF", "10000", "7fffffff", "1"}) {
        const Long value = ValHex(digits);
        for (std::size_t zeros = 0; zeros + digits.size() <= 12; ++zeros) {
            const std::string padded = std::string(zeros, '0') + digits;
            SCOPED_TRACE(padded);
            EXPECT_EQ(ValHex(padded), value);
            EXPECT_EQ(ValHex(padded + "z"), value);
            EXPECT_EQ(ValHex(padded + "zzzzzzzz"), value);
        }
    }
    EXPECT_THROW(ValHex("FFFFFFFF0"), RuntimeError);
    EXPECT_THROW(ValHex("0FFFFFFFF0"), RuntimeError);
}

TEST_F(HexText, ValHexOfATwoDigitFieldIsAlways0To255) {
    for (int v = 0; v < 256; ++v) {
        EXPECT_EQ(ValHex(upperHexPair(v)), v);
        std::string lower = upperHexPair(v);
        for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        EXPECT_EQ(ValHex(lower), v);
    }
}

TEST_F(HexText, ValHexAtReadsTheFieldAtAOneBasedPosition) {
    const std::string line = ":10123400";
    EXPECT_EQ(ValHexAt(line, 2, 2), 0x10);
    EXPECT_EQ(ValHexAt(line, 4, 4), 0x1234);
    EXPECT_EQ(ValHexAt(line, 8, 2), 0);
    EXPECT_EQ(ValHexAt(line, 9, 2), 0);   // short field at the end
    EXPECT_EQ(ValHexAt(line, 20, 2), 0);  // beyond the end: no digits
}

TEST_F(HexText, CHex2LngReadsFFFFAsMinusOne7FFFAs32767And10000As65536) {
    EXPECT_EQ(CHex2Lng("FFFF"), -1);
    EXPECT_EQ(CHex2Lng("7FFF"), 32767);
    EXPECT_EQ(CHex2Lng("10000"), 65536);
}

// to_cadena and char_hex

TEST_F(HexText, ToCadenaGivesOneUpperCaseDigitFor0To15) {
    const std::string digits = "0123456789ABCDEF";
    for (int v = 0; v < 16; ++v) EXPECT_EQ(to_cadena(static_cast<Byte>(v)), digits.substr(v, 1));
}

TEST_F(HexText, ToCadenaOfAnyOtherValueIsEmpty) {
    EXPECT_EQ(to_cadena(16), "");
    EXPECT_EQ(to_cadena(100), "");
    EXPECT_EQ(to_cadena(255), "");
    EXPECT_TRUE(dialogs.boxes().empty());
}

TEST_F(HexText, CharHexOfZeroIs00AndOf255IsFF) {
    EXPECT_EQ(char_hex(0), "00");
    EXPECT_EQ(char_hex(255), "FF");
}

TEST_F(HexText, CharHexGivesTwoUpperCaseDigitsHighFirstForEveryByte) {
    for (int v = 0; v < 256; ++v) EXPECT_EQ(char_hex(static_cast<Byte>(v)), upperHexPair(v));
}

// to_hex

TEST_F(HexText, ToHexOf1234GivesItsDigitsAndLeaves4InTheCallersVariable) {
    Integer valor = 0x1234;
    EXPECT_EQ(to_hex(valor), "1234");
    EXPECT_EQ(valor, 4);
}

TEST_F(HexText, ToHexLeavesTheLowDigitInTheCallersVariable) {
    Integer valor = 0x7FFF;
    EXPECT_EQ(to_hex(valor), "7FFF");
    EXPECT_EQ(valor, 0xF);
    valor = 0x1000;
    EXPECT_EQ(to_hex(valor), "1000");
    EXPECT_EQ(valor, 0);
    valor = 0x0ABC;
    EXPECT_EQ(to_hex(valor), "0ABC");
    EXPECT_EQ(valor, 0xC);
    valor = 0;
    EXPECT_EQ(to_hex(valor), "0000");
    EXPECT_EQ(valor, 0);
}

TEST_F(HexText, ToHexOfANegativeValueGivesThreeZerosAndADigitOnlyForALowByteUpTo15) {
    Integer valor = -1;  // low byte 0xFF: no fourth digit
    EXPECT_EQ(to_hex(valor), "000");
    EXPECT_EQ(valor, -1);
    valor = -256;  // 0xFF00: low byte 0
    EXPECT_EQ(to_hex(valor), "0000");
    EXPECT_EQ(valor, -256);
    valor = -241;  // 0xFF0F: low byte 15
    EXPECT_EQ(to_hex(valor), "000F");
    valor = -32768;  // 0x8000: low byte 0
    EXPECT_EQ(to_hex(valor), "0000");
    EXPECT_EQ(valor, -32768);
}

// DameHex

TEST_F(HexText, DameHexOfOddLengthShowsTheMessageAndStillGivesTwoCharacters) {
    EXPECT_EQ(DameHex("414", dialogs), std::string("A\x04", 2));
    expectOneOkBox(kDameHexMessage);
}

TEST_F(HexText, DameHexRoundsThePairCountHalfToEven) {
    EXPECT_EQ(DameHex("4", dialogs), "");                               // 0.5 -> 0
    EXPECT_EQ(DameHex("41424", dialogs), "AB");                         // 2.5 -> 2
    EXPECT_EQ(DameHex("4142434", dialogs), std::string("ABC\x04", 4));  // 3.5 -> 4
    EXPECT_EQ(dialogs.texts(), std::vector<std::string>(3, kDameHexMessage));
}

TEST_F(HexText, DameHexOfEmptyTextIsEmptyWithoutMessage) {
    EXPECT_EQ(DameHex("", dialogs), "");
    EXPECT_TRUE(dialogs.boxes().empty());
}

TEST_F(HexText, DameHexRoundTripsEveryByteValue) {
    std::string pares;
    for (int v = 0; v < 256; ++v) pares += upperHexPair(v);
    const std::string bytes = DameHex(pares, dialogs);
    ASSERT_EQ(bytes.size(), 256u);
    for (int v = 0; v < 256; ++v) EXPECT_EQ(static_cast<unsigned char>(bytes[v]), v);
    EXPECT_EQ(DameHex("FF", dialogs), std::string(1, '\xFF'));
    EXPECT_TRUE(dialogs.boxes().empty());
}

TEST_F(HexText, DameHexReadsEachPairByValHex) {
    EXPECT_EQ(DameHex("ff0a", dialogs), std::string("\xFF\x0A", 2));
    EXPECT_EQ(DameHex("4GG4", dialogs), std::string("\x04\x00", 2));
}

// DameCheckSum

TEST_F(HexText, DameCheckSumOfEmptyTextIsZeroWithoutMessage) {
    EXPECT_EQ(DameCheckSum("", dialogs), "00");
    EXPECT_TRUE(dialogs.boxes().empty());
}

TEST_F(HexText, DameCheckSumOfZeroBytesIsZero) {
    EXPECT_EQ(DameCheckSum("0000000000", dialogs), "00");
}

TEST_F(HexText, DameCheckSumOf01IsFFAndOfFFIs01) {
    EXPECT_EQ(DameCheckSum("01", dialogs), "FF");
    EXPECT_EQ(DameCheckSum("FF", dialogs), "01");
}

TEST_F(HexText, DameCheckSumOfTheType66RecordIs92AndTheRecordPassesCalcheck) {
    EXPECT_EQ(DameCheckSum("0100006607", dialogs), "92");
    EXPECT_TRUE(calcheck(":010000660792"));
}

TEST_F(HexText, DameCheckSumKeepsTheSumInEightBits) {
    EXPECT_EQ(DameCheckSum("FFFFFFFF", dialogs), "04");  // 4 * 0xFF = 0x3FC
    EXPECT_EQ(DameCheckSum("10010000214601360121470136007EFE09D21901", dialogs), "40");
}

TEST_F(HexText, DameCheckSumOfLowerCaseRepeatsThePreviousDigit) {
    EXPECT_EQ(DameCheckSum("0A", dialogs), "F6");
    EXPECT_EQ(DameCheckSum("0a", dialogs), "00");
    EXPECT_TRUE(dialogs.boxes().empty());
}

TEST_F(HexText, DameCheckSumOfLowerCaseRepeatsTheDigitValueAsMultiplied) {
    // "A" first in its pair stands at 0xA0; the "a" after it adds 0xA0 again.
    EXPECT_EQ(DameCheckSum("Aa", dialogs), "C0");
    // "f" first in a pair multiplies the 0xF before it: 0x10 + 0xF + 0xF0 + 0.
    EXPECT_EQ(DameCheckSum("1Ff0", dialogs), "F1");
    // Any other character does the same: "G" repeats 0x10.
    EXPECT_EQ(DameCheckSum("1G", dialogs), "E0");
}

TEST_F(HexText, DameCheckSumOfALongRunOfOtherCharactersIsAWrongChecksumNotAnError) {
    std::string texto = "1F";
    for (int k = 0; k < 50; ++k) texto += "zz";
    // 0x10 + 0xF, then 0xF0 twice; later multiples of 0x100 add nothing.
    EXPECT_EQ(DameCheckSum(texto, dialogs), "01");
}

TEST_F(HexText, DameCheckSumOfOddLengthShowsTheMessageAndAnswers00) {
    EXPECT_EQ(DameCheckSum("010", dialogs), "00");
    expectOneOkBox(kDameCheckSumMessage);
}

}  // namespace
}  // namespace fc
