// What the driver said about a failed call, and the run-time error it becomes.
#pragma once

#include <sql.h>

#include <string>

#include "platform/runtime_error.h"

namespace fc {

// "<SQLSTATE> (<native error>): <driver's text>" of every record the handle
// holds, joined by "; ".
std::string odbcDiagnostics(SQLSMALLINT handleType, SQLHANDLE handle);

// Throws 40002 when `rc` is a failure; `what` names the call for the text.
// Whatever the driver reports, a locked row, a busy database (SQLite: HY000
// native 5), a serialization failure or lock time-out (PostgreSQL: 40001,
// 55P03) or a lost connection, the system treats the same way: retry or stop.
void checkOdbc(SQLRETURN rc, SQLSMALLINT handleType, SQLHANDLE handle, const char* what);

}  // namespace fc
