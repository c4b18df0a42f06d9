// The embedded engine on Linux: SQLite. A database is one SQLite file; the
// system's queries are plain SQL that SQLite reads as written.
#pragma once

#include "platform/database.h"

namespace fc {

class SqliteDatabaseEngine : public DatabaseEngine {
  public:
    // Opens an existing file for reading and writing (reading only when the
    // file is write-protected); a missing file is error 3024, never created.
    std::unique_ptr<Database> openDatabase(const std::string& path) override;
};

}  // namespace fc
