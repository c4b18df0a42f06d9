// Where a site keeps its record of devices loaded: the key record= of the
// [Record] section of the program's config.ini. A relative path is taken
// from the program's folder.
#pragma once

#include <string>

namespace fc {

// The record file config.ini names, or empty when it names none.
std::string configuredRecordFile(const std::string& programFolder);

}  // namespace fc
