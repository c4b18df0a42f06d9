#include <gtest/gtest.h>

#include <linux/capability.h>
#include <net/if.h>

#include "bed_fixture.h"
#include "platform/linux/neighbour_table.h"
#include "without_capability.h"

namespace fc::netbed {
namespace {

using NeighbourTable = BedTest;

// An address on the loader's LAN that no scale of the bed uses.
const Ipv4 kUnusedAddress{10, 77, 0, 200};

// A scale's MAC as its new boot loader might have it.
const Mac kChangedMac{0x02, 0x46, 0x43, 0x00, 0x01, 0x99};

// A second LAN card of the loader: one end of a veth pair of its own.
class SecondInterface {
  public:
    static constexpr const char* kName = "fcdup0";

    SecondInterface() {
        run(std::string("ip link delete ") + kName + " 2>/dev/null");
        EXPECT_TRUE(run(std::string("ip link add ") + kName + " type veth peer name fcdup1"));
        EXPECT_TRUE(run(std::string("ip link set dev ") + kName + " up"));
        EXPECT_TRUE(run("ip link set dev fcdup1 up"));
    }
    ~SecondInterface() { run(std::string("ip link delete ") + kName); }
    SecondInterface(const SecondInterface&) = delete;
    SecondInterface& operator=(const SecondInterface&) = delete;
};

TEST_F(NeighbourTable, AnsweredScaleIsInTheTableWithItsMac) {
    const BedScale& scale = bed.scales[0];
    ASSERT_TRUE(rowsOf(scale.ip).empty());

    ASSERT_TRUE(echo(scale.ip));

    std::vector<NeighbourRow> rows = rowsOf(scale.ip);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(text(macOf(rows[0])), text(scale.mac));
    EXPECT_EQ(rows[0].physicalLength, 6u);
    EXPECT_EQ(rows[0].physical[6], 0);
    EXPECT_EQ(rows[0].physical[7], 0);
    EXPECT_EQ(rows[0].interfaceIndex, lanIndex());
    EXPECT_EQ(rows[0].type, kNeighbourDynamic);
}

TEST_F(NeighbourTable, UnansweredAddressLeavesNoRow) {
    EXPECT_FALSE(echo(kUnusedAddress, 500));

    EXPECT_TRUE(rowsOf(kUnusedAddress).empty());
}

TEST_F(NeighbourTable, DeletingEveryRowEmptiesTheTable) {
    for (const BedScale& scale : bed.scales) ASSERT_TRUE(echo(scale.ip)) << text(scale.ip);
    std::vector<NeighbourRow> rows = table();
    ASSERT_GE(rows.size(), bed.scales.size());

    for (const NeighbourRow& row : rows)
        EXPECT_EQ(deleteNeighbourEntry(row), NetResult::Done) << text(row.ip);

    EXPECT_TRUE(table().empty());
}

TEST_F(NeighbourTable, ClearingForgetsEveryHostAndTheNextEchoLearnsEachAgain) {
    ASSERT_GE(bed.scales.size(), 2u);
    for (const BedScale& scale : bed.scales) ASSERT_TRUE(echo(scale.ip)) << text(scale.ip);
    for (const BedScale& scale : bed.scales)
        ASSERT_EQ(rowsOf(scale.ip).size(), 1u) << text(scale.ip);

    clearTable();
    for (const BedScale& scale : bed.scales)
        EXPECT_TRUE(rowsOf(scale.ip).empty()) << text(scale.ip);

    for (const BedScale& scale : bed.scales) {
        ASSERT_TRUE(echo(scale.ip)) << text(scale.ip);
        std::vector<NeighbourRow> rows = rowsOf(scale.ip);
        ASSERT_EQ(rows.size(), 1u) << text(scale.ip);
        EXPECT_EQ(text(macOf(rows[0])), text(scale.mac));
    }
}

TEST_F(NeighbourTable, ChangedMacIsSeenAfterClearingAndANewEcho) {
    const BedScale& scale = bed.scales[0];
    ASSERT_TRUE(echo(scale.ip));
    MacChange change(scale, kChangedMac);

    clearTable();
    ASSERT_TRUE(echo(scale.ip));

    std::vector<NeighbourRow> rows = rowsOf(scale.ip);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(text(macOf(rows[0])), text(kChangedMac));
}

TEST_F(NeighbourTable, SameAddressOnTwoInterfacesIsTwoRows) {
    const BedScale& scale = bed.scales[0];
    SecondInterface second;
    const Mac staticMac{0x02, 0x46, 0x43, 0x00, 0x00, 0xfe};
    ASSERT_TRUE(run("ip neigh add " + text(scale.ip) + " lladdr " + text(staticMac) + " dev " +
                    SecondInterface::kName + " nud permanent"));
    ASSERT_TRUE(echo(scale.ip));

    std::vector<NeighbourRow> rows = rowsOf(scale.ip);
    ASSERT_EQ(rows.size(), 2u);
    const std::uint32_t secondIndex = if_nametoindex(SecondInterface::kName);
    const NeighbourRow& learnt = rows[0].interfaceIndex == lanIndex() ? rows[0] : rows[1];
    const NeighbourRow& fixed = rows[0].interfaceIndex == lanIndex() ? rows[1] : rows[0];
    EXPECT_EQ(learnt.interfaceIndex, lanIndex());
    EXPECT_EQ(text(macOf(learnt)), text(scale.mac));
    EXPECT_EQ(learnt.type, kNeighbourDynamic);
    EXPECT_EQ(fixed.interfaceIndex, secondIndex);
    EXPECT_EQ(text(macOf(fixed)), text(staticMac));
    EXPECT_EQ(fixed.type, kNeighbourStatic);

    // A row is found by interface and address together: deleting one keeps the other.
    ASSERT_EQ(deleteNeighbourEntry(fixed), NetResult::Done);
    rows = rowsOf(scale.ip);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].interfaceIndex, lanIndex());
}

TEST_F(NeighbourTable, DeletingARowThatIsGoneFails) {
    const BedScale& scale = bed.scales[0];
    ASSERT_TRUE(echo(scale.ip));
    std::vector<NeighbourRow> rows = rowsOf(scale.ip);
    ASSERT_EQ(rows.size(), 1u);
    ASSERT_EQ(deleteNeighbourEntry(rows[0]), NetResult::Done);

    EXPECT_EQ(deleteNeighbourEntry(rows[0]), NetResult::Failed);
}

TEST_F(NeighbourTable, DeleteWithoutNetAdminIsNotPermittedAndKeepsTheRow) {
    const BedScale& scale = bed.scales[0];
    ASSERT_TRUE(echo(scale.ip));
    std::vector<NeighbourRow> rows = rowsOf(scale.ip);
    ASSERT_EQ(rows.size(), 1u);

    // What the child saw: the table read, then the delete's result.
    int outcome = runWithoutCapability(CAP_NET_ADMIN, [&] {
        std::vector<NeighbourRow> seen;
        if (readNeighbourTable(seen) != NetResult::Done || seen.empty())
            return 100;
        return static_cast<int>(deleteNeighbourEntry(rows[0]));
    });

    EXPECT_EQ(outcome, static_cast<int>(NetResult::NotPermitted));
    EXPECT_EQ(rowsOf(scale.ip).size(), 1u);
}

}  // namespace
}  // namespace fc::netbed
