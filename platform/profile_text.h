// The text of an INI file, read and edited by the rules of the Windows
// profile calls:
//
// - A line whose trimmed text starts with "[" and holds a "]" opens a section;
//   its name is what stands between the "[" and the last "]", trimmed.
// - A line whose trimmed text starts with ";" is a comment. Blank lines are
//   blank. Any other line is an entry: the key is the text before the first
//   "=", the value the text after it, both trimmed; a line without "=" is a
//   key without a value.
// - Section and key names are compared without regard to case. When a name
//   occurs twice, the first occurrence answers and is the one changed; deleting
//   a section removes every section of that name.
// - Lines before the first section belong to no section.
//
// An edit touches only the lines it must: comments, blank lines, lines of
// unknown form and each line's own end (CR LF or LF) are kept as they were.
// New lines end in CR LF.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fc {

class ProfileText {
  public:
    explicit ProfileText(std::string_view text = {});

    // The value of the key, trimmed; nullopt when the section or key is
    // missing or the key's line has no "=".
    std::optional<std::string> value(std::string_view section, std::string_view key) const;
    // Every section's name, in file order.
    std::vector<std::string> sectionNames() const;
    // The section's key names in file order; nullopt when it is missing.
    std::optional<std::vector<std::string>> keyNames(std::string_view section) const;
    // The section's entries as "key=value" (or "key" alone for a line without
    // "="), without comments, blank lines and entries with an empty key;
    // nullopt when the section is missing.
    std::optional<std::vector<std::string>> entries(std::string_view section) const;

    // Sets the key, adding the key after the section's last line that is not
    // blank, or the section at the end of the text, as needed.
    void setValue(std::string_view section, std::string_view key, std::string_view value);
    // Removes the key's line; false when there was none.
    bool deleteKey(std::string_view section, std::string_view key);
    // Removes every section of that name with all its lines; false when none.
    bool deleteSection(std::string_view section);

    std::string text() const;

  private:
    struct Line {
        std::string body;  // without its end
        std::string end;   // "\r\n", "\n" or "" for a last line without one
    };
    enum class Kind { Blank, Comment, Header, Entry };
    struct Parsed {
        Kind kind = Kind::Blank;
        std::string name;                  // section name, or key
        std::optional<std::string> value;  // entries with "=" only
    };
    static Parsed parse(const std::string& body);

    static constexpr std::size_t npos = static_cast<std::size_t>(-1);
    std::size_t findSection(std::string_view section) const;
    std::size_t sectionEnd(std::size_t header) const;
    std::size_t findKey(std::size_t header, std::string_view key) const;
    std::size_t lastContentLine(std::size_t header) const;
    void insertLine(std::size_t at, std::string body);

    std::vector<Line> lines_;
};

// Both names the same without regard to case (ASCII letters).
bool sameName(std::string_view a, std::string_view b);

}  // namespace fc
