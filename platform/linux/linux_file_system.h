// The file operations on the local file system, through std::filesystem.
#pragma once

#include "platform/file_system.h"

namespace fc {

class LinuxFileSystem : public FileSystem {
  public:
    std::vector<FoundEntry> findFiles(const std::string& pattern) override;
    void makeFolder(const std::string& path) override;
    void deleteFile(const std::string& path) override;
    void copyFile(const std::string& from, const std::string& to) override;
    std::int64_t fileLength(const std::string& path) override;
};

}  // namespace fc
