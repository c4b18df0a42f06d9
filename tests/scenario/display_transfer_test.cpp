// The display image's transfer on the virtual clock, through the simulated
// driver's files: whole loads and their failures, the transmit file, the
// CRC and the answers to the questions.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "display/tx_records.h"
#include "support/display_rig.h"

namespace fc::test {
namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> txtemp(DisplayRig& rig) {
    return linesOf(rig.read(rig.home.path() / "txtemp.txt"));
}

bool isQuestion(const std::string& record) {
    return record.substr(2, 4) == "P000";
}

int questions(const std::vector<std::string>& records) {
    int n = 0;
    for (const std::string& r : records) n += isQuestion(r) ? 1 : 0;
    return n;
}

void loadOverEthernet(DisplayRig& rig, int dataLines) {
    rig.chooseFirmware("disp.hex", displayFirmware(dataLines));
    rig.chooseEthernet();
    rig.load();
}

TEST(DisplayTransfer, AWholeLoadEndsLoadedOkAndLeavesNoDriverBehind) {
    DisplayRig rig;
    loadOverEthernet(rig, 250);
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded OK");
    EXPECT_EQ(rig.label2, (std::vector<std::string>{
                              "Switch on the scale", "Loading file in memory", "File is in memory",
                              "Generating Tx file", "Sending start", "Wait. Erasing",
                              "Loading program", "Waiting checksum", "Loaded OK"}));
    EXPECT_TRUE(rig.boxes().empty());
    EXPECT_EQ(rig.driver->driver().commandsTaken(), "sSRsSG");
    EXPECT_FALSE(rig.driver->running());
    EXPECT_FALSE(rig.driver->holdsEvent());
    const sim::GraphicDisplay& display = rig.driver->driver().display();
    EXPECT_EQ(display.records(), 126);
    EXPECT_EQ(display.questions(), 2);
    EXPECT_EQ(display.expectedCrc(), rig.form->crc_imagen);
    EXPECT_EQ(sim::GraphicDisplay::crcOf(display.image()), rig.form->crc_imagen);
    EXPECT_FALSE(rig.form->Barra.visible());
    EXPECT_FALSE(rig.form->CmdStop.visible());
    EXPECT_TRUE(rig.form->cmdAdelante.enabled());
    EXPECT_TRUE(rig.form->Frame2.enabled());
}

TEST(DisplayTransfer, ASerialLoadTellsTheDriverItsPortAndSpeed) {
    DisplayRig rig;
    rig.chooseFirmware("disp.hex", displayFirmware(30));
    rig.chooseSerial(2);
    operatorSelectText(*rig.form, "cmbvelocidades", "57600");
    rig.load();
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded OK");
    const auto& switches = rig.driver->driver().switches();
    EXPECT_NE(std::find(switches.begin(), switches.end(), "-p COM2"), switches.end());
    EXPECT_NE(std::find(switches.begin(), switches.end(), "-v 57600"), switches.end());
    EXPECT_NE(std::find(switches.begin(), switches.end(), "-m 0"), switches.end());
}

TEST(DisplayTransfer, EveryLineButTheLastIsFollowedByItsMark) {
    DisplayRig rig;
    loadOverEthernet(rig, 12);
    std::vector<std::string> tx = linesOf(rig.read(rig.korvacom("TX.TXT")));
    ASSERT_EQ(tx.size(), 7u + 1u);
    for (const std::string& line : tx) EXPECT_EQ(line[2], '*') << line;
    EXPECT_EQ(tx.back().substr(2, 11), kPreguntaEnviada);
}

TEST(DisplayTransfer, ADisplayThatRejectsTheCrcEndsLoadedKoWithNoText) {
    DisplayRig rig({}, sim::DisplayFaults{.rejectsCrc = true});
    loadOverEthernet(rig, 40);
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded KO. ERROR");
    EXPECT_EQ(rig.form->Texto.caption(), " ");
    EXPECT_TRUE(rig.boxes().empty());
    EXPECT_FALSE(rig.driver->running());
}

TEST(DisplayTransfer, RxTxtWithAnOldLineCarryingAnotherTagIsIgnored) {
    DisplayRig rig({}, sim::DisplayFaults{.rejectsCrc = true});
    loadOverEthernet(rig, 250);
    std::vector<std::string> rx = linesOf(rig.read(rig.korvacom("RX.TXT")));
    ASSERT_EQ(rx.size(), 2u);
    EXPECT_EQ(rx[0].substr(13, 2), "SI") << "the first question's yes is there";
    EXPECT_EQ(rx[1].substr(13, 2), "NO");
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded KO. ERROR");
}

TEST(DisplayTransfer, CompruebaP0WaitsFor15SecondsForItsOwnTagOnly) {
    DisplayRig rig;
    rig.home.write("korvacom/RX.TXT", "00P0000000000SI111111" + std::string(109, '0') + "\r\n");
    const std::string pregunta = registroPregunta("00", "222222");
    bool resultado = true;
    const auto before = rig.pump.now();
    rig.form->CompruebaP0(pregunta, resultado);
    EXPECT_FALSE(resultado);
    EXPECT_GE(rig.pump.now() - before, 15000);
    rig.form->CompruebaP0(registroPregunta("00", "111111"), resultado);
    EXPECT_TRUE(resultado);
}

TEST(DisplayTransfer, AQuestionTheDisplayDeniesEndsWithErrorVerifyingInScalesCpu) {
    DisplayRig rig({}, sim::DisplayFaults{.rejectsQuestions = true});
    loadOverEthernet(rig, 250);
    const std::string texto = rig.form->Texto.caption();
    const std::string error = " ERROR. Error verifying in scale's CPU ";
    ASSERT_GE(texto.size(), error.size());
    EXPECT_EQ(texto.substr(texto.size() - error.size()), error);
    EXPECT_EQ(texto.substr(0, 8), "Message ");
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded KO. ERROR");
    EXPECT_FALSE(rig.driver->running());
}

TEST(DisplayTransfer, ADriverThatStopsMakingProgressEndsWithNoComunicationAfter10Seconds) {
    DisplayRig rig(sim::DriverFaults{.stopAfterLines = 40});
    loadOverEthernet(rig, 250);
    const std::string texto = rig.form->Texto.caption();
    const std::string error = " ERROR. No comunication ";
    ASSERT_GE(texto.size(), error.size());
    EXPECT_EQ(texto.substr(texto.size() - error.size()), error);
    EXPECT_EQ(texto.substr(0, 8), "Message ");
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded KO. ERROR");
}

TEST(DisplayTransfer, NoFinalAnswerWithin15SecondsEndsWithNoChecksum) {
    DisplayRig rig({}, sim::DisplayFaults{.silentAtEnd = true});
    loadOverEthernet(rig, 30);
    EXPECT_EQ(rig.form->Texto.caption(), "ERROR. No checksum ");
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded KO. ERROR");
}

TEST(DisplayTransfer, AFileThatIsNotValidIntelHexGivesFileNotValid) {
    DisplayRig rig;
    rig.chooseFirmware("bad.hex", ":10000000000102030405060708090A0B0C0D0E0F00\r\n:00000001FF\r\n");
    rig.chooseEthernet();
    rig.load();
    ASSERT_EQ(rig.boxes().size(), 2u);
    EXPECT_EQ(rig.boxes()[1], "File not valid");
    EXPECT_EQ(rig.dialogs.boxes()[1].style, 16);
    EXPECT_FALSE(rig.form->Label2.visible());
    EXPECT_TRUE(rig.started.empty());
    EXPECT_EQ(rig.form->fichero_en_memoria, "");
}

TEST(DisplayTransfer, AnEmptyFicheroFirmwareGivesFileNotValidWithTwoBlanks) {
    DisplayRig rig;
    rig.chooseEthernet();
    rig.form->fichero_firmware = "";
    rig.load();
    ASSERT_EQ(rig.boxes().size(), 1u);
    EXPECT_EQ(rig.boxes()[0], "File  not valid");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, 16);
    EXPECT_FALSE(rig.form->Label2.visible());
    EXPECT_FALSE(rig.form->Barra.visible());
    EXPECT_FALSE(rig.form->Texto.visible());
    EXPECT_TRUE(rig.started.empty());
}

