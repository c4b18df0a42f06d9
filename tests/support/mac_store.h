// A fresh MAC database for one test, on a real engine: a SQLite file through
// the SQLite ODBC driver, or a database of its own in the tests' PostgreSQL
// cluster through psqlODBC. Its tables are created, the counter at 0.
#pragma once

#include <memory>
#include <string>

#include "platform/linux/unix_odbc.h"

namespace fc::test {

class MacStore {
  public:
    // `engine` is "SQLite" or "PostgreSQL". nullptr, with the reason in
    // `whyNot`, when the machine cannot give that engine.
    static std::unique_ptr<MacStore> make(const std::string& engine, std::string& whyNot);
    virtual ~MacStore() = default;

    // The connection string of the database.
    virtual std::string source() const = 0;
    // The same with lock waits cut short, so that a locked counter fails at
    // once (40002) instead of waiting its turn.
    virtual std::string sourceWithShortWaits() const = 0;
    // An odbc.ini section naming the database `dsn`.
    virtual std::string iniSection(const std::string& dsn) const = 0;

    // A connection of the test's own, to look at or upset the database.
    std::unique_ptr<OdbcConnection> open() { return odbc.openConnection(source()); }

    UnixOdbcEnvironment odbc;
};

}  // namespace fc::test
