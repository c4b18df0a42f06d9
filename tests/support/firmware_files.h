// Firmware files made for the tests: Intel HEX for the numbered-line models,
// S-records for the banked ones, with right checksums unless asked otherwise.
#pragma once

#include <string>
#include <vector>

namespace fc::test {

// One Intel HEX record with its checksum, without a line end.
std::string hexRecord(int type, unsigned address, const std::vector<int>& data);
// A file: the segment record first, `dataRecords` records of 16 bytes from
// `start`, and the end-of-file record; CR LF line ends.
std::string intelHexFile(int dataRecords, unsigned start = 0);

// One S2 record (24-bit address) with its checksum, without a line end.
std::string s2Record(unsigned address, const std::vector<int>& data);
// A file: an S0 header, one S2 record of 16 bytes at each address given,
// and an S8 end record; CR LF line ends.
std::string sRecordFile(const std::vector<unsigned>& addresses);
// Addresses of `count` consecutive 16-byte records from `start`.
std::vector<unsigned> consecutive(unsigned start, int count);

}  // namespace fc::test
