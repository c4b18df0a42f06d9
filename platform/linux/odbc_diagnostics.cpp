#include "platform/linux/odbc_diagnostics.h"

#include <sqlext.h>

namespace fc {

std::string odbcDiagnostics(SQLSMALLINT handleType, SQLHANDLE handle) {
    std::string all;
    for (SQLSMALLINT record = 1;; ++record) {
        SQLCHAR state[6] = {0};
        SQLINTEGER native = 0;
        SQLCHAR text[1024] = {0};
        SQLSMALLINT length = 0;
        SQLRETURN rc =
            SQLGetDiagRec(handleType, handle, record, state, &native, text, sizeof text, &length);
        if (!SQL_SUCCEEDED(rc))
            break;
        if (!all.empty())
            all += "; ";
        all += reinterpret_cast<char*>(state);
        all += " (" + std::to_string(native) + "): ";
        all += reinterpret_cast<char*>(text);
    }
    return all;
}

void checkOdbc(SQLRETURN rc, SQLSMALLINT handleType, SQLHANDLE handle, const char* what) {
    if (SQL_SUCCEEDED(rc) || rc == SQL_NO_DATA)
        return;
    std::string text = handle ? odbcDiagnostics(handleType, handle) : std::string();
    if (text.empty())
        text = std::string(what) + " failed";
    throw RuntimeError(err::kOdbcFailure, text, "MSRDO20");
}

}  // namespace fc
