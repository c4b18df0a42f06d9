// The profile calls over files on disk: each call reads the whole file, and a
// write rewrites it whole, keeping every line it does not change.
#include "platform/profile.h"

#include <fstream>
#include <iterator>
#include <optional>

#include "platform/native_path.h"
#include "platform/profile_text.h"

namespace fc {

namespace {

std::optional<std::string> readWhole(const std::string& file) {
    std::ifstream in(nativePath(file), std::ios::binary);
    if (!in)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

bool writeWhole(const std::string& file, const std::string& text) {
    std::ofstream out(nativePath(file), std::ios::binary | std::ios::trunc);
    if (!out)
        return false;
    out << text;
    out.flush();
    return static_cast<bool>(out);
}

// Applies the write to the text; false when nothing changes.
bool edit(ProfileText& text, const std::string& section, const ProfileName& key,
          const ProfileName& value) {
    if (!key)
        return text.deleteSection(section);
    if (!value)
        return text.deleteKey(section, *key);
    text.setValue(section, *key, *value);
    return true;
}

}  // namespace

std::string getPrivateProfileString(const ProfileName& section, const ProfileName& key,
                                    const std::string& deflt, std::size_t size,
                                    const std::string& file) {
    ProfileText text(readWhole(file).value_or(""));
    return profileString(text, section, key, deflt, size);
}

bool writePrivateProfileString(const ProfileName& section, const ProfileName& key,
                               const ProfileName& value, const std::string& file) {
    if (!section)
        return false;
    std::optional<std::string> old = readWhole(file);
    ProfileText text(old.value_or(""));
    // Deleting from a file that lacks the key or section leaves the file
    // untouched, and does not create a missing one.
    if (!edit(text, *section, key, value))
        return true;
    return writeWhole(file, text.text());
}

std::string getPrivateProfileSection(const std::string& section, std::size_t size,
                                     const std::string& file) {
    ProfileText text(readWhole(file).value_or(""));
    return profileSection(text, section, size);
}

}  // namespace fc
