#include <gtest/gtest.h>

#include <set>
#include <utility>

#include "firmware/llenado_memoria.h"
#include "operator/recording_dialogs.h"
#include "virtual/virtual_pump.h"

namespace fc {
namespace {

class Llenado : public ::testing::Test {
  protected:
    void SetUp() override { LlenadoMemoria(mensajes, dialogs); }

    // The (letter, digit) of a data message, checking its form on the way.
    static std::pair<char, char> patternOf(const MensajeEth& m) {
        EXPECT_EQ(m.datos.size(), 1024u);
        const char letter = m.datos.front();
        EXPECT_EQ(m.datos.back(), letter);
        EXPECT_EQ(m.datos.substr(1, 1022), std::string(1022, m.datos[1]));
        return {letter, m.datos[1]};
    }

    VirtualPump pump;
    RecordingDialogs dialogs{pump};
    std::vector<MensajeEth> mensajes{MensajeEth{"x", "yy", "zz", "old"}};
};

TEST_F(Llenado, TheListHolds685Elements) {
    EXPECT_EQ(mensajes.size(), 685u);
    EXPECT_TRUE(dialogs.boxes().empty());
}

TEST_F(Llenado, ItBeginsWithTheEraseMessage) {
    EXPECT_EQ(mensajes[0].tipo, "\x55");
    EXPECT_EQ(mensajes[0].direccion, std::string(2, '\0'));
    EXPECT_EQ(mensajes[0].numero, std::string(2, '\0'));
    EXPECT_EQ(mensajes[0].datos, std::string(1024, '0'));
}

TEST_F(Llenado, ElevenBanksCoverTheFlashFrom0x48000) {
    const std::vector<int> banks = {0x4800, 0x5000, 0x6000, 0x7000, 0x8000, 0x9000,
                                    0xA000, 0xB000, 0xC000, 0xD000, 0xE000};
    std::size_t i = 1;
    for (int b : banks) {
        const std::string direccion = {static_cast<char>(b & 0xFF), static_cast<char>(b >> 8)};
        ASSERT_EQ(mensajes[i].tipo, "\x02") << std::hex << b;
        EXPECT_EQ(mensajes[i].direccion, direccion);
        EXPECT_EQ(mensajes[i].numero, std::string("\x01\x00", 2));
        EXPECT_EQ(mensajes[i].datos, std::string(1024, '0'));
        const int count = b == 0x4800 ? 32 : 64;
        for (int n = 1; n <= count; ++n) {
            const MensajeEth& m = mensajes[i + n];
            ASSERT_EQ(m.tipo, std::string(1, '\0')) << std::hex << b << " message " << n;
            EXPECT_EQ(m.direccion, direccion);
            EXPECT_EQ(m.numero, std::string({static_cast<char>(n), '\0'}));
        }
        i += count + 1;
    }
    EXPECT_EQ(i, 684u);
}

TEST_F(Llenado, ItEndsWithTheEndOfProgramOf1022ZerosAndNoEndOfLoad) {
    const MensajeEth& fin = mensajes.back();
    EXPECT_EQ(fin.tipo, "\x01");
    EXPECT_EQ(fin.direccion, std::string(2, '\0'));
    EXPECT_EQ(fin.numero, std::string(2, '\0'));
    EXPECT_EQ(fin.datos, std::string(1022, '0'));
}

TEST_F(Llenado, EveryBankStartsAtLetterAAndDigitOne) {
    for (std::size_t i = 1; i < mensajes.size() - 1; ++i) {
        if (mensajes[i].tipo != "\x02")
            continue;
        const MensajeEth& first = mensajes[i + 1];
        EXPECT_EQ(first.datos, "A" + std::string(1022, '1') + "A") << "bank message " << i;
    }
}

TEST_F(Llenado, LetterAndDigitAdvanceAtEachMessageAndNeverRepeatWithinABank) {
    std::set<std::pair<char, char>> seen;
    char letter = 'A', digit = '1';
    for (std::size_t i = 2; i < mensajes.size() - 1; ++i) {
        if (mensajes[i].tipo == "\x02") {
            seen.clear();
            letter = 'A';
            digit = '1';
            continue;
        }
        const auto pattern = patternOf(mensajes[i]);
        EXPECT_EQ(pattern, std::make_pair(letter, digit)) << "message " << i;
        EXPECT_TRUE(seen.insert(pattern).second) << "message " << i << " repeats a pair";
        letter = letter == 'J' ? 'A' : static_cast<char>(letter + 1);
        digit = digit == '9' ? '1' : static_cast<char>(digit + 1);
    }
}

}  // namespace
}  // namespace fc
