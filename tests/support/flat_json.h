// A strict reader of one flat JSON object, the form of a record line: keys
// and values of strings, numbers, true, false and null, nothing nested. A
// line that is not such an object in full (a cut line, a stray byte after
// it, a bad escape) gives nothing.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace fc::test {

struct FlatJson {
    std::vector<std::string> keys;               // in their order
    std::map<std::string, std::string> strings;  // the values that are strings, unescaped
    std::map<std::string, std::string> others;   // numbers, true, false, null, as written

    bool isNull(const std::string& key) const {
        auto it = others.find(key);
        return it != others.end() && it->second == "null";
    }
    std::string text(const std::string& key) const {
        auto it = strings.find(key);
        return it == strings.end() ? "<not a string>" : it->second;
    }
};

std::optional<FlatJson> readFlatJson(const std::string& line);

}  // namespace fc::test
