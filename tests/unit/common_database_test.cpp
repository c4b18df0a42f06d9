#include <gtest/gtest.h>
#include <sqlite3.h>

#include "common/database_access.h"
#include "common/file_tests.h"
#include "tests/unit/common_fixture.h"

namespace fc {
namespace {

using commontest::CommonRig;
using commontest::entry;
using commontest::readAll;
using commontest::writeAll;

// A database file as the display screen finds it: the parameter table.
void makeDatabase(const std::filesystem::path& file, const char* version) {
    std::filesystem::create_directories(file.parent_path());
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
    std::string sql =
        "CREATE TABLE DAT_Parametro (Parametro TEXT, ValorParametro TEXT);"
        "INSERT INTO DAT_Parametro VALUES ('OTHER', 'x');";
    if (version)
        sql += "INSERT INTO DAT_Parametro VALUES ('VERSION', '" + std::string(version) + "');";
    ASSERT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(db);
}

constexpr const char* kQuery =
    "Select ValorParametro from DAT_Parametro where Parametro = 'VERSION'";

TEST(AbrirBD, OpensTheDisplayDatabaseAndAnswersItsQuery) {
    CommonRig rig;
    makeDatabase(rig.home / "Database/KorvaFirmcast.mdb", " d1.22");
    auto bd = AbrirBD(rig.c, NombrarBD(rig.c, "\\Database\\", "KorvaFirmcast.mdb"));
    ASSERT_NE(bd, nullptr);
    auto tabla = bd->openRecordset(kQuery);
    ASSERT_FALSE(tabla->eof());
    EXPECT_EQ(tabla->field("ValorParametro"), " d1.22");
    EXPECT_EQ(tabla->field("valorparametro"), " d1.22");
    EXPECT_EQ(CierraTabla(rig.c, *tabla), 0);
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(AbrirBD, AQueryWithoutRowsIsAtItsEnd) {
    CommonRig rig;
    makeDatabase(rig.home / "Database/KorvaFirmcast.mdb", nullptr);
    auto bd = AbrirBD(rig.c, NombrarBD(rig.c, "\\Database\\", "KorvaFirmcast.mdb"));
    ASSERT_NE(bd, nullptr);
    auto tabla = bd->openRecordset(kQuery);
    EXPECT_TRUE(tabla->eof());
    try {
        tabla->field("ValorParametro");
        FAIL() << "a field was read with no current row";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), dberr::kNoCurrentRecord);
    }
}

TEST(AbrirBD, AMissingDatabaseGoesToTheStandardHandlerNamedAbrirBD) {
    CommonRig rig;
    std::string ruta = NombrarBD(rig.c, "\\Database\\", "KorvaFirmcast.mdb");
    EXPECT_EQ(AbrirBD(rig.c, ruta), nullptr);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "3024 - Could not find file '" + ruta + "'.");
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "AbrirBD");
    EXPECT_EQ(readAll(rig.logFile()),
              entry("21/03/2005  10:42  AbrirBD", "3024 - Could not find file '" + ruta + "'."));
    EXPECT_FALSE(std::filesystem::exists(rig.home / "Database/KorvaFirmcast.mdb"));
}

TEST(AbrirBD, AFileThatIsNotADatabaseIsAnUnrecognizedFormat) {
    CommonRig rig;
    writeAll(rig.home / "Database/KorvaFirmcast.mdb", std::string(4096, 'j'));
    EXPECT_EQ(AbrirBD(rig.c, NombrarBD(rig.c, "\\Database\\", "KorvaFirmcast.mdb")), nullptr);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text.rfind("3343 - Unrecognized database format", 0), 0u);
}

TEST(AbrirBD, AMissingTableIsTold) {
    CommonRig rig;
    std::filesystem::path file = rig.home / "Database/KorvaFirmcast.mdb";
    std::filesystem::create_directories(file.parent_path());
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db, "CREATE TABLE other (x);", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(db);
    auto bd = AbrirBD(rig.c, file.string());
    ASSERT_NE(bd, nullptr);
    try {
        bd->openRecordset(kQuery);
        FAIL() << "a query on a missing table ran";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), dberr::kNoSuchTable);
        EXPECT_NE(e.description().find("'DAT_Parametro'"), std::string::npos);
    }
}

TEST(CierraTabla, ClosesTheRecordset) {
    CommonRig rig;
    makeDatabase(rig.home / "Database/KorvaFirmcast.mdb", "0");
    auto bd = AbrirBD(rig.c, NombrarBD(rig.c, "\\Database\\", "KorvaFirmcast.mdb"));
    ASSERT_NE(bd, nullptr);
    auto tabla = bd->openRecordset(kQuery);
    EXPECT_EQ(CierraTabla(rig.c, *tabla), 0);
    EXPECT_TRUE(tabla->eof());
    try {
        tabla->moveNext();
        FAIL() << "a closed recordset moved";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), dberr::kObjectClosed);
    }
}

}  // namespace
}  // namespace fc
