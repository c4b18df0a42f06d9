// The simulated network itself: its hosts, the address table, the echo and the
// socket option calls.
#include <gtest/gtest.h>

#include "virtual/virtual_host.h"
#include "virtual/virtual_network.h"
#include "virtual/virtual_pump.h"

namespace fc {
namespace {

const Ipv4 kScaleIp{192, 168, 1, 50};
const VirtualNetwork::Mac kScaleMac{0x00, 0x0A, 0x35, 0x01, 0x02, 0x03};
const VirtualNetwork::Mac kOtherMac{0x00, 0x0A, 0x35, 0xAA, 0xBB, 0xCC};

NeighbourRow rowOf(std::uint32_t interfaceIndex, const Ipv4& ip) {
    NeighbourRow row;
    row.interfaceIndex = interfaceIndex;
    row.ip = ip;
    row.physicalLength = 6;
    row.type = kNeighbourStatic;
    return row;
}

class VirtualNetworkTable : public ::testing::Test {
  protected:
    VirtualPump pump;
    VirtualNetwork net{pump};
    VirtualHost& scale = net.addHost(kScaleIp, kScaleMac);
};

TEST_F(VirtualNetworkTable, AnAnsweredEchoTakesOneRoundTripAndTeachesTheTable) {
    bool answered = false;
    EXPECT_EQ(net.echo(kScaleIp, 1000, answered), NetResult::Done);
    EXPECT_TRUE(answered);
    EXPECT_EQ(pump.nowMicros(), net.roundTrip);
    EXPECT_EQ(net.echoRequests(kScaleIp), 1);
    std::vector<NeighbourRow> rows;
    EXPECT_EQ(net.readNeighbours(rows), NetResult::Done);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].interfaceIndex, 2u);
    EXPECT_EQ(rows[0].ip, kScaleIp);
    EXPECT_EQ(rows[0].physicalLength, 6u);
    EXPECT_EQ(rows[0].type, kNeighbourDynamic);
    EXPECT_TRUE(std::equal(kScaleMac.begin(), kScaleMac.end(), rows[0].physical.begin()));
}

TEST_F(VirtualNetworkTable, AnEchoNoOneAnswersTakesTheWholeTimeOut) {
    bool answered = true;
    scale.setUp(false);
    EXPECT_EQ(net.echo(kScaleIp, 1500, answered), NetResult::Done);
    EXPECT_FALSE(answered);
    EXPECT_EQ(pump.nowMicros(), 1'500'000);
    EXPECT_EQ(net.echo(Ipv4{10, 0, 0, 1}, 1500, answered), NetResult::Done);
    EXPECT_FALSE(answered);
    EXPECT_EQ(pump.nowMicros(), 3'000'000);
    EXPECT_TRUE(net.table().empty());
    EXPECT_EQ(net.echoRequests(kScaleIp), 1);
    EXPECT_EQ(net.echoRequests(Ipv4{10, 0, 0, 1}), 1);
}

TEST_F(VirtualNetworkTable, EchoesAreCountedPerAddress) {
    bool answered = false;
    for (int i = 0; i < 3; ++i) net.echo(kScaleIp, 1000, answered);
    EXPECT_EQ(net.echoRequests(kScaleIp), 3);
    EXPECT_EQ(net.echoRequests(Ipv4{192, 168, 1, 51}), 0);
}

TEST_F(VirtualNetworkTable, AnEchoNotPermittedSendsNothing) {
    net.mayEcho = false;
    bool answered = true;
    EXPECT_EQ(net.echo(kScaleIp, 1000, answered), NetResult::NotPermitted);
    EXPECT_FALSE(answered);
    EXPECT_EQ(net.echoRequests(kScaleIp), 0);
    EXPECT_EQ(pump.nowMicros(), 0);
}

TEST_F(VirtualNetworkTable, TheWorldGoesOnDuringAnEcho) {
    auto udp = net.newUdpTransport();
    ASSERT_EQ(udp->bind(5000), 0);
    scale.sendUdp(7000, 5000, "meanwhile");
    bool answered = false;
    net.echo(Ipv4{10, 0, 0, 1}, 10, answered);
    Datagram d;
    EXPECT_TRUE(udp->receive(d));
}

TEST_F(VirtualNetworkTable, ANewMacUpdatesTheRowInPlace) {
    net.table().push_back(rowOf(2, Ipv4{192, 168, 1, 60}));
    bool answered = false;
    net.echo(kScaleIp, 1000, answered);
    net.table().push_back(rowOf(2, Ipv4{192, 168, 1, 61}));
    scale.setMac(kOtherMac);
    net.echo(kScaleIp, 1000, answered);
    ASSERT_EQ(net.table().size(), 3u);
    EXPECT_EQ(net.table()[1].ip, kScaleIp);
    EXPECT_TRUE(std::equal(kOtherMac.begin(), kOtherMac.end(), net.table()[1].physical.begin()));
}

TEST_F(VirtualNetworkTable, TheSameAddressOnAnotherInterfaceIsARowOfItsOwn) {
    net.table().push_back(rowOf(7, kScaleIp));
    bool answered = false;
    net.echo(kScaleIp, 1000, answered);
    ASSERT_EQ(net.table().size(), 2u);
    EXPECT_EQ(net.table()[0].interfaceIndex, 7u);
    EXPECT_EQ(net.table()[0].type, kNeighbourStatic);
    EXPECT_EQ(net.table()[1].interfaceIndex, 2u);
}

