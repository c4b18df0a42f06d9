#include "platform/drives.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <sstream>

#include "platform/environment.h"
#include "platform/wildcard.h"

namespace fs = std::filesystem;

namespace fc {

namespace {

std::string lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

std::string driveRoot(char letter) {
    char l = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    std::string name = "FIRMCAST_DRIVE_";
    name.push_back(l);
    if (hasEnvironmentVariable(name) || l != 'C')
        return environmentVariable(name);
    return std::string(1, '/');
}

std::vector<std::string> components(const std::string& rest) {
    std::vector<std::string> parts;
    std::string part;
    for (char c : rest) {
        if (c == '\\' || c == '/') {
            if (!part.empty())
                parts.push_back(part);
            part.clear();
        } else {
            part.push_back(c);
        }
    }
    if (!part.empty())
        parts.push_back(part);
    return parts;
}

// The entry of `folder` named `name`, exactly or else ignoring case.
std::string findEntry(const fs::path& folder, const std::string& name) {
    std::error_code ec;
    if (fs::exists(folder / name, ec))
        return name;
    std::string wanted = lower(name);
    for (const auto& entry : fs::directory_iterator(folder, ec)) {
        std::string candidate = entry.path().filename().string();
        if (lower(candidate) == wanted)
            return candidate;
    }
    return "";
}

template <typename Keep>
std::vector<std::string> listEntries(const std::string& windowsFolder, Keep keep) {
    std::vector<std::string> names;
    std::string folder = hostPath(windowsFolder);
    std::error_code ec;
    if (folder.empty() || !fs::is_directory(folder, ec))
        return names;
    for (const auto& entry :
         fs::directory_iterator(folder, fs::directory_options::skip_permission_denied, ec)) {
        if (keep(entry))
            names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return lower(a) < lower(b); });
    return names;
}

}  // namespace

std::vector<char> existingDrives() {
    std::vector<char> drives;
    for (char l = 'a'; l <= 'z'; ++l) {
        if (driveExists(l))
            drives.push_back(l);
    }
    return drives;
}

bool driveExists(char letter) {
    std::string root = driveRoot(letter);
    std::error_code ec;
    return !root.empty() && fs::is_directory(root, ec);
}

std::string hostPath(const std::string& windowsPath, bool lastMayBeMissing) {
    if (windowsPath.size() < 2 || windowsPath[1] != ':' ||
        !std::isalpha(static_cast<unsigned char>(windowsPath[0]))) {
        return "";
    }
    if (!driveExists(windowsPath[0]))
        return "";
    fs::path path = driveRoot(windowsPath[0]);
    std::vector<std::string> parts = components(windowsPath.substr(2));
    for (size_t i = 0; i < parts.size(); ++i) {
        std::string found = findEntry(path, parts[i]);
        if (found.empty()) {
            if (lastMayBeMissing && i + 1 == parts.size())
                return (path / parts[i]).string();
            return "";
        }
        path /= found;
    }
    return path.string();
}

std::vector<std::string> listFolders(const std::string& windowsFolder) {
    return listEntries(windowsFolder, [](const fs::directory_entry& e) {
        std::error_code ec;
        return e.is_directory(ec);
    });
}

std::vector<std::string> listFiles(const std::string& windowsFolder, const std::string& pattern) {
    return listEntries(windowsFolder, [&](const fs::directory_entry& e) {
        std::error_code ec;
        return e.is_regular_file(ec) && matchesWildcard(pattern, e.path().filename().string());
    });
}

std::string normaliseWindowsPath(const std::string& path) {
    if (path.size() < 2 || path[1] != ':')
        return path;
    std::string out(1, static_cast<char>(std::toupper(static_cast<unsigned char>(path[0]))));
    out += ":\\";
    std::vector<std::string> parts = components(path.substr(2));
    for (size_t i = 0; i < parts.size(); ++i) {
        if (i)
            out += "\\";
        out += parts[i];
    }
    return out;
}

}  // namespace fc
