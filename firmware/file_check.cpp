#include "firmware/file_check.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <vector>

namespace fc {

namespace {

int hexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

// The bytes of the hex text after the record mark, or empty when the text
// is not whole pairs of hex digits.
std::vector<int> bytesOf(const std::string& text) {
    std::vector<int> bytes;
    if (text.size() % 2 != 0)
        return {};
    for (std::size_t at = 0; at < text.size(); at += 2) {
        int high = hexDigit(text[at]), low = hexDigit(text[at + 1]);
        if (high < 0 || low < 0)
            return {};
        bytes.push_back(high * 16 + low);
    }
    return bytes;
}

int sum(const std::vector<int>& bytes) {
    int total = 0;
    for (int b : bytes) total += b;
    return total & 0xFF;
}

void takeData(FileCheck& check, long address, long count) {
    if (count <= 0)
        return;
    ++check.records;
    check.bytes += count;
    check.lowest = check.lowest < 0 ? address : std::min(check.lowest, address);
    check.highest = std::max(check.highest, address + count - 1);
}

// One Intel HEX record: false when it is not sound.
bool intelRecord(FileCheck& check, const std::string& text, long& base) {
    std::vector<int> b = bytesOf(text);
    if (b.size() < 5 || static_cast<int>(b.size()) != b[0] + 5 || sum(b) != 0)
        return false;
    const long address = b[1] * 256L + b[2];
    switch (b[3]) {
        case 0x00:
            takeData(check, base + address, b[0]);
            break;
        case 0x02:
            if (b[0] == 2)
                base = (b[4] * 256L + b[5]) * 16;
            break;
        case 0x04:
            if (b[0] == 2)
                base = (b[4] * 256L + b[5]) << 16;
            break;
        default:
            break;
    }
    return true;
}

// One S-record: false when it is not sound.
bool sRecord(FileCheck& check, char type, const std::string& text) {
    std::vector<int> b = bytesOf(text);
    if (b.size() < 3 || static_cast<int>(b.size()) != b[0] + 1 || sum(b) != 0xFF)
        return false;
    const int addressBytes = type == '1' ? 2 : type == '2' ? 3 : type == '3' ? 4 : 0;
    if (addressBytes == 0)
        return true;
    if (b[0] < addressBytes + 1)
        return false;
    long address = 0;
    for (int i = 1; i <= addressBytes; ++i) address = address * 256 + b[i];
    takeData(check, address, b[0] - addressBytes - 1);
    return true;
}

}  // namespace

FileCheck checkFirmwareFile(const std::string& hostPath) {
    FileCheck check;
    std::ifstream in(hostPath, std::ios::binary);
    if (!in)
        return check;
    check.readable = true;
    long base = 0;
    long number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.empty())
            continue;
        bool sound = false;
        if (line[0] == ':')
            sound = intelRecord(check, line.substr(1), base);
        else if (line[0] == 'S' && line.size() >= 2)
            sound = sRecord(check, line[1], line.substr(2));
        if (!sound) {
            check.firstBadLine = number;
            break;
        }
    }
    return check;
}

std::string fileCheckText(const FileCheck& check) {
    if (!check.readable)
        return "File check: the file cannot be read";
    if (check.firstBadLine != 0)
        return "File check: line " + std::to_string(check.firstBadLine) +
               " is not a sound record (its form or its checksum is wrong)";
    std::string text = "File check: " + std::to_string(check.records) + " records, " +
                       std::to_string(check.bytes) + " bytes";
    if (check.records > 0) {
        char range[40];
        std::snprintf(range, sizeof range, " at 0x%06lX-0x%06lX", check.lowest, check.highest);
        text += range;
    }
    return text + ", every checksum good";
}

}  // namespace fc
