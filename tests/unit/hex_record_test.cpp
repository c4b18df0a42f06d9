#include <gtest/gtest.h>

#include <cstdio>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "firmware/hex_record.h"
#include "firmware/hex_text.h"
#include "platform/controls.h"
#include "operator/recording_dialogs.h"
#include "platform/runtime_error.h"
#include "platform/screen.h"
#include "virtual/virtual_pump.h"

namespace fc {
namespace {

// The run-time error number `action` raises, or -1 when it raises none.
int errorNumberOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return -1;
}

std::string hexPair(int value) {
    char text[3];
    std::snprintf(text, sizeof text, "%02X", value & 0xFF);
    return text;
}

// An Intel HEX record written by the standard's own rule: the checksum is the
// two's complement of the sum of every byte from the length to the last datum.
std::string intelRecord(int address, int type, const std::vector<int>& data) {
    std::vector<int> bytes = {static_cast<int>(data.size()), (address >> 8) & 0xFF, address & 0xFF,
                              type};
    bytes.insert(bytes.end(), data.begin(), data.end());
    int sum = 0;
    std::string record = ":";
    for (int b : bytes) {
        record += hexPair(b);
        sum += b;
    }
    return record + hexPair(-sum);
}

std::vector<int> countingBytes(int first, int count) {
    std::vector<int> data;
    for (int k = 0; k < count; ++k) data.push_back((first + k) & 0xFF);
    return data;
}

// calcheck

TEST(Calcheck, AcceptsAnEmptyLine) {
    EXPECT_TRUE(calcheck(""));
}

TEST(Calcheck, AcceptsTheEndRecord) {
    EXPECT_TRUE(calcheck(":00000001FF"));
}

TEST(Calcheck, AcceptsARecordWithItsRightChecksum) {
    EXPECT_TRUE(calcheck(":10010000214601360121470136007EFE09D2190140"));
    EXPECT_TRUE(calcheck(intelRecord(0xFFF0, 0, countingBytes(0xF8, 16))));
}

TEST(Calcheck, RefusesAWrongChecksum) {
    EXPECT_FALSE(calcheck(":00000001FE"));
    EXPECT_FALSE(calcheck(":10010000214601360121470136007EFE09D2190141"));
    EXPECT_FALSE(calcheck(":10010000214601360121470136007EFE09D2190240"));
}

TEST(Calcheck, ReadsLowerCaseHexAsValidAlthoughDameCheckSumWouldNot) {
    VirtualPump pump;
    RecordingDialogs dialogs(pump);
    EXPECT_TRUE(calcheck(":10010000214601360121470136007efe09d2190140"));
    EXPECT_TRUE(calcheck(":00000001ff"));
    EXPECT_NE(DameCheckSum("10010000214601360121470136007efe09d21901", dialogs), "40");
}

TEST(Calcheck, NeverExaminesTheMarkCharacter) {
    EXPECT_TRUE(calcheck("X00000001FF"));
}

TEST(Calcheck, ComparesTheMissingFieldsOfAShortLineAsZero) {
    EXPECT_TRUE(calcheck(":01FF"));  // 1 + 0xFF = 0x100: expects 0, reads 0
    EXPECT_FALSE(calcheck(":10000000"));
}

TEST(Calcheck, AcceptsARecordOf123DataBytes) {
    EXPECT_TRUE(calcheck(intelRecord(0x0100, 0, countingBytes(0, 123))));
}

TEST(Calcheck, OverflowsOnARecordOf124DataBytes) {
    const std::string line = intelRecord(0x0100, 0, countingBytes(0, 124));
    EXPECT_EQ(errorNumberOf([&] { calcheck(line); }), err::kOverflow);
}

// The record builders

class RecordBuilder : public ::testing::Test {
  protected:
    RecordImage imagen() { return RecordImage{memoria, pos_memoria, linea_envio}; }

