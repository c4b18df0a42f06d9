// The Ethernet load from end to end on the test bed: firmcast-batch in the
// loader's namespace, simulated scales in theirs, each with a MAC of its own,
// and the MAC register in a real database through ODBC. One scale is switched
// off, one reports a wrong checksum, one is good; the two that took the load
// get new addresses from the counter, take them as their interfaces' own,
// and have their serial numbers written against them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "load_bed_fixture.h"
#include "support/first_line_process.h"

namespace fc::netbed {
namespace {

using ::testing::HasSubstr;

class EthernetLoadOnBed : public LoadOnBed {
  protected:
    test::BatchResult load(const std::vector<std::string>& serials) {
        std::vector<std::string> args{"--model", "0", "--ethernet", "--level", "2", "--file", file};
        for (const std::string& s : serials) {
            args.push_back("--serial");
            args.push_back(s);
        }
        return runLoader(args);
    }
};

TEST_F(EthernetLoadOnBed, ThreeScalesOneOffOneWrongOneGoodAgainstSqlite) {
    ASSERT_GE(bed.scales.size(), 3u);
    std::string whyNot;
    auto store = test::MacStore::make("SQLite", whyNot);
    if (!store)
        GTEST_SKIP() << "SQLite is not available here: " << whyNot;
    prepareHome(*store, {bed.scales[0], bed.scales[1], bed.scales[2]});
    ASSERT_TRUE(run("ip -n " + bed.scales[0].ns + " link set dev " + kScaleInterface + " down"));
    FirstLineProcess wrong(scaleSim(bed.scales[1], {"--wrong-checksum"}));
    FirstLineProcess good(scaleSim(bed.scales[2], {}));
    ASSERT_EQ(good.firstLine(), "listening on 3000");

    test::BatchResult result = load({"SN-WRONG", "SN-GOOD"});
    EXPECT_EQ(result.status, 1) << result.said();
    EXPECT_THAT(result.out, HasSubstr("scale 1: " + text(bed.scales[0].ip) + " failed: 1\n"));
    EXPECT_THAT(result.out, HasSubstr("scale 2: " + text(bed.scales[1].ip) +
                                      " failed: Scale 2 Checksum Error\n"));
    EXPECT_THAT(result.out,
                HasSubstr("scale 3: " + text(bed.scales[2].ip) + " ok: Scale 3 loaded OK\n"));
    EXPECT_THAT(result.out, ::testing::Not(HasSubstr("MAC address not valid")));

    // The counter gave 1 to the scale with the wrong checksum, 2 to the good one.
    auto first = registerRow(*store, "02-C0-DE-00-00-01");
    auto second = registerRow(*store, "02-C0-DE-00-00-02");
    ASSERT_EQ(first.size(), 1u);
    ASSERT_EQ(second.size(), 1u);
    EXPECT_EQ(first[0][0], "SN-WRONG");
    EXPECT_EQ(second[0][0], "SN-GOOD");
    EXPECT_EQ(second[0][1], "ENGINEER");
    EXPECT_EQ(learntMac(bed.scales[2]), "02:c0:de:00:00:02");
    EXPECT_EQ(learntMac(bed.scales[1]), "02:c0:de:00:00:01");
}

TEST_F(EthernetLoadOnBed, AGoodScaleGetsItsMacAndRecordFromPostgresql) {
    std::string whyNot;
    auto store = test::MacStore::make("PostgreSQL", whyNot);
    if (!store)
        GTEST_SKIP() << "PostgreSQL is not available here: " << whyNot;
    prepareHome(*store, {bed.scales[0]});
    FirstLineProcess good(scaleSim(bed.scales[0], {}));
    ASSERT_EQ(good.firstLine(), "listening on 3000");
    test::BatchResult result = load({"SN-PG"});
    EXPECT_EQ(result.status, 0) << result.said();
    EXPECT_THAT(result.out,
                HasSubstr("scale 1: " + text(bed.scales[0].ip) + " ok: Scale 1 loaded OK\n"));
    auto row = registerRow(*store, "02-C0-DE-00-00-01");
    ASSERT_EQ(row.size(), 1u);
    EXPECT_EQ(row[0][0], "SN-PG");
    EXPECT_EQ(learntMac(bed.scales[0]), "02:c0:de:00:00:01");
}

}  // namespace
}  // namespace fc::netbed
