// Windows-style drives and paths over the host's file system. Each drive
// letter stands for a host folder given when the drives are made: the
// program reads them from its environment (FIRMCAST_DRIVE_<L>, "C:" being "/"
// unless told otherwise), a test names folders of its own. A letter that
// stands for nothing does not exist. A path such as "t:\Programas\Balanzas"
// resolves under its drive's folder component by component, matching
// case-insensitively when the exact name is not there.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace fc {

class Drives {
  public:
    // `roots` maps a drive letter (either case) to its host folder.
    explicit Drives(const std::map<char, std::string>& roots = {});

    // The letters of the drives that exist, lower case, in order ("c", "s", "t").
    std::vector<char> existingDrives() const;
    bool driveExists(char letter) const;

    // The host path of a Windows path, or empty when its drive or any folder
    // on the way does not exist (the last component may be missing when
    // `lastMayBeMissing`, for a file about to be created).
    std::string hostPath(const std::string& windowsPath, bool lastMayBeMissing = false) const;

    // The sub-folders and the files of a Windows folder, sorted
    // case-insensitively. `pattern` is a wild-card pattern such as "*.*".
    std::vector<std::string> listFolders(const std::string& windowsFolder) const;
    std::vector<std::string> listFiles(const std::string& windowsFolder,
                                       const std::string& pattern = "*.*") const;

  private:
    std::string rootOf(char letter) const;

    std::map<char, std::string> roots_;  // by lower-case letter
};

// Canonical form of a Windows folder: drive letter upper case, back slashes,
// no trailing slash except on a drive root ("C:\").
std::string normaliseWindowsPath(const std::string& path);

}  // namespace fc