    std::vector<Byte> memoria = std::vector<Byte>(kLimiteMemoria + 1, 0xFF);
    Long pos_memoria = 0;
    std::string linea_envio;
    Screen screen{"Firmcast"};
    TextBox Texto{screen, "Texto"};
};

TEST_F(RecordBuilder, PreparaLineaBuildsASixteenByteDataRecordEndedByCrLf) {
    for (int k = 0; k < 16; ++k) memoria[0x1230 + k] = static_cast<Byte>(k * 0x11);
    pos_memoria = 0x1230;
    prepara_linea(imagen(), Texto);
    EXPECT_EQ(linea_envio, ":1012300000112233445566778899AABBCCDDEEFFB6\r\n");
    std::vector<int> data;
    for (int k = 0; k < 16; ++k) data.push_back(k * 0x11);
    EXPECT_EQ(linea_envio, intelRecord(0x1230, 0, data) + "\r\n");
    EXPECT_EQ(pos_memoria, 0x1240);
    EXPECT_EQ(Texto.caption(), linea_envio);
}

TEST_F(RecordBuilder, PreparaLineaMovesOnRecordByRecord) {
    prepara_linea(imagen(), Texto);
    EXPECT_EQ(linea_envio.substr(0, 9), ":10000000");
    prepara_linea(imagen(), Texto);
    EXPECT_EQ(linea_envio.substr(0, 9), ":10001000");
    EXPECT_EQ(pos_memoria, 0x20);
}

TEST_F(RecordBuilder, PreparaLineaWhoseSumIsZeroModulo256HasChecksum00) {
    // 0x10 + 16 * 0xFF = 0x1000: the complement of 0 plus 1 wraps to 0.
    EXPECT_NO_THROW(prepara_linea(imagen(), Texto));
    EXPECT_EQ(linea_envio, ":10000000" + std::string(32, 'F') + "00\r\n");
}

TEST_F(RecordBuilder, PreparaLineaAtFFF0LeavesPosAt10000AndTheNextBuildFails) {
    pos_memoria = 0xFFF0;
    prepara_linea(imagen(), Texto);
    EXPECT_EQ(linea_envio, ":10FFF000" + std::string(32, 'F') + "11\r\n");
    EXPECT_EQ(pos_memoria, 0x10000);
    const std::string shown = Texto.caption();

    EXPECT_EQ(errorNumberOf([&] { prepara_linea(imagen(), Texto); }), err::kOverflow);
    EXPECT_EQ(pos_memoria, 0x10000);
    EXPECT_EQ(linea_envio, ":10");  // no address, no data: never a wrong record
    EXPECT_EQ(Texto.caption(), shown);
}

TEST_F(RecordBuilder, PreparaLineaAtANegativeAddressOverflows) {
    pos_memoria = -16;
    EXPECT_EQ(errorNumberOf([&] { prepara_linea(imagen(), Texto); }), err::kOverflow);
}

class MV510RecordBuilder : public RecordBuilder {
  protected:
    MV510RecordBuilder() { memoria.assign(kLimiteMemoriaMV510 + 1, 0xFF); }
};

TEST_F(MV510RecordBuilder, BuildsA128ByteDataRecordWithoutLineEnd) {
    for (int k = 0; k < 128; ++k) memoria[0x0100 + k] = static_cast<Byte>(k);
    pos_memoria = 0x0100;
    MV510prepara_linea(imagen(), Texto);
    EXPECT_EQ(linea_envio, intelRecord(0x0100, 0, countingBytes(0, 128)));
    EXPECT_EQ(linea_envio.size(), 267u);
    EXPECT_EQ(linea_envio.substr(0, 9), ":80010000");
    EXPECT_EQ(linea_envio.substr(265), "BF");
    EXPECT_EQ(pos_memoria, 0x0180);
    EXPECT_EQ(Texto.caption(), linea_envio);
}

TEST_F(MV510RecordBuilder, SumsAFullRecordOfFFPast16Bits) {
    // 0x80 + 0xFF + 128 * 0xFF = 33023: more than a signed 16-bit sum holds.
    pos_memoria = 0xFF00;
    MV510prepara_linea(imagen(), Texto);
    EXPECT_EQ(linea_envio, ":80FF0000" + std::string(256, 'F') + "01");
}

TEST_F(MV510RecordBuilder, AtFF80EndsAtTheImageBoundAndTheNextBuildOverflows) {
    pos_memoria = 0xFF80;
    MV510prepara_linea(imagen(), Texto);
    EXPECT_EQ(linea_envio, intelRecord(0xFF80, 0, std::vector<int>(128, 0xFF)));
    EXPECT_EQ(pos_memoria, 0x10000);
    EXPECT_EQ(errorNumberOf([&] { MV510prepara_linea(imagen(), Texto); }), err::kOverflow);
}

TEST_F(MV510RecordBuilder, ReadingPastTheImageBoundIsASubscriptError) {
    pos_memoria = 0xFF90;  // its 128 bytes would run to 0x1000F
    EXPECT_EQ(errorNumberOf([&] { MV510prepara_linea(imagen(), Texto); }),
              err::kSubscriptOutOfRange);
    EXPECT_EQ(Texto.caption(), "");
}

TEST_F(RecordBuilder, PreparaLineaAt10000OverflowsAlthoughTheImageGoesOn) {
    // The main image reaches 0xC0000, but its records stop at 16-bit addresses.
    pos_memoria = 0x10000;
    EXPECT_EQ(errorNumberOf([&] { prepara_linea(imagen(), Texto); }), err::kOverflow);
}

// envia_linea_partida

class EnviaLineaPartida : public ::testing::Test {
  protected:
    // Stands for the numbered-line sender: it sends what linea_fichero holds
    // and gives the next scripted answer (True when none is left).
    Integer send() {
        enviadas.push_back(linea_fichero);
        if (respuestas.empty())
            return kTrue;
        const Integer answer = respuestas.front();
        respuestas.pop_front();
        return answer;
    }

    Integer envia() {
        return envia_linea_partida(linea_fichero, dialogs, [this] { return send(); });
    }

