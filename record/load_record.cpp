#include "record/load_record.h"

#include <cctype>
#include <cstdio>

namespace fc {

namespace {

// A JSON string: quotes, backslashes and control characters escaped; bytes
// of 0x80 and above pass as they are (the texts are UTF-8 or plain ASCII).
std::string quoted(const std::string& text) {
    std::string out = "\"";
    for (unsigned char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else if (c == '\t') {
            out += "\\t";
        } else if (c < 0x20 || c == 0x7F) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", c);
            out += escape;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out + "\"";
}

std::string quotedOrNull(const std::optional<std::string>& text) {
    return text ? quoted(*text) : "null";
}

template <typename Number>
std::string numberOrNull(const std::optional<Number>& n) {
    return n ? std::to_string(*n) : "null";
}

class JsonObject {
  public:
    void add(const char* key, const std::string& valueText) {
        text_ += (text_.empty() ? "{" : ",") + quoted(key) + ":" + valueText;
    }
    std::string close() const { return text_ + "}"; }

  private:
    std::string text_;
};

}  // namespace

std::string recordJson(const LoadRecord& r) {
    JsonObject o;
    o.add("start", quoted(r.start));
    o.add("end", quoted(r.end));
    o.add("station", quoted(r.station));
    o.add("level", quoted(r.level));
    o.add("model", std::to_string(r.model));
    o.add("model_name", quoted(r.modelName));
    o.add("way", quoted(r.way));
    o.add("port", quoted(r.port));
    o.add("scale", std::to_string(r.scale));
    o.add("pass", std::to_string(r.pass));
    o.add("firmware", quoted(r.firmware));
    o.add("firmware_size", numberOrNull(r.firmwareSize));
    o.add("firmware_sha256", quotedOrNull(r.firmwareSha256));
    o.add("image_checksum", numberOrNull(r.imageChecksum));
    o.add("scale_checksum", numberOrNull(r.scaleChecksum));
    o.add("mac_old", quotedOrNull(r.macOld));
    o.add("mac_new", quotedOrNull(r.macNew));
    o.add("serial", quotedOrNull(r.serial));
    o.add("result", quoted(r.ok ? "ok" : "failed"));
    o.add("info", quoted(r.info));
    o.add("duration_ms", std::to_string(r.durationMs));
    return o.close();
}

std::string registerMac(const std::string& twelveHex) {
    if (twelveHex.size() != 12)
        return twelveHex;
    std::string text;
    for (std::size_t i = 0; i < 12; i += 2) {
        if (!std::isxdigit(static_cast<unsigned char>(twelveHex[i])) ||
            !std::isxdigit(static_cast<unsigned char>(twelveHex[i + 1])))
            return twelveHex;
        text += (i == 0 ? "" : "-") + twelveHex.substr(i, 2);
    }
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

}  // namespace fc
