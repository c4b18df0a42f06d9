#include "mac_store.h"

#include <unistd.h>

#include <filesystem>

#include "mac/mac_tables.h"
#include "postgres_server.h"

namespace fc::test {
namespace {

class SqliteMacStore : public MacStore {
  public:
    SqliteMacStore() {
        static int count = 0;
        folder_ = std::filesystem::temp_directory_path() /
                  ("fc-mac-" + std::to_string(getpid()) + "-" + std::to_string(++count));
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }
    ~SqliteMacStore() override {
        std::error_code ec;
        std::filesystem::remove_all(folder_, ec);
    }
    std::string source() const override { return keys(";", "100000"); }
    std::string sourceWithShortWaits() const override { return keys(";", "50"); }
    std::string iniSection(const std::string& dsn) const override {
        return "[" + dsn + "]\n" + keys("\n", "100000");
    }

  private:
    // The busy time-out is always given: without it a busy database fails
    // at once on some drivers and waits for ever on others.
    std::string keys(const std::string& separator, const std::string& timeout) const {
        std::string driver = separator == ";" ? "DRIVER={SQLite3}" : "Driver=SQLite3";
        return driver + separator + "Database=" + (folder_ / "mac.db").string() + separator +
               "Timeout=" + timeout + separator + "JournalMode=WAL" + separator +
               "SyncPragma=NORMAL" + separator;
    }
    std::filesystem::path folder_;
};

class PostgresMacStore : public MacStore {
  public:
    PostgresMacStore(PostgresServer& server) : server_(server) {
        static int count = 0;
        database_ = "mac_" + std::to_string(getpid()) + "_" + std::to_string(++count);
        odbc.openConnection(server.connectionString("postgres"))
            ->execute("CREATE DATABASE " + database_);
    }
    std::string source() const override { return server_.connectionString(database_); }
    std::string sourceWithShortWaits() const override {
        return source() + "ConnSettings=SET lock_timeout = 50;";
    }
    std::string iniSection(const std::string& dsn) const override {
        return "[" + dsn + "]\n" + server_.iniKeys(database_);
    }

  private:
    PostgresServer& server_;
    std::string database_;
};

}  // namespace

std::unique_ptr<MacStore> MacStore::make(const std::string& engine, std::string& whyNot) {
    std::unique_ptr<MacStore> store;
    if (engine == "SQLite") {
        store = std::make_unique<SqliteMacStore>();
    } else {
        PostgresServer* server = PostgresServer::shared(whyNot);
        if (server == nullptr)
            return nullptr;
        store = std::make_unique<PostgresMacStore>(*server);
    }
    CreaTablasMac(*store->open());
    return store;
}

}  // namespace fc::test

// The ODBC drivers keep a little memory of their own past the end (psqlODBC
// on a failed statement); LeakSanitizer's reports are about our code, not
// theirs.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:psqlodbca.so\nleak:psqlodbcw.so\nleak:libsqlite3odbc.so\nleak:libodbc.so\n";
}
