// The record station of this machine: gethostname, the real-time clock,
// SHA-256 by OpenSSL, and appends with O_APPEND under an exclusive flock.
#pragma once

#include "platform/record_station.h"

namespace fc {

class LinuxRecordStation : public RecordStation {
  public:
    std::string stationName() const override;
    std::string utcNow() const override;
    std::optional<FileFacts> fileFacts(const std::string& path) const override;
    bool appendLine(const std::string& path, const std::string& line, std::string& why) override;
};

}  // namespace fc
