// The simulated display and its driver over the driver's files: the records
// it takes, the answers it gives, the commands and marks of the driver, and
// the simulator program's options for it.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "display/tx_records.h"
#include "sim/graphic_display.h"
#include "sim/korvacom_driver.h"
#include "sim/sim_options.h"
#include "support/intel_hex.h"
#include "support/scenario_rig.h"

namespace fc {
namespace {

using test::TempFolder;

std::string readAll(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string answerOf(sim::GraphicDisplay& d, const std::string& tag) {
    return d.receive(registroPregunta("03", tag)).value_or("none");
}

TEST(SimGraphicDisplay, AnswersAQuestionWithSiAndItsTagWhileTheRecordsComeInOrder) {
    sim::GraphicDisplay d;
    d.receive(registroArranque("03", 0));
    d.receive(registroDatos("03", 0, test::intelRecord(0, 0, {1, 2}), ""));
    std::string a = answerOf(d, "123456");
    EXPECT_EQ(a.size(), 130u);
    EXPECT_EQ(a.substr(0, 4), "03P0");
    EXPECT_EQ(a.substr(13, 2), "SI");
    EXPECT_EQ(a.substr(15, 6), "123456");
    d.receive(registroDatos("03", 5, "", ""));
    EXPECT_EQ(answerOf(d, "000001").substr(13, 2), "NO") << "record 1 never came";
}

TEST(SimGraphicDisplay, AfterTheEndRecordItAnswersByTheImagesCrc) {
    sim::GraphicDisplay d;
    std::vector<std::uint8_t> image(0x10001, 0xFF);
    image[0x10] = 0xAB;
    const auto crc = sim::GraphicDisplay::crcOf(image);
    d.receive(registroArranque("00", crc));
    d.receive(registroDatos("00", 0, test::intelRecord(0x10, 0, {0xAB}), test::endRecord()));
    EXPECT_EQ(answerOf(d, "999999").substr(13, 2), "SI");
    d.receive(registroArranque("00", (crc + 1) & 0xFFFF));
    d.receive(registroDatos("00", 0, test::intelRecord(0x10, 0, {0xAB}), test::endRecord()));
    EXPECT_EQ(answerOf(d, "999999").substr(13, 2), "NO");
}

TEST(SimGraphicDisplay, ItsFaultsDenyOrSilenceTheAnswers) {
    sim::GraphicDisplay silent(sim::DisplayFaults{.silentAtEnd = true});
    silent.receive(registroArranque("00", 0));
    silent.receive(registroDatos("00", 0, test::endRecord(), ""));
    EXPECT_EQ(answerOf(silent, "111111"), "none");
    sim::GraphicDisplay denying(sim::DisplayFaults{.rejectsQuestions = true});
    denying.receive(registroArranque("00", 0));
    EXPECT_EQ(answerOf(denying, "111111").substr(13, 2), "NO");
}

TEST(SimKorvacomDriver, TakesACommandByDeletingCtrlTxtAndMarksOneLineAtATime) {
    TempFolder folder;
    folder.write("CTRL.TXT", "s\r\n");
    folder.write("tx.txt",
                 registroArranque("00", 1) + "\r\n" + registroPregunta("00", "424242") + "\r\n");
    sim::KorvacomDriver driver(folder.path(), {}, {});
    EXPECT_EQ(driver.takeCommand(), 's');
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "CTRL.TXT"));
    EXPECT_TRUE(driver.sendNext());
    std::string tx = readAll(folder.path() / "tx.txt");
    EXPECT_EQ(tx.substr(0, 3), "00*");
    EXPECT_EQ(tx.substr(134, 1), "P") << "the second line is not sent yet";
    EXPECT_TRUE(driver.sendNext());
    EXPECT_FALSE(driver.sendNext()) << "every line is marked";
    std::string rx = readAll(folder.path() / "RX.TXT");
    EXPECT_EQ(rx.substr(15, 6), "424242");
    EXPECT_EQ(rx.substr(130), "\r\n");
}

TEST(SimKorvacomDriver, StopsOnSAndEndsOnG) {
    TempFolder folder;
    folder.write("TX.TXT", registroArranque("00", 1) + "\r\n");
    sim::KorvacomDriver driver(folder.path(), {}, {});
    folder.write("ctrl.txt", "S\r\n");
    EXPECT_EQ(driver.takeCommand(), 'S');
    EXPECT_FALSE(driver.sendNext());
    folder.write("ctrl.txt", "G\r\n");
    EXPECT_EQ(driver.takeCommand(), 'G');
    EXPECT_TRUE(driver.ended());
    EXPECT_EQ(driver.commandsTaken(), "SG");
}

TEST(SimKorvacomDriver, ItsFaultsTakeNothingOrStopAfterSomeLines) {
    TempFolder folder;
    folder.write("ctrl.txt", "s\r\n");
    folder.write("TX.TXT", registroArranque("00", 1) + "\r\n" + registroArranque("00", 2) + "\r\n");
    sim::KorvacomDriver silent(folder.path(), sim::DriverFaults{.neverAnswers = true}, {});
    EXPECT_EQ(silent.takeCommand(), 0);
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "ctrl.txt"));
    sim::KorvacomDriver stopping(folder.path(), sim::DriverFaults{.stopAfterLines = 1}, {});
    EXPECT_EQ(stopping.takeCommand(), 's');
    EXPECT_TRUE(stopping.sendNext());
    EXPECT_FALSE(stopping.sendNext());
    EXPECT_EQ(stopping.linesSent(), 1);
}

TEST(SimOptionsDisplay, TakesTheGraphicDisplayAndItsFaultsOnAPtyOrAPort) {
    std::vector<std::string> words{
        "firmcast-sim",        "--device",        "graphic-display", "--rejects-crc",
        "--rejects-questions", "--silent-at-end", "--tcp",           "0"};
    std::vector<char*> argv;
    for (auto& w : words) argv.push_back(w.data());
    SimOptions o;
    std::string error;
    ASSERT_TRUE(parseSimOptions(static_cast<int>(argv.size()), argv.data(), o, error)) << error;
    EXPECT_EQ(o.kind, "graphic-display");
    EXPECT_TRUE(o.displayFaults.rejectsCrc);
    EXPECT_TRUE(o.displayFaults.rejectsQuestions);
    EXPECT_TRUE(o.displayFaults.silentAtEnd);
    EXPECT_EQ(o.tcpPort, 0);
}

}  // namespace
}  // namespace fc
