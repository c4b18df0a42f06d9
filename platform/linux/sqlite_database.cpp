#include "platform/linux/sqlite_database.h"

#include <sqlite3.h>

#include <cctype>
#include <filesystem>
#include <vector>

#include "platform/native_path.h"
#include "platform/runtime_error.h"

namespace fc {

namespace {

constexpr const char* kSource = "DAO.Database";

bool sameColumn(const std::string& a, const std::string& b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (std::tolower(static_cast<unsigned char>(a[i])) !=
            std::tolower(static_cast<unsigned char>(b[i]))) {
            return false;
        }
    }
    return true;
}

[[noreturn]] void raise(int number, const std::string& description) {
    throw RuntimeError(number, description, kSource);
}

// The error of a failed prepare or step, told the engine's way.
[[noreturn]] void raiseQueryError(sqlite3* db, int code) {
    std::string message = sqlite3_errmsg(db);
    const std::string noTable = "no such table: ";
    if (message.rfind(noTable, 0) == 0) {
        raise(dberr::kNoSuchTable,
              "The database engine cannot find the input table or query '" +
                  message.substr(noTable.size()) +
                  "'. Make sure it exists and that its name is spelled correctly.");
    }
    if ((code & 0xFF) == SQLITE_NOTADB)
        raise(dberr::kUnrecognizedFormat, "Unrecognized database format.");
    raise(dberr::kInvalidArgument, message);
}

class SqliteRecordset : public Recordset {
  public:
    SqliteRecordset(sqlite3* db, sqlite3_stmt* statement) : db_(db), statement_(statement) {
        step();
    }
    ~SqliteRecordset() override { close(); }

    bool eof() const override { return !row_; }

    std::optional<std::string> field(const std::string& name) const override {
        if (!statement_)
            raise(dberr::kObjectClosed, "Object invalid or no longer set.");
        if (!row_)
            raise(dberr::kNoCurrentRecord, "No current record.");
        for (std::size_t i = 0; i < names_.size(); ++i) {
            if (sameColumn(names_[i], name))
                return values_[i];
        }
        raise(dberr::kItemNotFound, "Item not found in this collection.");
    }

    void moveNext() override {
        if (!statement_)
            raise(dberr::kObjectClosed, "Object invalid or no longer set.");
        if (!row_)
            raise(dberr::kNoCurrentRecord, "No current record.");
        step();
    }

    Long close() override {
        if (!statement_)
            return 0;
        int r = sqlite3_finalize(statement_);
        statement_ = nullptr;
        row_ = false;
        return r == SQLITE_OK ? 0 : r;
    }

  private:
    // Moves to the next row and keeps its fields as text.
    void step() {
        int r = sqlite3_step(statement_);
        if (r != SQLITE_ROW && r != SQLITE_DONE)
            raiseQueryError(db_, r);
        row_ = r == SQLITE_ROW;
        names_.clear();
        values_.clear();
        if (!row_)
            return;
        for (int i = 0; i < sqlite3_column_count(statement_); ++i) {
            names_.push_back(sqlite3_column_name(statement_, i));
            const unsigned char* text = sqlite3_column_text(statement_, i);
            int bytes = sqlite3_column_bytes(statement_, i);
            if (sqlite3_column_type(statement_, i) == SQLITE_NULL) {
                values_.push_back(std::nullopt);
            } else {
                values_.push_back(std::string(reinterpret_cast<const char*>(text), bytes));
            }
        }
    }

    sqlite3* db_;
    sqlite3_stmt* statement_;
    bool row_ = false;
    std::vector<std::string> names_;
    std::vector<std::optional<std::string>> values_;
};

class SqliteDatabase : public Database {
  public:
    explicit SqliteDatabase(sqlite3* db) : db_(db) {}
    ~SqliteDatabase() override { close(); }

    std::unique_ptr<Recordset> openRecordset(const std::string& sql) override {
        if (!db_)
            raise(dberr::kObjectClosed, "Object invalid or no longer set.");
        sqlite3_stmt* statement = nullptr;
        int r =
            sqlite3_prepare_v2(db_, sql.c_str(), static_cast<int>(sql.size()), &statement, nullptr);
        if (r != SQLITE_OK) {
            sqlite3_finalize(statement);
            raiseQueryError(db_, r);
        }
        if (!statement)
            raise(dberr::kInvalidArgument, "Invalid argument.");  // an empty query
        return std::make_unique<SqliteRecordset>(db_, statement);
    }

    void close() override {
        // Recordsets still open keep the connection until they close.
        if (db_)
            sqlite3_close_v2(db_);
        db_ = nullptr;
    }

  private:
    sqlite3* db_;
};

}  // namespace

std::unique_ptr<Database> SqliteDatabaseEngine::openDatabase(const std::string& path) {
    std::string file = nativePath(path);
    std::error_code ec;
    if (!std::filesystem::is_regular_file(file, ec)) {
        raise(dberr::kFileNotFound, "Could not find file '" + path + "'.");
    }
    sqlite3* db = nullptr;
    int r = sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr);
    auto database = std::make_unique<SqliteDatabase>(db);
    if (r != SQLITE_OK)
        raise(dberr::kFileNotFound, "Could not find file '" + path + "'.");
    // SQLite reads a file only when asked: ask now, so that a file that is
    // not a database fails here, as the engine's open would.
    r = sqlite3_exec(db, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr);
    if (r != SQLITE_OK)
        raise(dberr::kUnrecognizedFormat, "Unrecognized database format '" + path + "'.");
    return database;
}

}  // namespace fc
