#include "platform/profile_buffer.h"

#include "platform/profile_text.h"

namespace fc {

namespace {

// A C string ends at its first NUL.
std::string asCString(const std::string& s) {
    return s.substr(0, s.find('\0'));
}

std::string withoutQuotes(const std::string& v) {
    if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front()) {
        return v.substr(1, v.size() - 2);
    }
    return v;
}

std::string withoutTrailingBlanks(std::string s) {
    while (!s.empty() && s.back() == ' ') s.pop_back();
    return s;
}

std::string intoBuffer(const std::string& s, std::size_t size) {
    if (size == 0)
        return "";
    return asCString(s).substr(0, size - 1);
}

}  // namespace

std::string listIntoBuffer(const std::vector<std::string>& items, std::size_t size) {
    std::string all;
    for (const std::string& item : items) all += asCString(item) + '\0';
    // The list also needs its final NUL.
    if (all.size() + 1 <= size)
        return all;
    return all.substr(0, size >= 2 ? size - 2 : 0);
}

std::string profileString(const ProfileText& text, const ProfileName& section,
                          const ProfileName& key, const std::string& deflt, std::size_t size) {
    if (!section)
        return listIntoBuffer(text.sectionNames(), size);
    if (!key)
        return listIntoBuffer(text.keyNames(*section).value_or(std::vector<std::string>{}), size);
    std::optional<std::string> value = text.value(*section, *key);
    return intoBuffer(value ? withoutQuotes(*value) : withoutTrailingBlanks(deflt), size);
}

std::string profileSection(const ProfileText& text, const std::string& section, std::size_t size) {
    return listIntoBuffer(text.entries(section).value_or(std::vector<std::string>{}), size);
}

}  // namespace fc