TEST(DisplayTransfer, ARepeatLoadOfOneFileSkipsReadingAndCrcButGetsFreshTags) {
    DisplayRig rig;
    loadOverEthernet(rig, 20);
    ASSERT_EQ(rig.form->Label2.caption(), "Loaded OK");
    const std::string firstTag = rig.form->id_p0;
    const Long crc = rig.form->crc_imagen;
    EXPECT_TRUE(std::filesystem::exists(rig.currentFolder.path() / "mirl"))
        << "the trace is in the current folder";
    std::filesystem::remove("mirl");
    rig.label2.clear();
    rig.load();
    EXPECT_EQ(rig.form->Label2.caption(), "Loaded OK");
    EXPECT_EQ(std::count(rig.label2.begin(), rig.label2.end(), "Loading file in memory"), 0);
    EXPECT_FALSE(std::filesystem::exists("mirl")) << "the CRC was computed again";
    EXPECT_EQ(rig.form->crc_imagen, crc);
    EXPECT_NE(rig.form->id_p0, firstTag);
    EXPECT_EQ(rig.driver->launches(), 2);
}

TEST(DisplayTransfer, TheChecksumLeavesItsTraceInMirlEvery16Bytes) {
    DisplayRig rig;
    for (std::size_t i = 0; i < 100; ++i) rig.form->memoria[i] = static_cast<Byte>(i);
    rig.form->memoria[0xFF00] = 0x12;  // beyond the bytes the CRC covers
    Long crc = -1;
    rig.form->CalculaChecksum(crc);
    std::vector<std::string> trace = linesOf(rig.read("mirl"));
    ASSERT_EQ(trace.size(), 0xFF00u / 16);
    EXPECT_EQ(trace.back(), std::to_string(crc));
    std::vector<std::uint8_t> image(rig.form->memoria.begin(), rig.form->memoria.end());
    EXPECT_EQ(crc, sim::GraphicDisplay::crcOf(image));
    std::filesystem::remove("mirl");
}

