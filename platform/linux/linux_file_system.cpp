#include "platform/linux/linux_file_system.h"

#include <cerrno>
#include <filesystem>

#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "platform/wildcard.h"

namespace fc {

namespace fs = std::filesystem;

namespace {

struct SplitPattern {
    std::string folder;
    std::string last;
};

// Splits "folder/last" at the last separator; a bare name lives in ".".
SplitPattern splitPattern(const std::string& path) {
    std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return {std::string(1, '.'), path};
    return {slash == 0 ? std::string(1, '/') : path.substr(0, slash), path.substr(slash + 1)};
}

// The search lists "." and ".." in every folder but the root, as the Windows
// search does; std::filesystem leaves them out.
void addDotEntries(const std::string& folder, const std::string& last,
                   std::vector<FoundEntry>& found) {
    std::error_code ec;
    if (fs::equivalent(folder, "/", ec))
        return;
    for (const char* dot : {".", ".."}) {
        if (matchesWildcard(last, dot))
            found.push_back({dot, true});
    }
}

}  // namespace

std::vector<FoundEntry> LinuxFileSystem::findFiles(const std::string& pattern) {
    const auto [folder, last] = splitPattern(nativePath(pattern));
    std::vector<FoundEntry> found;
    std::error_code ec;
    if (last.empty() || !fs::is_directory(folder, ec))
        return found;
    addDotEntries(folder, last, found);
    fs::directory_iterator it(folder, ec), end;
    for (; !ec && it != end; it.increment(ec)) {
        std::string name = it->path().filename().string();
        if (!matchesWildcard(last, name))
            continue;
        std::error_code typeError;
        found.push_back({name, it->is_directory(typeError)});
    }
    return found;
}

void LinuxFileSystem::makeFolder(const std::string& path) {
    std::error_code ec;
    fs::path p = nativePath(path);
    if (fs::exists(fs::symlink_status(p, ec)))
        throw RuntimeError(err::kPathFileAccessError);
    if (fs::create_directory(p, ec))
        return;
    throw RuntimeError(ec.value() == ENOENT ? err::kPathNotFound : err::kPathFileAccessError);
}

void LinuxFileSystem::deleteFile(const std::string& path) {
    std::error_code ec;
    fs::path p = nativePath(path);
    fs::file_status status = fs::symlink_status(p, ec);
    if (!fs::exists(status) || fs::is_directory(status))
        throw RuntimeError(err::kFileNotFound);
    if (fs::remove(p, ec))
        return;
    bool inUse = ec.value() == EBUSY || ec.value() == ETXTBSY;
    throw RuntimeError(inUse ? err::kPermissionDenied : err::kPathFileAccessError);
}

void LinuxFileSystem::copyFile(const std::string& from, const std::string& to) {
    std::error_code ec;
    fs::path source = nativePath(from);
    if (!fs::is_regular_file(source, ec))
        throw RuntimeError(err::kFileNotFound);
    if (!fs::copy_file(source, nativePath(to), fs::copy_options::overwrite_existing, ec))
        throw RuntimeError(err::kPathFileAccessError);
}

std::int64_t LinuxFileSystem::fileLength(const std::string& path) {
    std::error_code ec;
    auto size = fs::file_size(nativePath(path), ec);
    if (ec)
        throw RuntimeError(err::kFileNotFound);
    return static_cast<std::int64_t>(size);
}

}  // namespace fc
