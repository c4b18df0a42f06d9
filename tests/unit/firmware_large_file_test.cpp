// A whole Ethernet firmware file of eleven 64 KB banks (about 2 MB of text),
// read as the Ethernet path reads it: PreprocesaFile's messages and
// carga_ficheroL's image, byte for byte, against what the file's data says
// they must be. The file mixes the three line ends and both cases of hex
// digits, as files written by different tools do.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "firmware/file_loader.h"
#include "firmware/preprocesa_file.h"
#include "support/intel_hex.h"
#include "unit/firmware_fixture.h"

namespace fc {
namespace {

constexpr int kFirstBank = 0x4000;
constexpr int kLastBank = 0xE000;
constexpr int kBankBytes = 0x10000;
constexpr std::size_t kMessageBytes = 1024;

std::vector<int> bankData(int bank) {
    return test::patternBytes(bank >> 12, kBankBytes);
}

std::string lower(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'F')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

// Each bank a 02 record and 4096 records of 16 bytes; one record in seven in
// lower case; the line ends CR LF, LF and a lone CR in turn, bank by bank.
std::string largeFile() {
    const char* ends[] = {"\r\n", "\n", "\r"};
    std::string text;
    int turn = 0;
    for (int bank = kFirstBank; bank <= kLastBank; bank += 0x1000, ++turn) {
        const std::string end = ends[turn % 3];
        text += test::bankRecord(bank) + end;
        const std::vector<int> data = bankData(bank);
        for (int address = 0; address < kBankBytes; address += 16) {
            std::vector<int> chunk(data.begin() + address, data.begin() + address + 16);
            std::string record = test::intelRecord(address, 0, chunk);
            text += ((address / 16) % 7 == 3 ? lower(record) : record) + end;
        }
    }
    return text + test::endRecord() + "\r\n";
}

MensajeEth message(int tipo, int bancoAlto, int numero, std::string datos) {
    return MensajeEth{std::string(1, static_cast<char>(tipo)),
                      {'\0', static_cast<char>(bancoAlto)},
                      {static_cast<char>(numero & 0xFF), static_cast<char>(numero >> 8)},
                      std::move(datos)};
}

std::vector<MensajeEth> expectedMessages() {
    const std::string zeros(kMessageBytes, '0');
    std::vector<MensajeEth> list{MensajeEth{"\x55", {'\0', '\0'}, {'\0', '\0'}, zeros}};
    for (int bank = kFirstBank; bank <= kLastBank; bank += 0x1000) {
        list.push_back(message(2, bank >> 8, 1, zeros));
        const std::vector<int> data = bankData(bank);
        for (int k = 0; k < kBankBytes / static_cast<int>(kMessageBytes); ++k) {
            std::string bytes;
            for (std::size_t i = 0; i < kMessageBytes; ++i)
                bytes += static_cast<char>(data[k * kMessageBytes + i]);
            list.push_back(message(0, bank >> 8, k + 1, bytes));
        }
    }
    list.push_back(message(1, 0, 0, "\xFF" + std::string(kMessageBytes - 1, '0')));
    list.push_back(MensajeEth{"\x67", {'\0', '\0'}, {'\0', '\0'}, zeros});
    return list;
}

std::vector<Byte> expectedImage(std::size_t size) {
    std::vector<Byte> image(size, 0xFF);
    for (int bank = kFirstBank; bank <= kLastBank; bank += 0x1000) {
        const std::vector<int> data = bankData(bank);
        const std::size_t base = static_cast<std::size_t>(bank) * 16 - 0x40000;
        for (int i = 0; i < kBankBytes; ++i) image[base + i] = static_cast<Byte>(data[i]);
    }
    return image;
}

TEST(FirmwareLargeFile, ElevenBanksGiveTheirMessagesAndTheirImageByteForByte) {
    test::FirmwareScreen screen;
    screen.memoria.assign(kLimiteMemoria + 1, 0x00);
    const std::string path = screen.useFile(largeFile());

    PreprocessPanel preproceso = screen.preprocess();
    ASSERT_TRUE(PreprocesaFile(preproceso, path));
    const std::vector<MensajeEth> expected = expectedMessages();
    ASSERT_EQ(screen.mensajes.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_TRUE(screen.mensajes[i].tipo == expected[i].tipo) << "type of message " << i;
        EXPECT_TRUE(screen.mensajes[i].direccion == expected[i].direccion)
            << "bank of message " << i;
        EXPECT_TRUE(screen.mensajes[i].numero == expected[i].numero) << "number of message " << i;
        EXPECT_TRUE(screen.mensajes[i].datos == expected[i].datos) << "data of message " << i;
    }

    ReaderPanel lector = screen.reader();
    ASSERT_TRUE(carga_ficheroL(lector, screen.segment()));
    const std::vector<Byte> image = expectedImage(screen.memoria.size());
    std::size_t wrong = 0, first = 0;
    for (std::size_t i = 0; i < image.size(); ++i) {
        if (screen.memoria[i] != image[i] && wrong++ == 0)
            first = i;
    }
    EXPECT_EQ(wrong, 0u) << "the first wrong byte of the image is at index " << first;
    EXPECT_TRUE(screen.boxes().empty());
    EXPECT_EQ(screen.Barra.value(), screen.Barra.max());
}

}  // namespace
}  // namespace fc
