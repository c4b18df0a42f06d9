#include "platform/linux/unix_odbc_connection.h"

#include <sqlext.h>

#include "platform/linux/odbc_diagnostics.h"

namespace fc {
namespace {

// A prepared statement whose parameters stay bound for its life.
class Statement {
  public:
    Statement(SQLHDBC dbc, const std::string& sql, const std::vector<OdbcParam>& params)
        : params_(params), lengths_(params.size()), stamps_(params.size()) {
        checkOdbc(SQLAllocHandle(SQL_HANDLE_STMT, dbc, &stmt_), SQL_HANDLE_DBC, dbc,
                  "SQLAllocHandle");
        check(SQLPrepare(stmt_, (SQLCHAR*)sql.c_str(), SQL_NTS), "SQLPrepare");
        for (size_t i = 0; i < params_.size(); ++i) bind(i);
        check(SQLExecute(stmt_), "SQLExecute");
    }
    ~Statement() {
        SQLFreeStmt(stmt_, SQL_CLOSE);
        SQLFreeHandle(SQL_HANDLE_STMT, stmt_);
    }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    long rowCount() {
        SQLLEN count = 0;
        check(SQLRowCount(stmt_, &count), "SQLRowCount");
        return static_cast<long>(count);
    }

    std::vector<OdbcRow> rows() {
        SQLSMALLINT columns = 0;
        check(SQLNumResultCols(stmt_, &columns), "SQLNumResultCols");
        std::vector<OdbcRow> all;
        while (columns > 0) {
            SQLRETURN rc = SQLFetch(stmt_);
            if (rc == SQL_NO_DATA)
                break;
            check(rc, "SQLFetch");
            OdbcRow row;
            for (SQLUSMALLINT c = 1; c <= SQLUSMALLINT(columns); ++c) row.push_back(field(c));
            all.push_back(std::move(row));
        }
        return all;
    }

  private:
    void check(SQLRETURN rc, const char* what) { checkOdbc(rc, SQL_HANDLE_STMT, stmt_, what); }

    void bind(size_t i) {
        SQLUSMALLINT n = SQLUSMALLINT(i + 1);
        if (auto* text = std::get_if<std::string>(&params_[i])) {
            lengths_[i] = SQLLEN(text->size());
            SQLULEN size = text->empty() ? 1 : text->size();
            check(SQLBindParameter(stmt_, n, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_VARCHAR, size, 0,
                                   (SQLPOINTER)text->data(), SQLLEN(text->size()), &lengths_[i]),
                  "SQLBindParameter");
            return;
        }
        const LocalDateTime& when = std::get<LocalDateTime>(params_[i]);
        stamps_[i] = SQL_TIMESTAMP_STRUCT{SQLSMALLINT(when.year),
                                          SQLUSMALLINT(when.month),
                                          SQLUSMALLINT(when.day),
                                          SQLUSMALLINT(when.hour),
                                          SQLUSMALLINT(when.minute),
                                          SQLUSMALLINT(when.second),
                                          0};
        lengths_[i] = sizeof(SQL_TIMESTAMP_STRUCT);
        check(SQLBindParameter(stmt_, n, SQL_PARAM_INPUT, SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP,
                               19, 0, &stamps_[i], 0, &lengths_[i]),
              "SQLBindParameter");
    }

    // A field of the current row, read in pieces as long as it goes on.
    std::optional<std::string> field(SQLUSMALLINT column) {
        std::string value;
        char piece[256];
        for (;;) {
            SQLLEN length = 0;
            SQLRETURN rc = SQLGetData(stmt_, column, SQL_C_CHAR, piece, sizeof piece, &length);
            if (rc == SQL_NO_DATA)
                break;
            check(rc, "SQLGetData");
            if (length == SQL_NULL_DATA)
                return std::nullopt;
            bool more = length == SQL_NO_TOTAL || length >= SQLLEN(sizeof piece);
            value += std::string(piece, more ? sizeof piece - 1 : size_t(length));
            if (!more)
                break;
        }
        return value;
    }

    SQLHSTMT stmt_ = SQL_NULL_HSTMT;
    std::vector<OdbcParam> params_;
    std::vector<SQLLEN> lengths_;
    std::vector<SQL_TIMESTAMP_STRUCT> stamps_;
};

}  // namespace

UnixOdbcConnection::~UnixOdbcConnection() {
    try {
        close();
    } catch (const RuntimeError&) {
        // A connection already lost has nothing left to close.
    }
}

SQLHDBC UnixOdbcConnection::handle() {
    if (dbc_ == SQL_NULL_HDBC)
        throw RuntimeError(err::kOdbcFailure, "The connection is closed");
    return dbc_;
}

void UnixOdbcConnection::begin() {
    checkOdbc(SQLSetConnectAttr(handle(), SQL_ATTR_AUTOCOMMIT,
                                reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_OFF), 0),
              SQL_HANDLE_DBC, dbc_, "SQLSetConnectAttr");
}

void UnixOdbcConnection::endTransaction(SQLSMALLINT how) {
    checkOdbc(SQLEndTran(SQL_HANDLE_DBC, handle(), how), SQL_HANDLE_DBC, dbc_, "SQLEndTran");
    checkOdbc(SQLSetConnectAttr(dbc_, SQL_ATTR_AUTOCOMMIT,
                                reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_ON), 0),
              SQL_HANDLE_DBC, dbc_, "SQLSetConnectAttr");
}

void UnixOdbcConnection::commit() {
    endTransaction(SQL_COMMIT);
}

void UnixOdbcConnection::rollback() {
    endTransaction(SQL_ROLLBACK);
}

long UnixOdbcConnection::execute(const std::string& sql, const std::vector<OdbcParam>& params) {
    Statement statement(handle(), sql, params);
    return statement.rowCount();
}

std::vector<OdbcRow> UnixOdbcConnection::query(const std::string& sql,
                                               const std::vector<OdbcParam>& params) {
    Statement statement(handle(), sql, params);
    return statement.rows();
}

std::string UnixOdbcConnection::infoText(SQLUSMALLINT item) {
    char text[128] = {0};
    SQLSMALLINT length = 0;
    checkOdbc(SQLGetInfo(handle(), item, text, sizeof text, &length), SQL_HANDLE_DBC, dbc_,
              "SQLGetInfo");
    return text;
}

std::string UnixOdbcConnection::quote(const std::string& name) {
    std::string mark = infoText(SQL_IDENTIFIER_QUOTE_CHAR);
    // A blank means the driver has no quoting; plain names are then all it takes.
    if (mark == " ")
        mark.clear();
    return mark + name + mark;
}

std::string UnixOdbcConnection::engineName() {
    return infoText(SQL_DBMS_NAME);
}

void UnixOdbcConnection::close() {
    if (dbc_ == SQL_NULL_HDBC)
        return;
    SQLHDBC dbc = dbc_;
    dbc_ = SQL_NULL_HDBC;
    // Whatever was not committed is dropped with the connection.
    SQLEndTran(SQL_HANDLE_DBC, dbc, SQL_ROLLBACK);
    SQLDisconnect(dbc);
    SQLFreeHandle(SQL_HANDLE_DBC, dbc);
}

}  // namespace fc
