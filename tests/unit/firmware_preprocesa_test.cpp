#include <gtest/gtest.h>

#include "firmware/preprocesa_file.h"
#include "platform/event_source.h"
#include "support/intel_hex.h"
#include "unit/firmware_fixture.h"

namespace fc {
namespace {

using test::bankRecord;
using test::endRecord;
using test::hexFile;
using test::intelRecord;

// A message as the test expects it, spelled out byte by byte.
MensajeEth message(int tipo, int bancoAlto, int bancoBajo, int numero, std::string datos) {
    return MensajeEth{std::string(1, static_cast<char>(tipo)),
                      {static_cast<char>(bancoBajo), static_cast<char>(bancoAlto)},
                      {static_cast<char>(numero & 0xFF), static_cast<char>(numero >> 8)},
                      std::move(datos)};
}
std::string zeros(std::size_t n) {
    return std::string(n, '0');
}
MensajeEth control(int tipo) {
    return message(tipo, 0, 0, 0, zeros(1024));
}
MensajeEth bank(int bancoAlto, int bancoBajo) {
    return message(2, bancoAlto, bancoBajo, 1, zeros(1024));
}
std::string bytesOf(const std::vector<int>& data) {
    std::string s;
    for (int b : data) s.push_back(static_cast<char>(b));
    return s;
}
std::string ff(std::size_t n) {
    return std::string(n, '\xFF');
}

std::string describe(const MensajeEth& m) {
    std::string text;
    char pair[4];
    for (const std::string* f : {&m.tipo, &m.direccion, &m.numero}) {
        for (char c : *f) {
            std::snprintf(pair, sizeof pair, "%02X", static_cast<unsigned char>(c));
            text += pair;
        }
        text += " ";
    }
    return text + std::to_string(m.datos.size()) + " bytes";
}

void expectMessages(const std::vector<MensajeEth>& actual,
                    const std::vector<MensajeEth>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(describe(actual[i]), describe(expected[i])) << "message " << i;
        EXPECT_TRUE(actual[i].datos == expected[i].datos) << "data of message " << i;
    }
}

// Data records of 16 bytes covering `count` bytes from address `from`.
std::vector<std::string> dataRecords(int from, const std::vector<int>& bytes) {
    std::vector<std::string> lines;
    for (std::size_t k = 0; k < bytes.size(); k += 16) {
        std::vector<int> chunk(bytes.begin() + k, bytes.begin() + std::min(k + 16, bytes.size()));
        lines.push_back(intelRecord(from + static_cast<int>(k), 0, chunk));
    }
    return lines;
}

// Runs whenever the program yields, to count the yields.
class YieldCounter : public EventSource {
  public:
    Micros nextDue() const override { return 0; }
    void runDue(Micros) override { ++count; }
    int count = 0;
};

class Preprocesa : public ::testing::Test {
  protected:
    bool preprocesa(const std::vector<std::string>& lines) {
        return preprocesaText(hexFile(lines));
    }
    bool preprocesaText(const std::string& text) {
        PreprocessPanel panel = screen.preprocess();
        return PreprocesaFile(panel, screen.useFile(text));
    }

