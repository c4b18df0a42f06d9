// An embedded database engine, in the little that the system asks of it: open
// a database file by its path, run a query, read the rows' fields by name,
// close. Failures are run-time errors numbered as the classic desktop engine
// numbers them:
//   3024 the file is not there, 3343 the file is not a database,
//   3078 the query names a table that does not exist, 3001 any other query
//   failure, 3021 no current row, 3265 no field of that name,
//   3420 a closed database or recordset.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/vb_types.h"

namespace fc {

namespace dberr {
constexpr int kInvalidArgument = 3001;
constexpr int kNoCurrentRecord = 3021;
constexpr int kFileNotFound = 3024;
constexpr int kNoSuchTable = 3078;
constexpr int kItemNotFound = 3265;
constexpr int kUnrecognizedFormat = 3343;
constexpr int kObjectClosed = 3420;
}  // namespace dberr

// The rows a query gives, read forward, one current row at a time.
class Recordset {
  public:
    virtual ~Recordset() = default;
    // True when there is no current row: past the last, or no row at all.
    virtual bool eof() const = 0;
    // The current row's field, by name without regard to case, as text;
    // nullopt for Null.
    virtual std::optional<std::string> field(const std::string& name) const = 0;
    virtual void moveNext() = 0;
    // Closes the recordset; the engine's result of that, 0 for success.
    virtual Long close() = 0;
};

class Database {
  public:
    virtual ~Database() = default;
    virtual std::unique_ptr<Recordset> openRecordset(const std::string& sql) = 0;
    virtual void close() = 0;
};

// The engine's default workspace: it opens databases.
class DatabaseEngine {
  public:
    virtual ~DatabaseEngine() = default;
    virtual std::unique_ptr<Database> openDatabase(const std::string& path) = 0;
};

}  // namespace fc
