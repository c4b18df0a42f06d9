// Any bytes as the buffer a section is read into, and any bytes as an INI
// file whose first section is read and split: the result must alternate key
// and value, and no key or value may hold what the rules cut away.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "common/section_split.h"
#include "platform/profile_buffer.h"
#include "platform/profile_text.h"

namespace {

void check(bool condition) {
    if (!condition)
        std::abort();
}

void checkItems(const std::vector<std::string>& items) {
    check(items.size() % 2 == 0);
    for (std::size_t i = 0; i < items.size(); ++i) {
        check(items[i].find('\0') == std::string::npos);
        if (!items[i].empty())
            check(items[i][0] != ' ');
        if (i % 2 == 0)
            check(items[i].find('=') == std::string::npos);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);

    // The raw buffer.
    std::vector<std::string> items = fc::splitSectionBlock(bytes);
    checkItems(items);
    std::size_t equals = 0;
    for (char c : bytes.substr(0, bytes.find(std::string(2, '\0')))) equals += c == '=';
    check(items.size() / 2 <= equals);

    // A file read the way LeeSeccionIni reads it.
    fc::ProfileText text(bytes);
    for (const std::string& section : text.sectionNames()) {
        std::string block = fc::profileSection(text, section, 32767);
        if (block.empty())
            continue;
        std::vector<std::string> pairs = fc::splitSectionBlock(block + std::string(2, '\0'));
        checkItems(pairs);
        for (std::size_t i = 0; i < pairs.size(); i += 2) check(!pairs[i].empty());
        check(pairs.size() / 2 <= text.entries(section)->size());
    }
    return 0;
}
