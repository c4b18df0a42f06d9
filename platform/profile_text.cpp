#include "platform/profile_text.h"

#include <cctype>

namespace fc {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f';
}

std::string trim(std::string_view s) {
    std::size_t first = 0, last = s.size();
    while (first < last && isBlank(s[first])) ++first;
    while (last > first && isBlank(s[last - 1])) --last;
    return std::string(s.substr(first, last - first));
}

}  // namespace

bool sameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (std::tolower(static_cast<unsigned char>(a[i])) !=
            std::tolower(static_cast<unsigned char>(b[i]))) {
            return false;
        }
    }
    return true;
}

ProfileText::ProfileText(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t nl = text.find('\n', start);
        if (nl == std::string_view::npos) {
            lines_.push_back({std::string(text.substr(start)), ""});
            break;
        }
        std::size_t bodyEnd = (nl > start && text[nl - 1] == '\r') ? nl - 1 : nl;
        lines_.push_back({std::string(text.substr(start, bodyEnd - start)),
                          std::string(text.substr(bodyEnd, nl + 1 - bodyEnd))});
        start = nl + 1;
    }
}

ProfileText::Parsed ProfileText::parse(const std::string& body) {
    std::string t = trim(body);
    Parsed p;
    if (t.empty())
        return p;
    if (t[0] == ';') {
        p.kind = Kind::Comment;
        return p;
    }
    std::size_t close = t.rfind(']');
    if (t[0] == '[' && close != std::string::npos) {
        p.kind = Kind::Header;
        p.name = trim(std::string_view(t).substr(1, close - 1));
        return p;
    }
    p.kind = Kind::Entry;
    std::size_t eq = t.find('=');
    if (eq == std::string::npos) {
        p.name = t;
    } else {
        p.name = trim(std::string_view(t).substr(0, eq));
        p.value = trim(std::string_view(t).substr(eq + 1));
    }
    return p;
}

std::size_t ProfileText::findSection(std::string_view section) const {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        Parsed p = parse(lines_[i].body);
        if (p.kind == Kind::Header && sameName(p.name, section))
            return i;
    }
    return npos;
}

std::size_t ProfileText::sectionEnd(std::size_t header) const {
    std::size_t i = header + 1;
    while (i < lines_.size() && parse(lines_[i].body).kind != Kind::Header) ++i;
    return i;
}

std::size_t ProfileText::findKey(std::size_t header, std::string_view key) const {
    std::size_t end = sectionEnd(header);
    for (std::size_t i = header + 1; i < end; ++i) {
        Parsed p = parse(lines_[i].body);
        if (p.kind == Kind::Entry && sameName(p.name, key))
            return i;
    }
    return npos;
}

std::size_t ProfileText::lastContentLine(std::size_t header) const {
    std::size_t last = header;
    std::size_t end = sectionEnd(header);
    for (std::size_t i = header + 1; i < end; ++i) {
        if (parse(lines_[i].body).kind != Kind::Blank)
            last = i;
    }
    return last;
}

std::optional<std::string> ProfileText::value(std::string_view section,
                                              std::string_view key) const {
    std::size_t header = findSection(section);
    if (header == npos || key.empty())
        return std::nullopt;
    std::size_t line = findKey(header, key);
    if (line == npos)
        return std::nullopt;
    return parse(lines_[line].body).value;
}

std::vector<std::string> ProfileText::sectionNames() const {
    std::vector<std::string> names;
    for (const Line& line : lines_) {
        Parsed p = parse(line.body);
        if (p.kind == Kind::Header)
            names.push_back(p.name);
    }
    return names;
}

std::optional<std::vector<std::string>> ProfileText::keyNames(std::string_view section) const {
    std::size_t header = findSection(section);
    if (header == npos)
        return std::nullopt;
    std::vector<std::string> names;
    std::size_t end = sectionEnd(header);
    for (std::size_t i = header + 1; i < end; ++i) {
        Parsed p = parse(lines_[i].body);
        if (p.kind == Kind::Entry && !p.name.empty())
            names.push_back(p.name);
    }
    return names;
}

std::optional<std::vector<std::string>> ProfileText::entries(std::string_view section) const {
    std::size_t header = findSection(section);
    if (header == npos)
        return std::nullopt;
    std::vector<std::string> out;
    std::size_t end = sectionEnd(header);
    for (std::size_t i = header + 1; i < end; ++i) {
        Parsed p = parse(lines_[i].body);
        if (p.kind != Kind::Entry || p.name.empty())
            continue;
        out.push_back(p.value ? p.name + "=" + *p.value : p.name);
    }
    return out;
}

void ProfileText::insertLine(std::size_t at, std::string body) {
    // The line before the new one may be the file's last, without an end.
    if (at > 0 && lines_[at - 1].end.empty())
        lines_[at - 1].end = "\r\n";
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at), Line{std::move(body), "\r\n"});
}

void ProfileText::setValue(std::string_view section, std::string_view key, std::string_view value) {
    std::string entry = std::string(key) + "=" + std::string(value);
    std::size_t header = findSection(section);
    if (header == npos) {
        insertLine(lines_.size(), "[" + std::string(section) + "]");
        insertLine(lines_.size(), entry);
        return;
    }
    std::size_t line = findKey(header, key);
    if (line != npos) {
        // The key keeps the spelling it has in the file.
        lines_[line].body = parse(lines_[line].body).name + "=" + std::string(value);
        return;
    }
    insertLine(lastContentLine(header) + 1, entry);
}

bool ProfileText::deleteKey(std::string_view section, std::string_view key) {
    std::size_t header = findSection(section);
    if (header == npos)
        return false;
    std::size_t line = findKey(header, key);
    if (line == npos)
        return false;
    lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(line));
    return true;
}

bool ProfileText::deleteSection(std::string_view section) {
    bool removed = false;
    for (std::size_t header = findSection(section); header != npos; header = findSection(section)) {
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(header),
                     lines_.begin() + static_cast<std::ptrdiff_t>(sectionEnd(header)));
        removed = true;
    }
    return removed;
}

std::string ProfileText::text() const {
    std::string out;
    for (const Line& line : lines_) out += line.body + line.end;
    return out;
}

}  // namespace fc
