#include "record/record_setting.h"

#include "platform/profile.h"

namespace fc {

namespace {
constexpr std::size_t kLongestPath = 1024;
}  // namespace

std::string configuredRecordFile(const std::string& programFolder) {
    const std::string path =
        getPrivateProfileString(std::string("Record"), std::string("record"), "", kLongestPath,
                                programFolder + "/config.ini");
    if (path.empty() || path[0] == '/')
        return path;
    return programFolder + "/" + path;
}

}  // namespace fc
