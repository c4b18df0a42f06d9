// The loader's address-table procedures against the scales of the test bed:
// a real neighbour table, real echoes, a real change of a scale's MAC.
#include <gtest/gtest.h>

#include "bed_fixture.h"
#include "ethernet/address_table.h"
#include "ethernet/address_text.h"
#include "loader_world.h"

namespace fc::netbed {
namespace {

// What a scale's new boot loader might answer with.
const Mac kNewMac{0x02, 0xC0, 0xDE, 0x00, 0x04, 0x21};

std::string macText(const Mac& mac) {
    return MacATexto(std::vector<Byte>(mac.begin(), mac.end()), "");
}

class AddressTableOnBed : public BedTest {
  protected:
    void SetUp() override {
        BedTest::SetUp();
        if (!IsSkipped())
            world.m.tiempoEco = kAnsweredTimeoutMs;
    }
    LoaderWorld world;
};

TEST_F(AddressTableOnBed, DameMacPorPingReadsTheScalesMacAfterClearingTheTable) {
    const BedScale& scale = bed.scales[1];
    std::string mac;
    ASSERT_TRUE(DameMacPorPing(world.m, text(scale.ip), mac));
    EXPECT_EQ(mac, macText(scale.mac));
}

TEST_F(AddressTableOnBed, ThePcLosesEveryHostAtAClearingAndLearnsThemAgainByTraffic) {
    for (const BedScale& scale : bed.scales) ASSERT_TRUE(echo(scale.ip)) << text(scale.ip);
    std::string mac;
    ASSERT_TRUE(DameMacPorPing(world.m, text(bed.scales[1].ip), mac));
    EXPECT_TRUE(rowsOf(bed.scales[0].ip).empty());
    EXPECT_TRUE(rowsOf(bed.scales[2].ip).empty());
    EXPECT_EQ(rowsOf(bed.scales[1].ip).size(), 1u);

    ASSERT_TRUE(echo(bed.scales[0].ip));
    EXPECT_TRUE(DameMacDeTabla(world.m, text(bed.scales[0].ip), mac));
    EXPECT_EQ(mac, macText(bed.scales[0].mac));
}

TEST_F(AddressTableOnBed, DameMacPorPingSeesTheMacAScaleHasChangedTo) {
    const BedScale& scale = bed.scales[0];
    std::string mac;
    ASSERT_TRUE(DameMacPorPing(world.m, text(scale.ip), mac));
    ASSERT_EQ(mac, macText(scale.mac));
    MacChange change(scale, kNewMac);
    ASSERT_TRUE(DameMacPorPing(world.m, text(scale.ip), mac));
    EXPECT_EQ(mac, "02C0DE000421");
}

TEST_F(AddressTableOnBed, DameMacDeTablaIsFalseOnceTheTableIsCleared) {
    const BedScale& scale = bed.scales[2];
    ASSERT_TRUE(echo(scale.ip));
    std::string mac;
    ASSERT_TRUE(DameMacDeTabla(world.m, text(scale.ip), mac));
    BorrarTablaARP(world.m, "");
    EXPECT_FALSE(DameMacDeTabla(world.m, text(scale.ip), mac));
    EXPECT_EQ(mac, "");
}

TEST_F(AddressTableOnBed, AnIpTextWithLeadingZerosNeverMatchesTheScalesRow) {
    const BedScale& scale = bed.scales[0];
    ASSERT_TRUE(echo(scale.ip));
    std::string padded = text(scale.ip);
    padded.insert(padded.rfind('.') + 1, "0");
    std::string mac;
    EXPECT_FALSE(DameMacDeTabla(world.m, padded, mac));
    EXPECT_TRUE(DameMacDeTabla(world.m, text(scale.ip), mac));
}

TEST_F(AddressTableOnBed, DameMacPorPingGivesUpOnAnAddressNobodyAnswers) {
    world.m.tiempoEco = 300;
    std::string mac = "stale";
    EXPECT_FALSE(DameMacPorPing(world.m, "10.77.0.200", mac));
    EXPECT_EQ(mac, "");
}

}  // namespace
}  // namespace fc::netbed
