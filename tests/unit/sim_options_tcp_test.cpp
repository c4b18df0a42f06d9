// The simulator program's TCP mode options.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sim/sim_options.h"

namespace fc {
namespace {

bool parse(std::vector<std::string> words, SimOptions& out, std::string& error) {
    words.insert(words.begin(), "firmcast-sim");
    std::vector<char*> argv;
    for (auto& w : words) argv.push_back(w.data());
    return parseSimOptions(static_cast<int>(argv.size()), argv.data(), out, error);
}

TEST(SimOptionsTcp, WithoutTcpTheSerialModeStays) {
    SimOptions o;
    std::string error;
    ASSERT_TRUE(parse({"--device", "banked"}, o, error)) << error;
    EXPECT_EQ(o.tcpPort, -1);
}

TEST(SimOptionsTcp, TakesThePortThePaceTheBufferAndTheFaults) {
    SimOptions o;
    std::string error;
    ASSERT_TRUE(parse({"--tcp", "3000", "--read-rate", "1500.5", "--receive-buffer", "512",
                       "--stop-reading-after", "10", "--close-after", "20", "--reset-after", "30",
                       "--log", "x.log"},
                      o, error))
        << error;
    EXPECT_EQ(o.tcpPort, 3000);
    EXPECT_DOUBLE_EQ(o.readRate, 1500.5);
    EXPECT_EQ(o.receiveBuffer, 512);
    EXPECT_EQ(o.tcpFaults.stopReadingAfter, 10);
    EXPECT_EQ(o.tcpFaults.closeAfter, 20);
    EXPECT_EQ(o.tcpFaults.resetAfter, 30);
    EXPECT_EQ(o.tcpFaults.switchOffAfter, -1);
    EXPECT_EQ(o.logPath, "x.log");
}

TEST(SimOptionsTcp, PortZeroMeansAnyFreePort) {
    SimOptions o;
    std::string error;
    ASSERT_TRUE(parse({"--tcp", "0"}, o, error)) << error;
    EXPECT_EQ(o.tcpPort, 0);
}

TEST(SimOptionsTcp, BadValuesAreRefused) {
    for (std::vector<std::string> words :
         std::vector<std::vector<std::string>>{{"--tcp", "65536"},
                                               {"--tcp", "-1"},
                                               {"--tcp", "x"},
                                               {"--read-rate", "-5"},
                                               {"--read-rate", "fast"},
                                               {"--receive-buffer", "0"},
                                               {"--close-after", "-2"},
                                               {"--reset-after", "1k"},
                                               {"--stop-reading-after"}}) {
        SimOptions o;
        std::string error;
        EXPECT_FALSE(parse(words, o, error)) << words[0];
        EXPECT_FALSE(error.empty()) << words[0];
    }
}

TEST(SimOptionsTcp, TheUsageTellsTheTcpMode) {
    std::string usage = simUsage();
    for (const char* option : {"--tcp PORT", "--read-rate", "--receive-buffer",
                               "--stop-reading-after", "--close-after", "--reset-after"})
        EXPECT_NE(usage.find(option), std::string::npos) << option;
}

TEST(SimOptionsTcp, TakesTheEthernetScaleAndItsFaults) {
    SimOptions o;
    std::string error;
    ASSERT_TRUE(parse(
        {"--tcp", "3000", "--device", "ethernet-scale", "--erase-ms", "500", "--stop-reading-at",
         "7", "--fail-at", "4:0xA7", "--wrong-checksum", "--silent-erase", "--split-answers"},
        o, error))
        << error;
    EXPECT_EQ(o.kind, "ethernet-scale");
    EXPECT_EQ(o.tcpPort, 3000);
    EXPECT_EQ(o.eraseMs, 500);
    EXPECT_EQ(o.scaleFaults.stopReadingAt, 7);
    EXPECT_EQ(o.scaleFaults.failAt, 4);
    EXPECT_EQ(o.scaleFaults.errorNumber, 0xA7);
    EXPECT_TRUE(o.scaleFaults.wrongChecksum);
    EXPECT_TRUE(o.scaleFaults.silentErase);
    EXPECT_TRUE(o.scaleFaults.splitAnswers);
    EXPECT_FALSE(o.scaleFaults.refuseConnections);
}

TEST(SimOptionsTcp, TheEthernetScaleKeepsItsFaultsOffUnlessAsked) {
    SimOptions o;
    std::string error;
    ASSERT_TRUE(parse({"--tcp", "0", "--device", "ethernet-scale"}, o, error)) << error;
    EXPECT_EQ(o.scaleFaults.stopReadingAt, -1);
    EXPECT_EQ(o.scaleFaults.failAt, -1);
    EXPECT_FALSE(o.scaleFaults.wrongChecksum);
    EXPECT_FALSE(o.scaleFaults.silentErase);
    EXPECT_FALSE(o.scaleFaults.splitAnswers);
}

TEST(SimOptionsTcp, TheEthernetScaleRefusesBadValuesAndNeedsAPort) {
    for (std::vector<std::string> words : std::vector<std::vector<std::string>>{
             {"--device", "ethernet-scale"},
             {"--tcp", "0", "--device", "ethernet-scale", "--fail-at", "4"},
             {"--tcp", "0", "--device", "ethernet-scale", "--fail-at", "4:256"},
             {"--tcp", "0", "--device", "ethernet-scale", "--stop-reading-at", "-1"}}) {
        SimOptions o;
        std::string error;
        EXPECT_FALSE(parse(words, o, error)) << words.back();
        EXPECT_FALSE(error.empty()) << words.back();
    }
    for (const char* option : {"ethernet-scale", "--stop-reading-at", "--fail-at",
                               "--wrong-checksum", "--silent-erase", "--split-answers"})
        EXPECT_NE(simUsage().find(option), std::string::npos) << option;
}

}  // namespace
}  // namespace fc
