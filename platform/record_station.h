// What a record of the devices loaded needs of the machine it runs on: the
// station's name, the time of day, the size and SHA-256 of a firmware file,
// and a record file that several programs append lines to at the same time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace fc {

struct FileFacts {
    std::int64_t size = 0;
    std::string sha256;  // 64 lower-case hex digits
};

class RecordStation {
  public:
    virtual ~RecordStation() = default;

    // The machine's host name.
    virtual std::string stationName() const = 0;
    // The time now in UTC, to the millisecond: "2026-11-24T01:02:03.456Z".
    virtual std::string utcNow() const = 0;
    // The size and digest of `path`; nullopt when it cannot be read.
    virtual std::optional<FileFacts> fileFacts(const std::string& path) const = 0;
    // Appends `line` and a line end to `path` (made when missing) in one
    // write, so that another process appending meanwhile can neither split
    // it nor be split by it. False, with the system's reason, when it cannot.
    virtual bool appendLine(const std::string& path, const std::string& line, std::string& why) = 0;
};

}  // namespace fc
