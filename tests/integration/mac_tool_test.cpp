// firmcast-macdb as the people who run the line use it, on each real engine.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mac/mac_register.h"
#include "mac/mac_tables.h"
#include "mac_rig.h"
#include "mac_tool_run.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class MacTool : public ::testing::TestWithParam<std::string> {
  protected:
    // Runs the tool on the store through an odbc.ini naming it "Estacion".
    int run(MacStore& store, std::vector<std::string> args) {
        std::ofstream(home / "odbc.ini") << store.iniSection("Estacion");
        args.insert(args.begin(), {"--dsn", "Estacion"});
        return waitMacTool(
            startMacTool(args, {{"ODBCINI", (home / "odbc.ini").string()}}, home / "out"));
    }
    std::vector<std::string> output() const { return linesOf(home / "out"); }

    commontest::ScratchFolder home;
};

TEST_P(MacTool, NextPrintsTheAddressAsTwelveHexDigits) {
    FC_MAC_STORE(store, GetParam());
    EXPECT_EQ(run(*store, {"next"}), 0);
    EXPECT_THAT(output(), ElementsAre("02C0DE000001"));
    EXPECT_THAT(TodasLasDirecciones(*store->open()), ElementsAre("02-C0-DE-00-00-01"));
}

TEST_P(MacTool, NextPrintsNothingAndExits1WhenTheCounterIsExhausted) {
    FC_MAC_STORE(store, GetParam());
    {
        auto bd = store->open();
        bd->execute("UPDATE " + bd->quote(kTablaContadores) + " SET " +
                    bd->quote(kColumnaContador) + " = 16777215");
    }
    EXPECT_EQ(run(*store, {"next"}), 1);
    EXPECT_THAT(output(), IsEmpty());
    EXPECT_EQ(LeeContador(*store->open()), 0x1000000);
}

TEST_P(MacTool, InitRunTwiceKeepsOneCounterRowAndItsValue) {
    FC_MAC_STORE(store, GetParam());
    EXPECT_EQ(run(*store, {"next", "3"}), 0);
    EXPECT_EQ(run(*store, {"init"}), 0);
    auto bd = store->open();
    EXPECT_EQ(bd->query(sqlLeeContador(*bd)).size(), 1u);
    EXPECT_EQ(LeeContador(*bd), 3);
}

TEST_P(MacTool, ShowGivesTheCounterAndTheLastRowsNewestFirst) {
    FC_MAC_STORE(store, GetParam());
    EXPECT_EQ(run(*store, {"next", "3"}), 0);
    EXPECT_EQ(run(*store, {"show", "2"}), 0);
    std::vector<std::string> lines = output();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], "Contador: 3");
    EXPECT_EQ(lines[1].substr(0, 17), "02-C0-DE-00-00-03");
    EXPECT_EQ(lines[2].substr(0, 17), "02-C0-DE-00-00-02");
}

INSTANTIATE_TEST_SUITE_P(Engines, MacTool, ::testing::ValuesIn(macEngines()),
                         [](const auto& info) { return info.param; });

// Without ODBCINI the tool finds "MacConnection" in odbc.ini beside it, in
// the program's folder.
TEST(MacToolOdbcIni, WithoutOdbciniTheProgramFoldersOdbcIniIsUsed) {
    std::string whyNot;
    auto store = MacStore::make("SQLite", whyNot);
    ASSERT_TRUE(store) << whyNot;
    commontest::ScratchFolder home;
    std::ofstream(home / "odbc.ini") << store->iniSection("MacConnection");
    pid_t pid =
        startMacTool({"next"}, {{"ODBCINI", ""}, {"FIRMCAST_HOME", home.str()}}, home / "out");
    EXPECT_EQ(waitMacTool(pid), 0);
    EXPECT_THAT(linesOf(home / "out"), ElementsAre("02C0DE000001"));
}

TEST(MacToolOdbcIni, AMissingDataSourceNamesTheOdbcIniAndWhatPreparesItAndLeavesNoFile) {
    commontest::ScratchFolder home;
    pid_t pid = startMacTool({"next"}, {{"ODBCINI", ""}, {"FIRMCAST_HOME", home.str()}},
                             home / "out", home / "err");
    EXPECT_EQ(waitMacTool(pid), 3);
    EXPECT_THAT(linesOf(home / "out"), IsEmpty());
    std::vector<std::string> err = linesOf(home / "err");
    ASSERT_EQ(err.size(), 2u);
    EXPECT_EQ(err[0], "firmcast-macdb: the data source \"MacConnection\" is not in " +
                          (home / "odbc.ini").string() + ", which does not exist.");
    EXPECT_THAT(err[1], HasSubstr("scripts/prepare-home.sh"));
    EXPECT_FALSE(std::filesystem::exists(home / "odbc.ini"));
}

TEST(MacToolOdbcIni, NextOnAFileThatIsNoDatabaseGivesUpAfterItsWaitWithTheDriversMessage) {
    commontest::ScratchFolder home;
    std::ofstream(home / "MacConnection.db") << "this is no database, but it is long enough";
    std::ofstream(home / "odbc.ini")
        << "[MacConnection]\nDriver=SQLite3\nDatabase=" << (home / "MacConnection.db").string()
        << "\n";
    pid_t pid = startMacTool({"--wait", "1", "next"}, {{"ODBCINI", (home / "odbc.ini").string()}},
                             home / "out", home / "err");
    EXPECT_EQ(waitMacTool(pid), 3);
    EXPECT_THAT(linesOf(home / "out"), IsEmpty());
    std::vector<std::string> err = linesOf(home / "err");
    ASSERT_FALSE(err.empty());
    EXPECT_THAT(err.back(), HasSubstr("40002"));
    EXPECT_THAT(err.back(), HasSubstr("not a database"));
}

TEST(MacToolOdbcIni, AWaitThatIsNoNumberOrIsGivenTwiceIsBadUsage) {
    commontest::ScratchFolder home;
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"--wait", "ten", "next"},
          std::vector<std::string>{"--wait", "-1", "next"},
          std::vector<std::string>{"--wait", "1", "--wait", "2", "next"},
          std::vector<std::string>{"--dsn", "A", "--dsn", "B", "next"}}) {
        pid_t pid = startMacTool(args, {{"FIRMCAST_HOME", home.str()}}, home / "out", home / "err");
        EXPECT_EQ(waitMacTool(pid), 2) << args[1];
        EXPECT_THAT(linesOf(home / "err"), ElementsAre(HasSubstr("usage: firmcast-macdb")));
    }
}

TEST(MacToolOdbcIni, NextOnADataSourceThatIsNotThereSaysSoAndExits3) {
    commontest::ScratchFolder home;
    std::ofstream(home / "odbc.ini") << "";
    pid_t pid = startMacTool({"--dsn", "NoSuchSource", "next"},
                             {{"ODBCINI", (home / "odbc.ini").string()}}, home / "out");
    EXPECT_EQ(waitMacTool(pid), 3);
    EXPECT_THAT(linesOf(home / "out"), IsEmpty());
}

}  // namespace
}  // namespace fc::test
