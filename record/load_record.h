// One line of the record of devices loaded: what was loaded where, when, by
// which station, and how it ended. Written as one JSON object a line (JSON
// Lines), its keys always present and in this order; a value the load did
// not come to know is null.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace fc {

struct LoadRecord {
    std::string start;    // UTC, "2026-11-24T01:02:03.456Z"
    std::string end;      // the same
    std::string station;  // the host name
    std::string level;    // the operating level, as the command line gave it
    int model = 0;        // the catalogue's code
    std::string modelName;
    std::string way;       // "ethernet" or "rs232"
    std::string port;      // the scale's IP address, or "COM1" ...
    int scale = 0;         // the place in the scale list, from 1; 0 on RS-232
    int pass = 0;          // the pass of Production Way, from 1
    std::string firmware;  // the file's name
    std::optional<std::int64_t> firmwareSize;
    std::optional<std::string> firmwareSha256;
    std::optional<long> imageChecksum;  // what the image must give
    std::optional<long> scaleChecksum;  // what the scale answered
    std::optional<std::string> macOld;  // "02-C0-DE-00-00-01"
    std::optional<std::string> macNew;  // given during this load
    std::optional<std::string> serial;  // taken by the record form
    bool ok = false;
    std::string info;  // the last information text of the load
    std::int64_t durationMs = 0;
};

// The record as one line of JSON, without its line end.
std::string recordJson(const LoadRecord& record);

// Twelve hex digits as the register writes a MAC: "02-C0-DE-00-00-01";
// anything else as it is.
std::string registerMac(const std::string& twelveHex);

}  // namespace fc
