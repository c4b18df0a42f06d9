#include "platform/text_case.h"

#include <cctype>

namespace fs = std::filesystem;

namespace fc {

std::string lowerCase(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::string entryIgnoringCase(const fs::path& folder, const std::string& name) {
    std::error_code ec;
    if (fs::exists(folder / name, ec))
        return name;
    const std::string wanted = lowerCase(name);
    for (const auto& entry : fs::directory_iterator(folder, ec)) {
        std::string candidate = entry.path().filename().string();
        if (lowerCase(candidate) == wanted)
            return candidate;
    }
    return "";
}

}  // namespace fc
