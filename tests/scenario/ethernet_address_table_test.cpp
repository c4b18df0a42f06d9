// Clearing the PC's address table, the echo, and reading a scale's MAC from
// the table, on the simulated network.
#include <gtest/gtest.h>

#include <string>

#include "ethernet/address_table.h"
#include "ethernet/network_module.h"
#include "virtual/virtual_network.h"
#include "platform/window_timer.h"
#include "support/network_rig.h"
#include "unit/common_fixture.h"

namespace fc {
namespace {

using commontest::CommonRig;
using nettest::scaleIp;
using nettest::scaleIpText;
using nettest::scaleMac;
using nettest::scaleMacText;

struct AddressTableTest : ::testing::Test {
    CommonRig common;
    VirtualNetwork net{common.pump};
    WindowTimer TimerClose{common.pump, "TimerClose"};
    NetworkModule m{common.c, net, TimerClose};

    VirtualHost& addScale(int n) { return net.addHost(scaleIp(n), scaleMac(n)); }

    NeighbourRow row(int interfaceIndex, const Ipv4& ip, const std::array<std::uint8_t, 6>& mac) {
        NeighbourRow r;
        r.interfaceIndex = interfaceIndex;
        r.physicalLength = 6;
        std::copy(mac.begin(), mac.end(), r.physical.begin());
        r.ip = ip;
        r.type = kNeighbourDynamic;
        return r;
    }

