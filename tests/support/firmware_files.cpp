#include "support/firmware_files.h"

#include <cstdio>

namespace fc::test {

namespace {
std::string hex2(int value) {
    char text[3];
    std::snprintf(text, sizeof text, "%02X", value & 0xFF);
    return text;
}

std::vector<int> sixteenBytes(unsigned seed) {
    std::vector<int> data;
    for (int i = 0; i < 16; ++i) data.push_back(static_cast<int>((seed * 7 + i * 13) & 0xFF));
    return data;
}
}  // namespace

std::string hexRecord(int type, unsigned address, const std::vector<int>& data) {
    int sum = static_cast<int>(data.size()) + static_cast<int>((address >> 8) & 0xFF) +
              static_cast<int>(address & 0xFF) + type;
    std::string text =
        ":" + hex2(static_cast<int>(data.size())) + hex2(address >> 8) + hex2(address) + hex2(type);
    for (int byte : data) {
        text += hex2(byte);
        sum += byte;
    }
    return text + hex2(-sum);
}

std::string intelHexFile(int dataRecords, unsigned start) {
    std::string file = hexRecord(2, 0, {0, 0}) + "\r\n";
    for (int i = 0; i < dataRecords; ++i) {
        unsigned address = start + 16u * static_cast<unsigned>(i);
        file += hexRecord(0, address & 0xFFFF, sixteenBytes(address)) + "\r\n";
    }
    return file + hexRecord(1, 0, {}) + "\r\n";
}

std::string s2Record(unsigned address, const std::vector<int>& data) {
    int count = static_cast<int>(data.size()) + 4;
    int sum = count + static_cast<int>((address >> 16) & 0xFF) +
              static_cast<int>((address >> 8) & 0xFF) + static_cast<int>(address & 0xFF);
    std::string text =
        "S2" + hex2(count) + hex2(address >> 16) + hex2(address >> 8) + hex2(address);
    for (int byte : data) {
        text += hex2(byte);
        sum += byte;
    }
    return text + hex2(~sum);
}

std::string sRecordFile(const std::vector<unsigned>& addresses) {
    std::string file = "S00600004844521B\r\n";
    for (unsigned address : addresses) file += s2Record(address, sixteenBytes(address)) + "\r\n";
    return file + "S804000000FB\r\n";
}

std::vector<unsigned> consecutive(unsigned start, int count) {
    std::vector<unsigned> addresses;
    for (int i = 0; i < count; ++i) addresses.push_back(start + 16u * static_cast<unsigned>(i));
    return addresses;
}

}  // namespace fc::test