    test::FirmwareScreen screen;
};

TEST_F(Preprocesa, ANormalTwoBankFileGivesTheStatedSequenceByteForByte) {
    const std::vector<int> first = test::patternBytes(1, 3 * 1024);
    const std::vector<int> second = test::patternBytes(2, 2 * 1024 + 256);
    std::vector<std::string> lines = {bankRecord(0x4000)};
    for (const std::string& l : dataRecords(0, first)) lines.push_back(l);
    lines.push_back(bankRecord(0x5000));
    for (const std::string& l : dataRecords(0, second)) lines.push_back(l);
    lines.push_back(endRecord());

    ASSERT_TRUE(preprocesa(lines));
    const std::string a = bytesOf(first), b = bytesOf(second);
    expectMessages(
        screen.mensajes,
        {control(0x55), bank(0x40, 0x00), message(0, 0x40, 0, 1, a.substr(0, 1024)),
         message(0, 0x40, 0, 2, a.substr(1024, 1024)), message(0, 0x40, 0, 3, a.substr(2048, 1024)),
         bank(0x50, 0x00), message(0, 0x50, 0, 1, b.substr(0, 1024)),
         message(0, 0x50, 0, 2, b.substr(1024, 1024)),
         message(0, 0x50, 0, 3, b.substr(2048) + ff(768)),
         message(1, 0, 0, 0, "\xFF" + zeros(1023)), control(0x67)});
    EXPECT_TRUE(screen.boxes().empty());
    EXPECT_EQ(screen.inicio_linea, ":02");
    EXPECT_EQ(screen.acaba2Calls, 0);
    EXPECT_FALSE(screen.files.isOpen(1));
    EXPECT_TRUE(screen.lblModelo.visible());
    EXPECT_EQ(screen.lblModelo.caption(), "");
}

TEST_F(Preprocesa, AFileOfOneLineIsRefusedAsEmpty) {
    screen.mensajes = {control(0x55)};
    EXPECT_FALSE(preprocesa({endRecord()}));
    EXPECT_EQ(screen.boxes(), std::vector<std::string>{"The file is empty"});
    EXPECT_EQ(screen.acaba2Calls, 1);
    EXPECT_FALSE(screen.files.isOpen(1));
    EXPECT_EQ(screen.mensajes.size(), 1u);  // untouched
}

TEST_F(Preprocesa, AFirstLineOfTheWrongFormIsRefused) {
    for (const std::string& first : {std::string("S00600004844521B"), std::string(":0200000240"),
                                     std::string(":0300000240BB")}) {
        screen.dialogs.clear();
        screen.acaba2Calls = 0;
        EXPECT_FALSE(preprocesa({first, endRecord()})) << first;
        EXPECT_EQ(screen.boxes(), std::vector<std::string>{"This is not a Flash program file"})
            << first;
        EXPECT_EQ(screen.acaba2Calls, 1) << first;
        EXPECT_EQ(screen.inicio_linea, first.substr(0, 3));
        EXPECT_FALSE(screen.files.isOpen(1));
    }
}

TEST_F(Preprocesa, TheFirstLineGivesAMessageOfItsOwnWhateverItsType) {
    ASSERT_TRUE(preprocesa({intelRecord(0, 0, {0x12, 0x34}), endRecord()}));
    expectMessages(screen.mensajes, {control(0x55), message(0, 0x12, 0x34, 1, zeros(1024)),
                                     message(1, 0, 0, 0, "\xFF" + zeros(1022)), control(0x67)});
}

TEST_F(Preprocesa, AnEndRecordOnTheSecondLineIsOneByteShort) {
    ASSERT_TRUE(preprocesa({bankRecord(0x4000), endRecord()}));
    ASSERT_EQ(screen.mensajes.size(), 4u);
    EXPECT_EQ(screen.mensajes[2].datos, "\xFF" + zeros(1022));
}

TEST_F(Preprocesa, ADataByteForTheScaleIsOneByteShort) {
    ASSERT_TRUE(
        preprocesa({bankRecord(0x4000), ":010000660792", intelRecord(0, 0x66, {9}), endRecord()}));
    expectMessages(screen.mensajes,
                   {control(0x55), bank(0x40, 0), message(0x66, 0, 0, 0, "\x07" + zeros(1022)),
                    message(0x66, 0, 0, 0, "\x09" + zeros(1022) + "\xFF"),
                    message(1, 0, 0, 0, "\xFF" + zeros(1023)), control(0x67)});
}

TEST_F(Preprocesa, BankNumbersRestartAtOneAfterEveryBankRecord) {
    const std::vector<int> data = test::patternBytes(5, 2048);
    std::vector<std::string> lines = {bankRecord(0x4000)};
    for (int bancoAlto : {0x50, 0x60}) {
        for (const std::string& l : dataRecords(0, data)) lines.push_back(l);
        lines.push_back(bankRecord(bancoAlto << 8));
    }
    lines.push_back(intelRecord(0, 0, {1}));
    lines.push_back(endRecord());
    ASSERT_TRUE(preprocesa(lines));
    std::vector<std::string> seen;
    for (const MensajeEth& m : screen.mensajes) seen.push_back(describe(m).substr(0, 15));
    EXPECT_EQ(seen, (std::vector<std::string>{
                        "55 0000 0000 10", "02 0040 0100 10", "00 0040 0100 10", "00 0040 0200 10",
                        "02 0050 0100 10", "00 0050 0100 10", "00 0050 0200 10", "02 0060 0100 10",
                        "00 0060 0100 10", "01 0000 0000 10", "67 0000 0000 10"}));
}

TEST_F(Preprocesa, TheFirstRecordOfABankIsPaddedToItsAddressAndLaterHolesCloseUp) {
    ASSERT_TRUE(preprocesa({bankRecord(0x4000), intelRecord(0x0010, 0, {1, 2}),
                            intelRecord(0x0300, 0, {3}), endRecord()}));
    ASSERT_EQ(screen.mensajes.size(), 5u);
    EXPECT_EQ(screen.mensajes[2].datos, ff(16) + "\x01\x02\x03" + ff(1024 - 19));
}

TEST_F(Preprocesa, AFirstRecordEndingPastTheLimitMakesALongMessageAndTheNextRecordFails) {
    const std::vector<int> data = test::patternBytes(3, 32);
    ASSERT_FALSE(preprocesa({bankRecord(0x4000), intelRecord(0x03F0, 0, data),
                             intelRecord(0x0410, 0, {1}), endRecord()}));
    EXPECT_EQ(screen.boxes(), std::vector<std::string>{"Error en Preprocesado del fichero"});
    EXPECT_EQ(screen.dialogs.boxes()[0].style, mb::kCritical);
    EXPECT_FALSE(screen.files.isOpen(1));
    // The list stays as far as it got.
    ASSERT_EQ(screen.mensajes.size(), 3u);
    EXPECT_EQ(screen.mensajes[2].datos, ff(0x3F0) + bytesOf(data));
    EXPECT_EQ(screen.mensajes[2].datos.size(), 1040u);
}

TEST_F(Preprocesa, ARecordAcrossTheLimitFillsItsMessageAndBeginsTheNext) {
    const std::vector<int> head = test::patternBytes(4, 1016);
    const std::vector<int> across = test::patternBytes(6, 16);
    std::vector<std::string> lines = {bankRecord(0x4000)};
    for (const std::string& l : dataRecords(0, head)) lines.push_back(l);  // the last is 8 bytes
    lines.push_back(intelRecord(0x03F8, 0, across));
    lines.push_back(endRecord());
    ASSERT_TRUE(preprocesa(lines));
    const std::string a = bytesOf(across);
    expectMessages(screen.mensajes, {control(0x55), bank(0x40, 0),
                                     message(0, 0x40, 0, 1, bytesOf(head) + a.substr(0, 8)),
                                     message(0, 0x40, 0, 2, a.substr(8) + ff(1016)),
                                     message(1, 0, 0, 0, "\xFF" + zeros(1023)), control(0x67)});
}

TEST_F(Preprocesa, TheLastMessageOfABankIsFilledButNotBeforeADataByteForTheScale) {
    ASSERT_TRUE(preprocesa({bankRecord(0x4000), intelRecord(0, 0, {1}), intelRecord(1, 0, {2}),
                            intelRecord(0, 0x66, {5}), bankRecord(0x5000), intelRecord(0, 0, {3}),
                            endRecord()}));
    ASSERT_EQ(screen.mensajes.size(), 8u);
    EXPECT_EQ(screen.mensajes[2].datos, "\x01\x02");  // left as it stood before the 0x66
    EXPECT_EQ(screen.mensajes[3].datos, "\x05" + zeros(1022) + "\xFF");  // filled by the 02
    EXPECT_EQ(screen.mensajes[5].datos, "\x03" + ff(1023));
}

TEST_F(Preprocesa, TheModelHeaderAfterTheMarkerIsShown) {
    const std::string header = "W300ES2105";
    std::vector<int> data;
    for (char c : header) data.push_back(static_cast<unsigned char>(c));
    ASSERT_TRUE(preprocesa({bankRecord(0x4000), intelRecord(0, 0, {1}), ":02000002EFFE0F",
                            intelRecord(0, 0, data), endRecord()}));
    EXPECT_EQ(screen.cabecera_modelo, header);
    EXPECT_EQ(screen.lblModelo.caption(),
              "Model: W300       Country: ES       Display: 2       Version: 105");
    ASSERT_EQ(screen.mensajes.size(), 7u);
    EXPECT_EQ(describe(screen.mensajes[3]), "02 FEEF 0100 1024 bytes");
    EXPECT_EQ(screen.mensajes[4].datos, header + ff(1014));
}

TEST_F(Preprocesa, AMarkerNotFollowedByDataCarriesOverToTheNextBank) {
    std::vector<int> data;
    for (char c : std::string("TR82UK1200")) data.push_back(c);
    ASSERT_TRUE(preprocesa({bankRecord(0x4000), intelRecord(0, 0, {1}), ":02000002EFFE0F",
                            intelRecord(0, 0x66, {1}), intelRecord(0, 0, {0x41}),
                            bankRecord(0x5000), intelRecord(0, 0, data), endRecord()}));
    EXPECT_EQ(screen.lblModelo.caption(),
              "Model: TR82       Country: UK       Display: 1       Version: 200");
}

TEST_F(Preprocesa, AHeaderOfAnotherModelChangesNothingInTheList) {
    std::vector<int> data;
    for (char c : std::string("XXXXZZ9999")) data.push_back(c);
    ASSERT_TRUE(preprocesa({bankRecord(0x4000), intelRecord(0, 0, {1}), ":02000002EFFE0F",
                            intelRecord(0, 0, data), endRecord()}));
    EXPECT_EQ(screen.lblModelo.caption(),
              "Model: XXXX       Country: ZZ       Display: 9       Version: 999");
    EXPECT_EQ(screen.mensajes.size(), 7u);
    EXPECT_EQ(screen.mensajes.back().tipo, "\x67");
    EXPECT_TRUE(screen.boxes().empty());
}

TEST_F(Preprocesa, AMarkerInOtherCaseOrSpacingIsNotRecognised) {
    std::vector<int> data;
    for (char c : std::string("W300ES2105")) data.push_back(c);
    for (const std::string& marker :
         {std::string(":02000002effe0f"), std::string(":02000002EFFE0F "),
          std::string(":02000002EFFE10")}) {
        screen.lblModelo.setCaption("unchanged");
        ASSERT_TRUE(preprocesa({bankRecord(0x4000), intelRecord(0, 0, {1}), marker,
                                intelRecord(0, 0, data), endRecord()}))
            << marker;
        EXPECT_EQ(screen.lblModelo.caption(), "") << marker;
    }
}

TEST_F(Preprocesa, ABankRecordOnTheSecondLineIsReadOver) {
    ASSERT_TRUE(
        preprocesa({bankRecord(0x4000), bankRecord(0x5000), intelRecord(0, 0, {1}), endRecord()}));
    expectMessages(screen.mensajes,
                   {control(0x55), bank(0x40, 0), message(0, 0x40, 0, 2, "\x01" + ff(1023)),
                    message(1, 0, 0, 0, "\xFF" + zeros(1023)), control(0x67)});
}

TEST_F(Preprocesa, RecordChecksumsAreNotLookedAt) {
    ASSERT_TRUE(preprocesa({bankRecord(0x4000), ":0100000005FF", endRecord()}));
    EXPECT_EQ(screen.mensajes[2].datos, "\x05" + ff(1023));
    EXPECT_TRUE(screen.boxes().empty());
}

TEST_F(Preprocesa, OtherRecordTypesAreReadOver) {
    ASSERT_TRUE(preprocesa({bankRecord(0x4000), intelRecord(0, 0, {1}), intelRecord(0, 4, {0, 1}),
                            intelRecord(0, 3, {1, 2, 3, 4}), intelRecord(1, 0, {2}), endRecord()}));
    ASSERT_EQ(screen.mensajes.size(), 5u);
    EXPECT_EQ(screen.mensajes[2].datos, "\x01\x02" + ff(1022));
}

TEST_F(Preprocesa, AFileEndingOnABankRecordFails) {
    EXPECT_FALSE(preprocesa({bankRecord(0x4000), intelRecord(0, 0, {1}), bankRecord(0x5000)}));
    EXPECT_EQ(screen.boxes(), std::vector<std::string>{"Error en Preprocesado del fichero"});
    EXPECT_FALSE(screen.files.isOpen(1));
}

TEST_F(Preprocesa, AMissingFileFails) {
    PreprocessPanel panel = screen.preprocess();
    EXPECT_FALSE(PreprocesaFile(panel, (screen.folder.path() / "none.hex").string()));
    EXPECT_EQ(screen.boxes(), std::vector<std::string>{"Error en Preprocesado del fichero"});
    EXPECT_EQ(screen.acaba2Calls, 0);
}

TEST_F(Preprocesa, AnEmptyFileFailsOnTheReadPastItsEnd) {
    EXPECT_FALSE(preprocesaText(""));
    EXPECT_EQ(screen.boxes(), std::vector<std::string>{"Error en Preprocesado del fichero"});
}

TEST_F(Preprocesa, AModelWithoutAMessageListReadsNoRecords) {
    screen.es_serie_w = kFalse;
    screen.es_serie_n = kTrue;
    EXPECT_FALSE(preprocesa({bankRecord(0x4000), intelRecord(0, 0, {1}), endRecord()}));
    EXPECT_EQ(screen.boxes(), std::vector<std::string>{"Error en Preprocesado del fichero"});

    screen.dialogs.clear();
    screen.mensajes = {control(0x55)};
    EXPECT_TRUE(preprocesa({bankRecord(0x4000), intelRecord(0, 0, {1}), endRecord()}));
    expectMessages(screen.mensajes, {control(0x55), control(0x67)});
}

TEST_F(Preprocesa, TheTr8200ReadsItsRecordsToo) {
    screen.es_serie_w = kFalse;
    screen.es_tr8200 = kTrue;
    ASSERT_TRUE(preprocesa({bankRecord(0x4000), intelRecord(0, 0, {1}), endRecord()}));
    EXPECT_EQ(screen.mensajes.size(), 5u);
}

TEST_F(Preprocesa, TheListIsRebuiltFromNothing) {
    screen.mensajes.assign(40, control(0x99));
    ASSERT_TRUE(preprocesa({bankRecord(0x4000), intelRecord(0, 0, {1}), endRecord()}));
    EXPECT_EQ(screen.mensajes.size(), 5u);
}

TEST_F(Preprocesa, ItYieldsToTheEventsOnceALine) {
    YieldCounter counter;
    screen.pump.add(counter);
    std::vector<std::string> lines = {bankRecord(0x4000)};
    for (const std::string& l : dataRecords(0, test::patternBytes(0, 160))) lines.push_back(l);
    lines.push_back(endRecord());
    ASSERT_TRUE(preprocesa(lines));
    // The first two lines are read before the loop; each later line yields.
    EXPECT_EQ(counter.count, static_cast<int>(lines.size()) - 2);
    EXPECT_EQ(screen.pump.now(), 0);  // yielding takes no time
    screen.pump.remove(counter);
}

}  // namespace
}  // namespace fc
