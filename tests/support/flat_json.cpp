#include "support/flat_json.h"

#include <cctype>
#include <cstdlib>

namespace fc::test {

namespace {

class Reader {
  public:
    explicit Reader(const std::string& text) : t_(text) {}

    std::optional<FlatJson> object() {
        FlatJson json;
        if (!take('{'))
            return std::nullopt;
        if (take('}'))
            return atEnd() ? std::optional<FlatJson>(json) : std::nullopt;
        do {
            std::string key;
            if (!string(key) || !take(':') || json.strings.count(key) || json.others.count(key))
                return std::nullopt;
            json.keys.push_back(key);
            std::string value;
            if (peek() == '"') {
                if (!string(value))
                    return std::nullopt;
                json.strings[key] = value;
            } else if (scalar(value)) {
                json.others[key] = value;
            } else {
                return std::nullopt;
            }
        } while (take(','));
        if (!take('}') || !atEnd())
            return std::nullopt;
        return json;
    }

  private:
    char peek() const { return i_ < t_.size() ? t_[i_] : '\0'; }
    bool take(char c) {
        if (peek() != c)
            return false;
        ++i_;
        return true;
    }
    bool atEnd() const { return i_ == t_.size(); }

    bool string(std::string& out) {
        if (!take('"'))
            return false;
        while (i_ < t_.size()) {
            const unsigned char c = static_cast<unsigned char>(t_[i_++]);
            if (c == '"')
                return true;
            if (c < 0x20)
                return false;
            if (c != '\\') {
                out += static_cast<char>(c);
                continue;
            }
            if (!escape(out))
                return false;
        }
        return false;
    }

    bool escape(std::string& out) {
        const char e = peek();
        ++i_;
        switch (e) {
            case '"':
                out += '"';
                return true;
            case '\\':
                out += '\\';
                return true;
            case '/':
                out += '/';
                return true;
            case 'n':
                out += '\n';
                return true;
            case 'r':
                out += '\r';
                return true;
            case 't':
                out += '\t';
                return true;
            case 'b':
                out += '\b';
                return true;
            case 'f':
                out += '\f';
                return true;
            case 'u': {
                if (i_ + 4 > t_.size())
                    return false;
                const std::string digits = t_.substr(i_, 4);
                for (char d : digits) {
                    if (!std::isxdigit(static_cast<unsigned char>(d)))
                        return false;
                }
                i_ += 4;
                const long code = std::strtol(digits.c_str(), nullptr, 16);
                if (code >= 0x80)
                    return false;  // a record line escapes control characters only
                out += static_cast<char>(code);
                return true;
            }
            default:
                return false;
        }
    }

    bool scalar(std::string& out) {
        for (const char* word : {"null", "true", "false"}) {
            if (t_.compare(i_, std::string(word).size(), word) == 0) {
                out = word;
                i_ += out.size();
                return true;
            }
        }
        const std::size_t start = i_;
        take('-');
        if (!std::isdigit(static_cast<unsigned char>(peek())))
            return false;
        if (take('0') && std::isdigit(static_cast<unsigned char>(peek())))
            return false;
        while (std::isdigit(static_cast<unsigned char>(peek()))) ++i_;
        out = t_.substr(start, i_ - start);
        return true;
    }

    const std::string& t_;
    std::size_t i_ = 0;
};

}  // namespace

std::optional<FlatJson> readFlatJson(const std::string& line) {
    return Reader(line).object();
}

}  // namespace fc::test