TEST(DisplayTransfer, ACrcBelow10000IsSentWithLeadingZerosToFiveDigits) {
    DisplayRig rig;
    rig.chooseEthernet();
    rig.form->crc_imagen = 815;
    rig.driver->launch();
    bool resultado = false;
    rig.form->ArrancaKorvacom(resultado);
    EXPECT_TRUE(resultado);
    std::vector<std::string> tx = linesOf(rig.read(rig.korvacom("TX.TXT")));
    ASSERT_EQ(tx.size(), 1u);
    EXPECT_EQ(tx[0].substr(0, 18), "00*100SW00815KORVA") << "sent, and marked by the driver";
    EXPECT_EQ(rig.driver->driver().display().expectedCrc(), 815);
}

TEST(DisplayTransferFile, AFileWithFewerThan200LinesHasNoQuestionButTheLast) {
    DisplayRig rig;
    rig.chooseFirmware("disp.hex", displayFirmware(197));  // 198 lines with the end record
    rig.form->GeneraFicheroTx();
    std::vector<std::string> records = txtemp(rig);
    ASSERT_EQ(records.size(), 99u + 1u);
    EXPECT_EQ(questions(records), 1);
    EXPECT_TRUE(isQuestion(records.back()));
    EXPECT_EQ(records.back().substr(15, 6), rig.form->id_p0);
    for (const std::string& r : records) EXPECT_EQ(r.size(), 130u);
}

TEST(DisplayTransferFile, The199thLineMakesRecord99AndItsQuestion) {
    DisplayRig rig;
    rig.chooseFirmware("disp.hex", displayFirmware(198));  // 199 lines
    rig.form->GeneraFicheroTx();
    std::vector<std::string> records = txtemp(rig);
    ASSERT_EQ(records.size(), 100u + 2u);
    EXPECT_TRUE(isQuestion(records[100]));
    EXPECT_TRUE(isQuestion(records[101]));
}

TEST(DisplayTransferFile, AnOddNumberOfLinesGivesALastDataRecordWhoseBFieldIsAllZeros) {
    DisplayRig rig;
    rig.chooseFirmware("disp.hex", displayFirmware(4));  // 5 lines
    rig.form->GeneraFicheroTx();
    std::vector<std::string> records = txtemp(rig);
    ASSERT_EQ(records.size(), 3u + 1u);
    EXPECT_EQ(records[2].substr(0, 12), "00D500000002");
    EXPECT_EQ(records[2].substr(12, 11), ":00000001FF");
    EXPECT_EQ(records[2].substr(55, 2), "  ");
    EXPECT_EQ(records[2].substr(57, 43), std::string(43, '0'));
}

TEST(DisplayTransferFile, Record99sQuestionComesBeforeRecord100) {
    DisplayRig rig;
    operatorSelect(*rig.form, "cmbDirLogica", 12);
    rig.chooseFirmware("disp.hex", displayFirmware(300));
    rig.form->GeneraFicheroTx();
    std::vector<std::string> records = txtemp(rig);
    EXPECT_EQ(records[99].substr(0, 12), "12D500000099");
    EXPECT_EQ(records[100].substr(0, 19), "12P000ASKDG0000" + records[100].substr(15, 4));
    EXPECT_TRUE(isQuestion(records[100]));
    EXPECT_EQ(records[101].substr(0, 12), "12D500000100");
    EXPECT_EQ(questions(records), 2);
}

}  // namespace
}  // namespace fc::test
