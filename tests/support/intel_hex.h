// Intel HEX text written by the standard's own rule, for tests that feed
// firmware files to the readers: the checksum of a record is the two's
// complement of the sum of every byte from the length to the last datum.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace fc::test {

inline std::string hexPair(int value) {
    char text[3];
    std::snprintf(text, sizeof text, "%02X", value & 0xFF);
    return text;
}

inline std::string intelRecord(int address, int type, const std::vector<int>& data) {
    std::vector<int> bytes = {static_cast<int>(data.size()), (address >> 8) & 0xFF, address & 0xFF,
                              type};
    bytes.insert(bytes.end(), data.begin(), data.end());
    int sum = 0;
    std::string record = ":";
    for (int b : bytes) {
        record += hexPair(b);
        sum += b;
    }
    return record + hexPair(-sum);
}

// An extended segment address record selecting `bank` (linear bank * 16).
inline std::string bankRecord(int bank) {
    return intelRecord(0, 2, {(bank >> 8) & 0xFF, bank & 0xFF});
}

inline std::string endRecord() {
    return ":00000001FF";
}

// Lines joined with CR LF after each, as firmware files are written.
inline std::string hexFile(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    return text;
}

// `count` bytes of a pattern that tells every position apart within 251.
inline std::vector<int> patternBytes(int seed, int count) {
    std::vector<int> data;
    for (int k = 0; k < count; ++k) data.push_back((seed * 7 + k * 13 + k / 251) & 0xFF);
    return data;
}

}  // namespace fc::test
