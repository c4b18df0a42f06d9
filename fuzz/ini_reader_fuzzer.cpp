// Any bytes as an INI file: reading must never fail, an untouched text must
// come back as it was, every answer must fit its buffer, and an edit must
// read back as made, also after a round trip through the text.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/profile_buffer.h"
#include "platform/profile_text.h"

namespace {

void check(bool condition) {
    if (!condition)
        std::abort();
}

// What a call reports always leaves room for its final NUL.
bool fits(const std::string& answer, std::size_t size) {
    return answer.size() + 1 <= std::max<std::size_t>(size, 1);
}

void checkAnswersFit(const fc::ProfileText& text, const std::string& section, std::size_t size) {
    std::string value = fc::profileString(text, section, std::string("k"), "def", size);
    check(fits(value, size));
    check(value.find('\0') == std::string::npos);
    check(fits(fc::profileString(text, section, std::nullopt, "", size), size));
    check(fits(fc::profileString(text, std::nullopt, std::nullopt, "", size), size));
    check(fits(fc::profileSection(text, section, size), size));
}

void checkEdits(const std::string& input, const std::string& section) {
    fc::ProfileText text(input);
    text.setValue(section, "FuzzKey", "value");
    check(text.value(section, "fuzzkey") == std::optional<std::string>("value"));
    fc::ProfileText again(text.text());
    check(again.value(section, "FUZZKEY") == std::optional<std::string>("value"));
    again.deleteSection(section);
    check(!again.entries(section).has_value());
    check(!fc::ProfileText(again.text()).entries(section).has_value());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    // The first byte picks a buffer size, the rest is the file.
    std::size_t bufferSize = data[0];
    std::string input(reinterpret_cast<const char*>(data + 1), size - 1);

    fc::ProfileText text(input);
    check(text.text() == input);
    for (const std::string& section : text.sectionNames()) {
        check(text.entries(section).has_value());
        checkAnswersFit(text, section, bufferSize);
        checkAnswersFit(text, section, 255);
    }
    checkAnswersFit(text, "missing section", bufferSize);
    checkEdits(input, "Direcciones");
    if (!text.sectionNames().empty())
        checkEdits(input, text.sectionNames().front());
    return 0;
}
