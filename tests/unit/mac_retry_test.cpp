// The allocation's retry of a failing database, on the virtual clock: it
// tries again for as long as it takes, with the program's events running
// between tries (so that the operator can end the program) and a pause that
// grows to one second; the log says once what it waits for; a module with a
// limit hands the failure on once the limit has passed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "common_fixture.h"
#include "mac/dame_mac_address.h"
#include "mac/mac_module.h"
#include "operator/operator_script.h"

namespace fc {
namespace {

using ::testing::HasSubstr;

constexpr const char* kDriverMessage =
    "[unixODBC][Driver Manager]Data source name not found and no default driver specified";

// A database that is never there: each try is a connection asked for, and
// refused as the driver manager refuses it.
class AbsentDatabase : public OdbcEnvironment {
  public:
    explicit AbsentDatabase(Pump& pump) : pump_(pump) {}
    std::unique_ptr<OdbcConnection> openConnection(const std::string&) override {
        triedAt.push_back(pump_.now());
        throw RuntimeError(err::kOdbcFailure, kDriverMessage);
    }
    std::vector<std::int64_t> triedAt;

  private:
    Pump& pump_;
};

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream in(file);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

std::size_t occurrences(const std::string& text, const std::string& what) {
    std::size_t n = 0;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

TEST(MacRetry, ABrokenDatabaseIsTriedAgainWithEventsRunningUntilTheOperatorEndsTheProgram) {
    commontest::CommonRig rig;
    AbsentDatabase database(rig.pump);
    MacModule m{rig.c, database, "MacConnection", nullptr, nullptr};
    OperatorScript operatorAtTheScreen(rig.pump);
    operatorAtTheScreen.at(10'000, "FIN", [] { throw ProgramEnd{0}; });
    EXPECT_THROW(DameMACAddress(m), ProgramEnd);
    EXPECT_TRUE(operatorAtTheScreen.finished());
    EXPECT_EQ(rig.pump.now(), 10'000) << "the end came at the operator's click";
}

TEST(MacRetry, ThePauseBetweenTriesGrowsToOneSecondSoTriesAreFewInAGivenTime) {
    commontest::CommonRig rig;
    AbsentDatabase database(rig.pump);
    MacModule m{rig.c, database, "MacConnection", nullptr, nullptr};
    OperatorScript operatorAtTheScreen(rig.pump);
    operatorAtTheScreen.at(20'000, "FIN", [] { throw ProgramEnd{0}; });
    EXPECT_THROW(DameMACAddress(m), ProgramEnd);
    const auto& at = database.triedAt;
    ASSERT_GE(at.size(), 10u);
    std::vector<std::int64_t> pauses;
    for (std::size_t i = 1; i < at.size(); ++i) pauses.push_back(at[i] - at[i - 1]);
    EXPECT_GE(pauses.front(), 10);
    for (std::size_t i = 1; i < pauses.size(); ++i) {
        EXPECT_GE(pauses[i], pauses[i - 1]) << i;
        EXPECT_LE(pauses[i], 1001) << i;
    }
    EXPECT_GE(pauses.back(), 1000);
    // 10, 20, 40 ... 640 ms, then a second each: about 27 tries in 20 s.
    EXPECT_LE(at.size(), 30u);
}

TEST(MacRetry, TheLogSaysOnceWhatTheAllocationWaitsFor) {
    commontest::CommonRig rig;
    AbsentDatabase database(rig.pump);
    MacModule m{rig.c, database, "MacConnection", nullptr, nullptr};
    OperatorScript operatorAtTheScreen(rig.pump);
    operatorAtTheScreen.at(5'000, "FIN", [] { throw ProgramEnd{0}; });
    EXPECT_THROW(DameMACAddress(m), ProgramEnd);
    ASSERT_GT(database.triedAt.size(), 3u);
    std::string log = contentOf(rig.logFile());
    EXPECT_EQ(occurrences(log, "Waiting for the MAC database: "), 1u) << log;
    EXPECT_THAT(log, HasSubstr(kDriverMessage));
    EXPECT_THAT(log, HasSubstr("DameMACAddress"));
}

TEST(MacRetry, AModuleWithALimitHandsTheFailureOnOnceTheLimitHasPassed) {
    commontest::CommonRig rig;
    AbsentDatabase database(rig.pump);
    MacModule m{rig.c, database, "MacConnection", nullptr, nullptr};
    m.esperaMaximaMs = 3000;
    try {
        DameMACAddress(m);
        ADD_FAILURE() << "an absent database gave an address";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), err::kOdbcFailure);
        EXPECT_EQ(error.description(), kDriverMessage);
    }
    EXPECT_GE(rig.pump.now(), 3000);
    EXPECT_LT(rig.pump.now(), 4100);
    EXPECT_TRUE(rig.dialogs.texts().empty());
}

}  // namespace
}  // namespace fc
