#include "platform/linux/unix_odbc.h"

#include <sqlext.h>

#include "platform/linux/odbc_diagnostics.h"
#include "platform/linux/unix_odbc_connection.h"

namespace fc {

UnixOdbcEnvironment::UnixOdbcEnvironment() {
    checkOdbc(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &env_), SQL_HANDLE_ENV,
              SQL_NULL_HANDLE, "SQLAllocHandle");
    checkOdbc(
        SQLSetEnvAttr(env_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0),
        SQL_HANDLE_ENV, env_, "SQLSetEnvAttr");
}

UnixOdbcEnvironment::~UnixOdbcEnvironment() {
    if (env_ != SQL_NULL_HENV)
        SQLFreeHandle(SQL_HANDLE_ENV, env_);
}

std::unique_ptr<OdbcConnection> UnixOdbcEnvironment::openConnection(const std::string& source) {
    SQLHDBC dbc = SQL_NULL_HDBC;
    checkOdbc(SQLAllocHandle(SQL_HANDLE_DBC, env_, &dbc), SQL_HANDLE_ENV, env_, "SQLAllocHandle");
    std::string text = source.find('=') == std::string::npos ? "DSN=" + source + ";" : source;
    SQLCHAR out[1024];
    SQLSMALLINT outLength = 0;
    SQLRETURN rc = SQLDriverConnect(dbc, nullptr, (SQLCHAR*)text.c_str(), SQL_NTS, out, sizeof out,
                                    &outLength, SQL_DRIVER_NOPROMPT);
    try {
        checkOdbc(rc, SQL_HANDLE_DBC, dbc, "SQLDriverConnect");
    } catch (...) {
        SQLFreeHandle(SQL_HANDLE_DBC, dbc);
        throw;
    }
    return std::make_unique<UnixOdbcConnection>(dbc);
}

}  // namespace fc
