// The file operations of the run time and the kernel that the common
// procedures stand on: the file search (FindFirstFile / Dir), MkDir, Kill and
// FileLen. Paths may be given with "\" as the system writes them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace fc {

struct FoundEntry {
    std::string name;  // the entry's own name, without its folder
    bool isFolder = false;
};

class FileSystem {
  public:
    virtual ~FileSystem() = default;

    // The entries of the pattern's folder whose names match its last part
    // (wild cards allowed), folders included, "." and ".." as well when the
    // pattern matches them. A missing folder gives nothing. Never fails.
    virtual std::vector<FoundEntry> findFiles(const std::string& pattern) = 0;

    // MkDir: 75 when the folder exists or may not be made, 76 when its parent
    // is missing.
    virtual void makeFolder(const std::string& path) = 0;

    // Kill of one file: 53 when it is missing, 75 when it may not be removed,
    // 70 when it is in use.
    virtual void deleteFile(const std::string& path) = 0;

    // FileCopy of one file over another, which is replaced: 53 when the
    // source is missing, 75 when the copy may not be written.
    virtual void copyFile(const std::string& from, const std::string& to) = 0;

    // FileLen: 53 when the file is missing.
    virtual std::int64_t fileLength(const std::string& path) = 0;
};

}  // namespace fc
