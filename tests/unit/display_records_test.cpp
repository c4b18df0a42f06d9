// The pieces of the display's load that stand alone: the records of the
// transmit file, the CRC and its table, the switch lines, the tags' text.
#include <gtest/gtest.h>

#include "display/display_crc.h"
#include "display/korvacom_switches.h"
#include "display/number_text.h"
#include "display/question_tag.h"
#include "display/tx_records.h"
#include "platform/runtime_error.h"
#include "sim/graphic_display.h"

namespace fc {
namespace {

std::string zeros(std::size_t n) {
    return std::string(n, '0');
}

TEST(DisplayRecords, TheStartRecordCarriesTheCrcInFiveDigitsAndKorva) {
    std::string r = registroArranque("07", 54321);
    EXPECT_EQ(r, "07D100SW54321KORVA" + zeros(130 - 18));
    EXPECT_EQ(r.size(), 130u);
}

TEST(DisplayRecords, ACrcBelow10000IsSentWithLeadingZerosToFiveDigits) {
    EXPECT_EQ(registroArranque("00", 1234).substr(0, 18), "00D100SW01234KORVA");
    EXPECT_EQ(registroArranque("00", 7).substr(0, 18), "00D100SW00007KORVA");
}

TEST(DisplayRecords, ADataRecordPadsBothLinesTo43AndSeparatesThemByTwoBlanks) {
    std::string r = registroDatos("49", 12, ":00000001FF", ":0400000001020304F2");
    std::string expected = "49D500000012" + std::string(":00000001FF") + zeros(32) + "  " +
                           ":0400000001020304F2" + zeros(43 - 19);
    EXPECT_EQ(r, expected + zeros(130 - expected.size()));
}

TEST(DisplayRecords, AnEmptyBFieldIsAllZeros) {
    std::string r = registroDatos("00", 3, ":00000001FF", "");
    EXPECT_EQ(r.substr(57, 43), zeros(43));
}

TEST(DisplayRecords, ASourceLineOfMoreThan43CharactersIsARunTimeError) {
    EXPECT_THROW(registroDatos("00", 0, std::string(44, 'A'), ""), RuntimeError);
    EXPECT_THROW(registroDatos("00", 0, "", std::string(44, 'A')), RuntimeError);
}

TEST(DisplayRecords, AQuestionCarriesItsTagFromCharacter16) {
    std::string r = registroPregunta("05", "123456");
    EXPECT_EQ(r, "05P000ASKDG0000123456" + zeros(130 - 21));
    EXPECT_EQ(medio(r, 16, 6), "123456");
}

TEST(DisplayCrc, TheTableIsTheStandardOneOfThePolynomial1021) {
    const auto& t = constantesCrc();
    EXPECT_EQ(t[0], 0);
    EXPECT_EQ(t[1], 0x1021);
    EXPECT_EQ(t[2], 0x2042);
    EXPECT_EQ(static_cast<std::uint16_t>(t[8]), 0x8108);
    EXPECT_LT(t[8], 0) << "entries above 0x7FFF are held as negative 16-bit values";
}

TEST(DisplayCrc, TheCheckTextGivesTheStandardCheckValue) {
    std::array<Integer, 256> tabla{};
    LoadArray(tabla, constantesCrc());
    Long crc = 0;
    for (char c : std::string("123456789")) crc = pasoCrc(tabla, crc, static_cast<Byte>(c));
    EXPECT_EQ(crc, 0x31C3);
}

TEST(DisplayCrc, TheTableStepAgreesWithTheDisplaysBitwiseCrc) {
    std::array<Integer, 256> tabla{};
    LoadArray(tabla, constantesCrc());
    std::vector<std::uint8_t> image(0x10001, 0xFF);
    for (std::size_t i = 0; i < 3000; ++i) image[i] = static_cast<std::uint8_t>(i * 7 + 3);
    Long crc = 0;
    for (Long i = 0; i < kBytesCrc; ++i) crc = pasoCrc(tabla, crc, image[i]);
    EXPECT_EQ(crc, sim::GraphicDisplay::crcOf(image));
}

TEST(KorvacomSwitches, EveryKeyTheScreenHasAValueForIsRewrittenOnEthernet) {
    ValoresKorvacom v{"19200", "COM3", "8", 2, 1, "07", "10.1.2.3", 3000, 3001};
    bool d = false, e = false;
    EXPECT_EQ(reescribeSwitch("-v 9600", v, d, e), "-v 19200");
    EXPECT_EQ(reescribeSwitch("-p COM1", v, d, e), "-p COM3");
    EXPECT_EQ(reescribeSwitch("-b 7", v, d, e), "-b 8");
    EXPECT_EQ(reescribeSwitch("-t x", v, d, e), "-t TX.TXT");
    EXPECT_EQ(reescribeSwitch("-r x", v, d, e), "-r RX.TXT");
    EXPECT_EQ(reescribeSwitch("-a 5", v, d, e), "-a 0");
    EXPECT_EQ(reescribeSwitch("-e 4", v, d, e), "-e 2");
    EXPECT_EQ(reescribeSwitch("-m 0", v, d, e), "-m 1");
    EXPECT_EQ(reescribeSwitch("-j 1,2", v, d, e), "-j 3001,3000");
    EXPECT_EQ(reescribeSwitch("-k 5", v, d, e), "-k 5");
    EXPECT_EQ(reescribeSwitch("-A 0", v, d, e), "-A 1");
    EXPECT_EQ(reescribeSwitch("-x what", v, d, e), "-x what");
    EXPECT_FALSE(d);
    EXPECT_FALSE(e);
    EXPECT_EQ(reescribeSwitch("-d 01#1.1.1.1:1", v, d, e), "-d 07#10.1.2.3:3000");
    EXPECT_TRUE(d);
    EXPECT_EQ(reescribeSwitch("-E 0", v, d, e), "-E 1");
    EXPECT_TRUE(e);
}

TEST(KorvacomSwitches, APortBoxThatIsNotANumberIsATypeMismatch) {
    EXPECT_EQ(numeroDeTexto(" 3000 "), 3000);
    try {
        numeroDeTexto("30x0");
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 13);
    }
}

TEST(QuestionTag, TheTagIsTheDrawsTextFromItsThirdCharacterPaddedToSix) {
    EXPECT_EQ(etiquetaDe(0.7055475f), "705547");
    EXPECT_EQ(etiquetaDe(0.5f), "000005");
    EXPECT_EQ(etiquetaDe(0.0f), "000000");
    EXPECT_EQ(textoSimple(0.7055475f), "0.7055475");
    EXPECT_EQ(textoNumero(1.0 / 132.0, 15), "0.00757575757575758");
    EXPECT_EQ(textoNumero(0.00001234, 7), "1.234E-05");
}

TEST(QuestionTag, TheGeneratorGivesNumbersFromZeroToBelowOneAndMovesOn) {
    Long semilla = 0x50000;
    EXPECT_FLOAT_EQ(rnd(semilla), 0.7055475f);  // the run time's first draw unseeded
    float second = rnd(semilla);
    EXPECT_GE(second, 0.0f);
    EXPECT_LT(second, 1.0f);
    Long a = 0x50000, b = 0x50000;
    randomize(a, 100.0);
    randomize(b, 101.0);
    EXPECT_NE(rnd(a), rnd(b));
}

}  // namespace
}  // namespace fc
