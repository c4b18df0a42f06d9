// DameMACAddress on each real engine: the numbers it gives, the rows it
// writes, and what it does when the database fails.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <thread>

#include "mac/dame_mac_address.h"
#include "mac/mac_register.h"
#include "mac/mac_tables.h"
#include "mac_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class MacAllocation : public ::testing::TestWithParam<std::string> {};

// The engine's environment, counting the connections the allocation opens:
// each try of the allocation opens one.
class CountingOdbc : public OdbcEnvironment {
  public:
    explicit CountingOdbc(OdbcEnvironment& engine) : engine_(engine) {}
    std::unique_ptr<OdbcConnection> openConnection(const std::string& source) override {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            ++opened_;
        }
        changed_.notify_all();
        return engine_.openConnection(source);
    }
    // Returns once `count` connections have been asked for.
    void waitForOpened(int count) {
        std::unique_lock<std::mutex> lock(mutex_);
        changed_.wait(lock, [&] { return opened_ >= count; });
    }
    int opened() {
        std::lock_guard<std::mutex> lock(mutex_);
        return opened_;
    }

  private:
    OdbcEnvironment& engine_;
    std::mutex mutex_;
    std::condition_variable changed_;
    int opened_ = 0;
};

void setCounter(OdbcConnection& bd, long long value) {
    bd.execute("UPDATE " + bd.quote(kTablaContadores) + " SET " + bd.quote(kColumnaContador) +
               " = " + std::to_string(value));
}

TEST_P(MacAllocation, AFirstAllocationWithTheCounterAtZeroGives02C0DE000001) {
    FC_MAC_STORE(store, GetParam());
    MacRig rig(*store);
    EXPECT_EQ(DameMACAddress(rig.m), "02C0DE000001");
    auto bd = store->open();
    EXPECT_EQ(LeeContador(*bd), 1);
    auto rows = UltimasDirecciones(*bd, 10);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].Direccio_MAC, "02-C0-DE-00-00-01");
    EXPECT_EQ(rows[0].Numero_serie, " ");
    EXPECT_EQ(rows[0].Departamento, " ");
    EXPECT_THAT(rows[0].fecha_actual, StartsWith("2005-03-21 10:42:00"));
    EXPECT_THAT(rig.dialogs.texts(), IsEmpty());
    EXPECT_FALSE(rig.m.bd_mac);  // closed within the call
}

TEST_P(MacAllocation, CounterAtFFFFFEGives02C0DEFFFFFFAndTheNextCallAnEmptyResult) {
    FC_MAC_STORE(store, GetParam());
    setCounter(*store->open(), 0xFFFFFE);
    MacRig rig(*store);
    EXPECT_EQ(DameMACAddress(rig.m), "02C0DEFFFFFF");
    EXPECT_EQ(DameMACAddress(rig.m), "");
    auto bd = store->open();
    EXPECT_EQ(LeeContador(*bd), 0x1000000);
    auto rows = UltimasDirecciones(*bd, 10);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].Direccio_MAC, "02-C0-DE-FF-FF-FF");
}

TEST_P(MacAllocation, PastTheLastNumberTheCounterGoesOnRisingAtEachTry) {
    FC_MAC_STORE(store, GetParam());
    setCounter(*store->open(), 0xFFFFFF);
    MacRig rig(*store);
    EXPECT_EQ(DameMACAddress(rig.m), "");
    EXPECT_EQ(DameMACAddress(rig.m), "");
    auto bd = store->open();
    EXPECT_EQ(LeeContador(*bd), 0x1000001);
    EXPECT_THAT(TodasLasDirecciones(*bd), IsEmpty());
    EXPECT_THAT(rig.dialogs.texts(), IsEmpty());
}

TEST_P(MacAllocation, RowsAreAddedWithoutLookingForAnEarlierRowOfTheSameAddress) {
    FC_MAC_STORE(store, GetParam());
    {
        auto bd = store->open();
        bd->execute("INSERT INTO " + bd->quote(kTablaDetalleMac) + " (" +
                        bd->quote("Direccio_MAC") + ", " + bd->quote("Numero_serie") +
                        ") VALUES (?, ?)",
                    {std::string("02-C0-DE-00-00-01"), std::string("4711")});
    }
    MacRig rig(*store);
    EXPECT_EQ(DameMACAddress(rig.m), "02C0DE000001");
    auto bd = store->open();
    auto rows = UltimasDirecciones(*bd, 10);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].Direccio_MAC, "02-C0-DE-00-00-01");
    EXPECT_EQ(rows[1].Direccio_MAC, "02-C0-DE-00-00-01");
    std::vector<std::string> serials{rows[0].Numero_serie, rows[1].Numero_serie};
    std::sort(serials.begin(), serials.end());
    EXPECT_THAT(serials, ElementsAre(" ", "4711"));
}

