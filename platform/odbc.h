// A data source reached through ODBC, in the little the MAC register asks of
// it: open a connection by data source name, run statements with bound
// parameters inside or outside a transaction, read the rows of a query, and
// quote identifiers the way the driver wants. Every failure the driver
// reports, whatever its kind (a locked row, a busy database, a serialization
// failure, a lost connection), is the run-time error 40002, described by its
// SQLSTATE, the native error and the driver's text.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/calendar.h"

namespace fc {

// A value bound to a statement's "?": text, or a date and time.
using OdbcParam = std::variant<std::string, LocalDateTime>;
using OdbcRow = std::vector<std::optional<std::string>>;

class OdbcConnection {
  public:
    virtual ~OdbcConnection() = default;

    // Starts a transaction: the statements that follow are committed or
    // rolled back together.
    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;

    // Runs a statement; the number of rows it changed.
    virtual long execute(const std::string& sql, const std::vector<OdbcParam>& params = {}) = 0;
    // Runs a query; its rows, every field as text, nullopt for Null.
    virtual std::vector<OdbcRow> query(const std::string& sql,
                                       const std::vector<OdbcParam>& params = {}) = 0;

    // `name` between the driver's identifier quotes.
    virtual std::string quote(const std::string& name) = 0;
    // The engine's own name ("SQLite", "PostgreSQL").
    virtual std::string engineName() = 0;

    virtual void close() = 0;
};

class OdbcEnvironment {
  public:
    virtual ~OdbcEnvironment() = default;
    // `source` is a data source name, or a whole connection string when it
    // holds an "=" ("DRIVER=SQLite3;Database=...").
    virtual std::unique_ptr<OdbcConnection> openConnection(const std::string& source) = 0;
};

}  // namespace fc