TEST_F(VirtualNetworkTable, TheLanCardsIndexIsSettable) {
    net.interfaceIndex = 5;
    bool answered = false;
    net.echo(kScaleIp, 1000, answered);
    ASSERT_EQ(net.table().size(), 1u);
    EXPECT_EQ(net.table()[0].interfaceIndex, 5u);
}

TEST_F(VirtualNetworkTable, DeletingRemovesTheRowOfThatInterfaceAndAddress) {
    net.table().push_back(rowOf(7, kScaleIp));
    net.table().push_back(rowOf(2, kScaleIp));
    EXPECT_EQ(net.deleteNeighbour(rowOf(2, kScaleIp)), NetResult::Done);
    ASSERT_EQ(net.table().size(), 1u);
    EXPECT_EQ(net.table()[0].interfaceIndex, 7u);
    EXPECT_EQ(net.deleteNeighbour(rowOf(2, kScaleIp)), NetResult::Failed);
}

TEST_F(VirtualNetworkTable, DeletingNotPermittedLeavesTheTable) {
    net.table().push_back(rowOf(2, kScaleIp));
    net.mayDeleteNeighbours = false;
    EXPECT_EQ(net.deleteNeighbour(rowOf(2, kScaleIp)), NetResult::NotPermitted);
    EXPECT_EQ(net.table().size(), 1u);
}

TEST_F(VirtualNetworkTable, ReadingGivesACopy) {
    net.table().push_back(rowOf(2, kScaleIp));
    std::vector<NeighbourRow> rows;
    net.readNeighbours(rows);
    rows.clear();
    EXPECT_EQ(net.table().size(), 1u);
}

class VirtualNetworkOptions : public VirtualNetworkTable {
  protected:
    std::unique_ptr<TcpTransport> socket() {
        auto transport = net.newTcpTransport();
        transport->startConnect(kScaleIp, 9100);
        return transport;
    }
};

TEST_F(VirtualNetworkOptions, TheFourKnownPairsSucceedOnALiveHandle) {
    auto transport = socket();
    int h = transport->handle();
    EXPECT_EQ(net.setsockopt(h, sockopt::kSolSocket, sockopt::kSoRcvbuf, 0), 0);
    EXPECT_EQ(net.setsockopt(h, sockopt::kSolSocket, sockopt::kSoSndbuf, 0), 0);
    EXPECT_EQ(net.setsockopt(h, sockopt::kSolSocket, sockopt::kSoDontlinger, 0), 0);
    EXPECT_EQ(net.setsockopt(h, sockopt::kIpprotoTcp, sockopt::kTcpNodelay, 1), 0);
    auto udp = net.newUdpTransport();
    ASSERT_EQ(udp->bind(0), 0);
    EXPECT_EQ(net.setsockopt(udp->handle(), sockopt::kSolSocket, sockopt::kSoRcvbuf, 0), 0);
}

TEST_F(VirtualNetworkOptions, EveryCallIsRecordedInOrder) {
    auto transport = socket();
    int h = transport->handle();
    net.setsockopt(h, sockopt::kSolSocket, sockopt::kSoRcvbuf, 0);
    net.setsockopt(999, sockopt::kIpprotoTcp, sockopt::kTcpNodelay, 1);
    ASSERT_EQ(net.optionCalls().size(), 2u);
    EXPECT_EQ(net.optionCalls()[0].handle, h);
    EXPECT_EQ(net.optionCalls()[0].level, sockopt::kSolSocket);
    EXPECT_EQ(net.optionCalls()[0].option, sockopt::kSoRcvbuf);
    EXPECT_EQ(net.optionCalls()[0].value, 0);
    EXPECT_EQ(net.optionCalls()[1].handle, 999);
    EXPECT_EQ(net.optionCalls()[1].option, sockopt::kTcpNodelay);
    EXPECT_EQ(net.optionCalls()[1].value, 1);
}

TEST_F(VirtualNetworkOptions, AnUnknownHandleOrPairFails) {
    auto transport = socket();
    int h = transport->handle();
    EXPECT_EQ(net.setsockopt(h + 100, sockopt::kSolSocket, sockopt::kSoRcvbuf, 0), -1);
    EXPECT_EQ(net.setsockopt(h, sockopt::kSolSocket, sockopt::kTcpNodelay, 1), -1);
    EXPECT_EQ(net.setsockopt(h, sockopt::kIpprotoTcp, sockopt::kSoRcvbuf, 0), -1);
    EXPECT_EQ(net.setsockopt(h, 1234, sockopt::kSoRcvbuf, 0), -1);
    transport->close();
    EXPECT_EQ(net.setsockopt(h, sockopt::kSolSocket, sockopt::kSoRcvbuf, 0), -1);
}

TEST_F(VirtualNetworkOptions, RefusingMakesEveryCallFailAndStillRecordsIt) {
    auto transport = socket();
    net.refuseOptions(true);
    EXPECT_EQ(net.setsockopt(transport->handle(), sockopt::kSolSocket, sockopt::kSoRcvbuf, 0), -1);
    EXPECT_EQ(net.optionCalls().size(), 1u);
    net.refuseOptions(false);
    EXPECT_EQ(net.setsockopt(transport->handle(), sockopt::kSolSocket, sockopt::kSoRcvbuf, 0), 0);
}

}  // namespace
}  // namespace fc