    VirtualPump pump;
    RecordingDialogs dialogs{pump};
    std::string linea_fichero;
    std::vector<std::string> enviadas;
    std::deque<Integer> respuestas;
};

TEST_F(EnviaLineaPartida, SplitsARecordAtThe128BoundaryWithAChecksumForEachHalf) {
    linea_fichero = intelRecord(0x0078, 0, countingBytes(0, 16));
    EXPECT_EQ(envia(), kTrue);
    ASSERT_EQ(enviadas.size(), 2u);
    EXPECT_EQ(enviadas[0], ":08007800000102030405060764");
    EXPECT_EQ(enviadas[0], intelRecord(0x0078, 0, countingBytes(0, 8)));
    EXPECT_EQ(enviadas[1], intelRecord(0x0080, 0, countingBytes(8, 8)));
    EXPECT_TRUE(calcheck(enviadas[0]));
    EXPECT_TRUE(calcheck(enviadas[1]));
    EXPECT_EQ(linea_fichero, enviadas[1]);
    EXPECT_TRUE(dialogs.boxes().empty());
}

TEST_F(EnviaLineaPartida, KeepsTheRecordTypeInBothHalves) {
    linea_fichero = intelRecord(0x017C, 0x66, countingBytes(0x40, 6));
    envia();
    ASSERT_EQ(enviadas.size(), 2u);
    EXPECT_EQ(enviadas[0], intelRecord(0x017C, 0x66, countingBytes(0x40, 4)));
    EXPECT_EQ(enviadas[1], intelRecord(0x0180, 0x66, countingBytes(0x44, 2)));
}

TEST_F(EnviaLineaPartida, SplitsOnlyAtTheFirstBoundary) {
    linea_fichero = intelRecord(0x0078, 0, countingBytes(0, 144));
    envia();
    ASSERT_EQ(enviadas.size(), 2u);
    EXPECT_EQ(enviadas[0], intelRecord(0x0078, 0, countingBytes(0, 8)));
    EXPECT_EQ(enviadas[1], intelRecord(0x0080, 0, countingBytes(8, 136)));
}

TEST_F(EnviaLineaPartida, SplitsTheSameWayAbove8000) {
    linea_fichero = intelRecord(0x8078, 0, countingBytes(0, 16));
    envia();
    ASSERT_EQ(enviadas.size(), 2u);
    EXPECT_EQ(enviadas[0], intelRecord(0x8078, 0, countingBytes(0, 8)));
    EXPECT_EQ(enviadas[1], intelRecord(0x8080, 0, countingBytes(8, 8)));
}

TEST_F(EnviaLineaPartida, AtFFF8AddressesTheSecondHalfAt0000) {
    linea_fichero = intelRecord(0xFFF8, 0, countingBytes(0, 16));
    envia();
    ASSERT_EQ(enviadas.size(), 2u);
    EXPECT_EQ(enviadas[0], intelRecord(0xFFF8, 0, countingBytes(0, 8)));
    EXPECT_EQ(enviadas[1], intelRecord(0x0000, 0, countingBytes(8, 8)));
}

TEST_F(EnviaLineaPartida, ReturnsTheFirstFailureWithoutSendingTheSecondHalf) {
    linea_fichero = intelRecord(0x0078, 0, countingBytes(0, 16));
    respuestas = {kFalse};
    EXPECT_EQ(envia(), kFalse);
    ASSERT_EQ(enviadas.size(), 1u);
    EXPECT_EQ(linea_fichero, enviadas[0]);
}

TEST_F(EnviaLineaPartida, ReturnsTheAnswerToTheSecondHalf) {
    linea_fichero = intelRecord(0x0078, 0, countingBytes(0, 16));
    respuestas = {kTrue, kFalse};
    EXPECT_EQ(envia(), kFalse);
    EXPECT_EQ(enviadas.size(), 2u);
}

TEST_F(EnviaLineaPartida, SendsTheLineUnsplitWhenNoBoundaryIsCrossed) {
    const std::string line = intelRecord(0x0000, 0, countingBytes(0, 16));
    linea_fichero = line;
    EXPECT_EQ(envia(), kTrue);
    EXPECT_EQ(enviadas, std::vector<std::string>{line});
    EXPECT_EQ(linea_fichero, line);

    respuestas = {kFalse};
    EXPECT_EQ(envia(), kFalse);
    EXPECT_EQ(enviadas.size(), 2u);
}

TEST_F(EnviaLineaPartida, DoesNotSplitARecordThatEndsOrStartsAtTheBoundary) {
    const std::string ends = intelRecord(0x0070, 0, countingBytes(0, 16));
    const std::string starts = intelRecord(0x0080, 0, countingBytes(0, 16));
    linea_fichero = ends;
    envia();
    linea_fichero = starts;
    envia();
    EXPECT_EQ(enviadas, (std::vector<std::string>{ends, starts}));
}

TEST_F(EnviaLineaPartida, SendsTheEndRecordUnsplit) {
    linea_fichero = ":00000001FF";
    envia();
    EXPECT_EQ(enviadas, std::vector<std::string>{":00000001FF"});
}

}  // namespace
}  // namespace fc
