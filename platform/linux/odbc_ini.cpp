#include "platform/odbc_ini.h"

#include <stdlib.h>

#include "platform/environment.h"

namespace fc {

void defaultOdbcIni(const std::string& programFolder) {
    if (!environmentVariable("ODBCINI").empty())
        return;
    std::string path = programFolder;
    if (!path.empty() && path.back() != '/')
        path += '/';
    setenv("ODBCINI", (path + "odbc.ini").c_str(), 1);
}

}  // namespace fc
