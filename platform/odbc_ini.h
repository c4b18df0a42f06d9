// Where the ODBC driver manager finds the program's data sources.
#pragma once

#include <string>

namespace fc {

// Points the driver manager at "odbc.ini" in the program's folder unless
// ODBCINI already names a file: the data sources travel with the program.
void defaultOdbcIni(const std::string& programFolder);

}  // namespace fc
