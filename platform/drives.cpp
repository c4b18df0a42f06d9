#include "platform/drives.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <sstream>

#include "platform/text_case.h"
#include "platform/wildcard.h"

namespace fs = std::filesystem;

namespace fc {

namespace {

char lowerLetter(char letter) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
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

template <typename Keep>
std::vector<std::string> listEntries(const std::string& folder, Keep keep) {
    std::vector<std::string> names;
    std::error_code ec;
    if (folder.empty() || !fs::is_directory(folder, ec))
        return names;
    for (const auto& entry :
         fs::directory_iterator(folder, fs::directory_options::skip_permission_denied, ec)) {
        if (keep(entry))
            names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        return lowerCase(a) < lowerCase(b);
    });
    return names;
}

}  // namespace

Drives::Drives(const std::map<char, std::string>& roots) {
    for (const auto& [letter, folder] : roots) roots_[lowerLetter(letter)] = folder;
}

std::string Drives::rootOf(char letter) const {
    auto found = roots_.find(lowerLetter(letter));
    return found == roots_.end() ? "" : found->second;
}

std::vector<char> Drives::existingDrives() const {
    std::vector<char> drives;
    for (char l = 'a'; l <= 'z'; ++l) {
        if (driveExists(l))
            drives.push_back(l);
    }
    return drives;
}

bool Drives::driveExists(char letter) const {
    std::string root = rootOf(letter);
    std::error_code ec;
    return !root.empty() && fs::is_directory(root, ec);
}

std::string Drives::hostPath(const std::string& windowsPath, bool lastMayBeMissing) const {
    if (windowsPath.size() < 2 || windowsPath[1] != ':' ||
        !std::isalpha(static_cast<unsigned char>(windowsPath[0]))) {
        return "";
    }
    if (!driveExists(windowsPath[0]))
        return "";
    fs::path path = rootOf(windowsPath[0]);
    std::vector<std::string> parts = components(windowsPath.substr(2));
    for (size_t i = 0; i < parts.size(); ++i) {
        std::string found = entryIgnoringCase(path, parts[i]);
        if (found.empty()) {
            if (lastMayBeMissing && i + 1 == parts.size())
                return (path / parts[i]).string();
            return "";
        }
        path /= found;
    }
    return path.string();
}

std::vector<std::string> Drives::listFolders(const std::string& windowsFolder) const {
    return listEntries(hostPath(windowsFolder), [](const fs::directory_entry& e) {
        std::error_code ec;
        return e.is_directory(ec);
    });
}

std::vector<std::string> Drives::listFiles(const std::string& windowsFolder,
                                           const std::string& pattern) const {
    return listEntries(hostPath(windowsFolder), [&](const fs::directory_entry& e) {
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
