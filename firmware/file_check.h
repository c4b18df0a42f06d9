// A look at a firmware file before it is loaded, for the operator: how many
// data records and bytes it holds, the addresses they cover, and whether
// every record is sound (its checksum right), or the first line that is
// not. It informs only: the loaders read the file by their own rules.
// Intel HEX (":" lines, with the 02 and 04 address records) and Motorola
// S-records are understood; blank lines are passed over.
#pragma once

#include <string>

namespace fc {

struct FileCheck {
    bool readable = false;
    long records = 0;  // data records
    long bytes = 0;    // data bytes
    long lowest = -1;  // the lowest and highest address of the data, or -1
    long highest = -1;
    long firstBadLine = 0;  // 1-based; 0 when every line is sound
};

FileCheck checkFirmwareFile(const std::string& hostPath);

// One line for the file step, such as "File check: 4096 records, 65536
// bytes at 0x000000-0x00FFFF, every checksum good".
std::string fileCheckText(const FileCheck& check);

}  // namespace fc
