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

#include "bed_fixture.h"
#include "integration/batch_run.h"
#include "mac/mac_tables.h"
#include "support/ethernet_rig.h"
#include "support/first_line_process.h"
#include "support/mac_store.h"
#include "support/scenario_rig.h"

namespace fc::netbed {
namespace {

using ::testing::HasSubstr;

constexpr int kScalePort = 3000;

// A simulated Ethernet scale in `scale`'s namespace that takes a MAC it is
// given as its interface's address.
std::vector<std::string> scaleSim(const BedScale& scale, const std::vector<std::string>& faults) {
    std::vector<std::string> options{"--device", "ethernet-scale", "--erase-ms",
                                     "300",      "--interface",    kScaleInterface};
    options.insert(options.end(), faults.begin(), faults.end());
    return simInScale(scale, kScalePort, options);
}

class EthernetLoadOnBed : public BedTest {
  protected:
    void TearDown() override {
        // The bed's scales keep their own MACs and links for the next tests.
        for (const BedScale& scale : bed.scales) {
            run("ip -n " + scale.ns + " link set dev " + kScaleInterface + " address " +
                text(scale.mac));
            run("ip -n " + scale.ns + " link set dev " + kScaleInterface + " up");
        }
        clearTable();
    }

    // config.ini with the bed's scales, and the MAC register as the data
    // source "MacConnection".
    void prepareHome(test::MacStore& store, const std::vector<BedScale>& scales) {
        std::string list =
            "[Balanzas]\r\nNumero=" + std::to_string(scales.size()) + "\r\n[Direcciones]\r\n";
        for (std::size_t i = 0; i < scales.size(); ++i)
            list += "dir" + std::to_string(i + 1) + "=" + text(scales[i].ip) + "\r\n";
        home.write("config.ini", list + "[Puertos]\r\nTx=3000\r\n");
        home.write("odbc.ini", store.iniSection(kOrigenMac));
        file = folder.write("fw.hex", test::EthernetRig::twoBankFile());
    }

    test::BatchResult load(const std::vector<std::string>& serials) {
        std::vector<std::string> args{"--model", "0", "--ethernet", "--level", "2", "--file", file};
        for (const std::string& s : serials) {
            args.push_back("--serial");
            args.push_back(s);
        }
        // The ODBC driver's own allocations, kept past its unloading where no
        // suppression can name them, are not the loader's: the leak checks
        // of the record form run in the tests' own process.
        return test::runBatchProcess(args, {{"FIRMCAST_HOME", home.path().string()},
                                            {"ODBCINI", (home.path() / "odbc.ini").string()},
                                            {"LSAN_OPTIONS", "detect_leaks=0"}});
    }

    // What the register holds for `mac` (with dashes): serial and department.
    std::vector<OdbcRow> registerRow(test::MacStore& store, const std::string& mac) {
        auto bd = store.open();
        return bd->query("SELECT " + bd->quote("Numero_serie") + ", " + bd->quote("Departamento") +
                             " FROM " + bd->quote(kTablaDetalleMac) + " WHERE " +
                             bd->quote("Direccio_MAC") + " = ?",
                         {mac});
    }

    // The scale's MAC as the PC learns it by an echo.
    std::string learntMac(const BedScale& scale) {
        clearTable();
        if (!echo(scale.ip))
            return "no answer";
        auto rows = rowsOf(scale.ip);
        return rows.empty() ? "no row" : text(macOf(rows.front()));
    }

    test::TempFolder home, folder;
    std::string file;
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