    int logEntries() {
        std::string log = commontest::readAll(common.logFile());
        int entries = 0;
        for (size_t at = log.find(std::string(53, '*')); at != std::string::npos;
             at = log.find(std::string(53, '*'), at + 1))
            ++entries;
        return entries;
    }
};

TEST_F(AddressTableTest, APcWithOtherHostsInItsTableLosesAllOfThemAtEachClearing) {
    for (int n = 1; n <= 3; ++n) {
        addScale(n);
        ASSERT_TRUE(HacerPing(m, scaleIpText(n)));
    }
    ASSERT_EQ(net.table().size(), 3u);
    BorrarTablaARP(m, scaleIpText(2));
    EXPECT_TRUE(net.table().empty());
    EXPECT_TRUE(common.dialogs.boxes().empty());
}

TEST_F(AddressTableTest, ClearedHostsAreLearntAgainByTheNextEcho) {
    addScale(1);
    addScale(2);
    HacerPing(m, scaleIpText(1));
    HacerPing(m, scaleIpText(2));
    BorrarTablaARP(m, "");
    std::string mac;
    EXPECT_FALSE(DameMacDeTabla(m, scaleIpText(2), mac));
    ASSERT_TRUE(HacerPing(m, scaleIpText(2)));
    EXPECT_TRUE(DameMacDeTabla(m, scaleIpText(2), mac));
    EXPECT_EQ(mac, scaleMacText(2));
}

TEST_F(AddressTableTest, AnAddressThatExistsTwiceInTheTableGivesTheMacOfTheFirstRow) {
    net.table().push_back(row(2, scaleIp(1), {0x02, 0xC0, 0xDE, 0, 0, 1}));
    net.table().push_back(row(3, scaleIp(1), {0x02, 0xC0, 0xDE, 0, 0, 2}));
    std::string mac;
    EXPECT_TRUE(DameMacDeTabla(m, scaleIpText(1), mac));
    EXPECT_EQ(mac, "02C0DE000001");
}

TEST_F(AddressTableTest, AnIpTextWithLeadingZerosNeverMatchesARow) {
    addScale(1);
    ASSERT_TRUE(HacerPing(m, scaleIpText(1)));
    std::string mac = "stale";
    EXPECT_FALSE(DameMacDeTabla(m, "10.77.0.011", mac));
    EXPECT_EQ(mac, "");
    EXPECT_FALSE(DameMacDeTabla(m, "010.77.0.11", mac));
    EXPECT_TRUE(DameMacDeTabla(m, "10.77.0.11", mac));
}

TEST_F(AddressTableTest, AnEmptyTableGivesFalse) {
    std::string mac = "stale";
    EXPECT_FALSE(DameMacDeTabla(m, scaleIpText(1), mac));
    EXPECT_EQ(mac, "");
}

TEST_F(AddressTableTest, AnEmptyIpTextGivesAnEmptyMacAndFalse) {
    addScale(1);
    HacerPing(m, scaleIpText(1));
    std::string mac = "stale";
    EXPECT_FALSE(DameMacDeTabla(m, "", mac));
    EXPECT_EQ(mac, "");
    EXPECT_FALSE(DameMacPorPing(m, "", mac));
    EXPECT_EQ(mac, "");
    // Nothing was cleared and nothing echoed.
    EXPECT_EQ(net.table().size(), 1u);
    EXPECT_EQ(net.echoRequests(scaleIp(1)), 1);
}

TEST_F(AddressTableTest, DameMacPorPingClearsTheTableThenReadsTheMacLearntByTheEcho) {
    addScale(1);
    net.table().push_back(row(2, scaleIp(1), {0x00, 0x11, 0x22, 0x33, 0x44, 0x55}));
    net.table().push_back(row(2, scaleIp(5), {0x00, 0x11, 0x22, 0x33, 0x44, 0x66}));
    std::string mac;
    EXPECT_TRUE(DameMacPorPing(m, scaleIpText(1), mac));
    EXPECT_EQ(mac, scaleMacText(1));
    ASSERT_EQ(net.table().size(), 1u);
    EXPECT_EQ(net.echoRequests(scaleIp(1)), 1);
}

TEST_F(AddressTableTest, DameMacPorPingSeesAMacChangedSinceTheLastLook) {
    VirtualHost& scale = addScale(1);
    std::string mac;
    ASSERT_TRUE(DameMacPorPing(m, scaleIpText(1), mac));
    scale.setMac({0x02, 0xC0, 0xDE, 0x00, 0x01, 0x23});
    EXPECT_TRUE(DameMacDeTabla(m, scaleIpText(1), mac));
    EXPECT_EQ(mac, scaleMacText(1)) << "the table still holds the old address";
    EXPECT_TRUE(DameMacPorPing(m, scaleIpText(1), mac));
    EXPECT_EQ(mac, "02C0DE000123");
}

TEST_F(AddressTableTest, DameMacPorPingTriesTheEchoThreeTimesThenGivesUp) {
    VirtualHost& scale = addScale(1);
    scale.setUp(false);
    Micros start = common.pump.nowMicros();
    std::string mac = "stale";
    EXPECT_FALSE(DameMacPorPing(m, scaleIpText(1), mac));
    EXPECT_EQ(mac, "");
    EXPECT_EQ(net.echoRequests(scaleIp(1)), 3);
    // Three echoes, each waiting its whole time.
    EXPECT_GE(common.pump.nowMicros() - start, Micros(3) * m.tiempoEco * 1000);
}

TEST_F(AddressTableTest, DameMacPorPingStopsAtTheFirstEchoAnswered) {
    addScale(1);
    std::string mac;
    EXPECT_TRUE(DameMacPorPing(m, scaleIpText(1), mac));
    EXPECT_EQ(net.echoRequests(scaleIp(1)), 1);
}

TEST_F(AddressTableTest, HacerPingEchoesTheAddressAsTheClassicConversionReadsIt) {
    addScale(1);  // 10.77.0.11
    net.addHost(Ipv4{10, 77, 0, 9}, scaleMac(9));
    EXPECT_TRUE(HacerPing(m, "10.77.0.011"));
    EXPECT_EQ(net.echoRequests(Ipv4{10, 77, 0, 9}), 1);
    EXPECT_EQ(net.echoRequests(scaleIp(1)), 0);
}

TEST_F(AddressTableTest, HacerPingOfATextThatIsNoAddressIsFalseWithNoEcho) {
    EXPECT_FALSE(HacerPing(m, "scale"));
    EXPECT_FALSE(HacerPing(m, ""));
}

TEST_F(AddressTableTest, WithoutTheRightToDeleteTheTableStaysAndTheLogSaysSoOnce) {
    addScale(1);
    HacerPing(m, scaleIpText(1));
    net.mayDeleteNeighbours = false;
    BorrarTablaARP(m, "");
    BorrarTablaARP(m, "");
    EXPECT_EQ(net.table().size(), 1u);
    EXPECT_EQ(logEntries(), 1);
    EXPECT_NE(commontest::readAll(common.logFile()).find("BorrarTablaARP"), std::string::npos);
    EXPECT_TRUE(common.dialogs.boxes().empty());
}

TEST_F(AddressTableTest, WithoutTheRightToEchoThePingFailsAndTheLogSaysSoOnce) {
    addScale(1);
    net.mayEcho = false;
    std::string mac;
    EXPECT_FALSE(DameMacPorPing(m, scaleIpText(1), mac));
    EXPECT_FALSE(HacerPing(m, scaleIpText(1)));
    EXPECT_EQ(logEntries(), 1);
    EXPECT_NE(commontest::readAll(common.logFile()).find("HacerPing"), std::string::npos);
    EXPECT_TRUE(common.dialogs.boxes().empty());
}

}  // namespace
}  // namespace fc