TEST_P(MacAllocation, AFaultAtTheRegisterLeavesTheCounterOneHigherAndNoRow) {
    FC_MAC_STORE(store, GetParam());
    {
        auto bd = store->open();
        bd->execute("ALTER TABLE " + bd->quote(kTablaDetalleMac) + " RENAME TO " +
                    bd->quote("Detalle MAC aparte"));
    }
    MacRig rig(*store);
    EXPECT_THROW(DameMACAddress(rig.m), ProgramEnd);
    // The notice, then the main screen unloaded; no other box.
    EXPECT_THAT(rig.dialogs.modals, ElementsAre("frmAvisoErrores"));
    EXPECT_TRUE(rig.mainUnloaded);
    EXPECT_THAT(rig.dialogs.texts(), IsEmpty());
    auto bd = store->open();
    EXPECT_EQ(LeeContador(*bd), 1);
    auto rows = bd->query("SELECT COUNT(*) FROM " + bd->quote("Detalle MAC aparte"));
    EXPECT_EQ(rows.at(0).at(0), "0");
}

TEST_P(MacAllocation, ALockedCounterIsTriedAgainUntilItIsFree) {
    FC_MAC_STORE(store, GetParam());
    MacRig rig(*store);
    CountingOdbc counting(store->odbc);
    MacModule m{rig.c, counting, store->sourceWithShortWaits(), nullptr, nullptr};
    auto holder = store->open();
    holder->begin();
    setCounter(*holder, 41);  // holds the row's lock until the commit below
    // The lock is let go once the allocation has met it and tried again.
    std::thread release([&holder, &counting] {
        counting.waitForOpened(2);
        holder->commit();
    });
    std::string mac = DameMACAddress(m);
    release.join();
    // Only the holder's number can have been read: every earlier try failed.
    EXPECT_EQ(mac, "02C0DE00002A");
    EXPECT_GE(counting.opened(), 2);
    EXPECT_THAT(rig.dialogs.texts(), IsEmpty());
    EXPECT_EQ(LeeContador(*store->open()), 42);
}

TEST_P(MacAllocation, ALockedCounterIsTheOdbcFailure40002) {
    FC_MAC_STORE(store, GetParam());
    MacRig rig(*store);
    auto holder = store->open();
    holder->begin();
    setCounter(*holder, 41);
    rig.m.bd_mac = store->odbc.openConnection(store->sourceWithShortWaits());
    try {
        TomaNumeroMac(rig.m);
        FAIL() << "the locked counter should have failed";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), err::kOdbcFailure);
        // SQLite: busy (native error 5); PostgreSQL: lock not available.
        EXPECT_THAT(error.description(),
                    GetParam() == "SQLite" ? HasSubstr("(5)") : HasSubstr("55P03"));
    }
    holder->rollback();
}

TEST_P(MacAllocation, AnErrorOtherThanTheDatabasesEndsTheProgramWithItsNumber) {
    FC_MAC_STORE(store, GetParam());
    {
        auto bd = store->open();
        bd->execute("DELETE FROM " + bd->quote(kTablaContadores));
    }
    MacRig rig(*store);
    try {
        DameMACAddress(rig.m);
        FAIL() << "the program should have ended";
    } catch (const ProgramEnd& end) {
        EXPECT_EQ(end.exitStatus, kFinPorBaseMac);
    }
    EXPECT_THAT(rig.dialogs.texts(),
                ElementsAre("Problema al obtener la MAC, error: 3021 No current record"));
    EXPECT_FALSE(rig.mainUnloaded);
    EXPECT_FALSE(rig.m.bd_mac);
}

TEST_P(MacAllocation, TheDatabaseErrorsOfTheDriverAreRuntimeError40002) {
    FC_MAC_STORE(store, GetParam());
    auto bd = store->open();
    try {
        bd->execute("SELECT * FROM " + bd->quote("no such table"));
        FAIL() << "the query should have failed";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), err::kOdbcFailure);
        EXPECT_THAT(error.description(), HasSubstr("no such table"));
    }
}

TEST_P(MacAllocation, IdentifiersAreQuotedWithTheDriversDoubleQuotes) {
    FC_MAC_STORE(store, GetParam());
    EXPECT_EQ(store->open()->quote(kTablaDetalleMac), "\"Detalle MAC\"");
}

INSTANTIATE_TEST_SUITE_P(Engines, MacAllocation, ::testing::ValuesIn(macEngines()),
                         [](const auto& info) { return info.param; });

}  // namespace
}  // namespace fc::test
