// Windows-style drives and paths over the Linux file system. "C:" is the
// folder named by FIRMCAST_DRIVE_C, or "/"; any other letter L is the folder
// named by FIRMCAST_DRIVE_<L> and does not exist when that is unset. A path
// such as "t:\Programas\Balanzas" resolves under its drive's folder component
// by component, matching case-insensitively when the exact name is not there.
#pragma once

#include <string>
#include <vector>

namespace fc {

// The letters of the drives that exist, lower case, in order ("c", "s", "t").
std::vector<char> existingDrives();
bool driveExists(char letter);

// The host path of a Windows path, or empty when its drive or any folder on
// the way does not exist (the last component may be missing when
// `lastMayBeMissing`, for a file about to be created).
std::string hostPath(const std::string& windowsPath, bool lastMayBeMissing = false);

// The sub-folders and the files of a Windows folder, sorted case-insensitively.
// `pattern` is a wild-card pattern such as "*.*" or "*.hex".
std::vector<std::string> listFolders(const std::string& windowsFolder);
std::vector<std::string> listFiles(const std::string& windowsFolder,
                                   const std::string& pattern = "*.*");

// Canonical form of a Windows folder: drive letter upper case, back slashes,
// no trailing slash except on a drive root ("C:\").
std::string normaliseWindowsPath(const std::string& path);

}  // namespace fc
