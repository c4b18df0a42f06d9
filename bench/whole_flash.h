// The firmware file of the Ethernet benchmarks: 704 KB, the whole loadable
// flash (0x40000-0xEFFFF), in 16-byte records with a 02 record for each
// 64 KB bank.
#pragma once

#include <filesystem>
#include <fstream>
#include <vector>

#include "support/intel_hex.h"

namespace fc::bench {

inline void writeWholeFlash(const std::filesystem::path& file) {
    std::ofstream out(file, std::ios::binary);
    for (int bank = 0x4000; bank < 0xF000; bank += 0x1000) {
        out << fc::test::bankRecord(bank) << "\r\n";
        for (int address = 0; address < 0x10000; address += 16) {
            std::vector<int> data(16);
            for (int k = 0; k < 16; ++k) data[k] = (address + k + bank) & 0xFF;
            out << fc::test::intelRecord(address, 0, data) << "\r\n";
        }
    }
    out << fc::test::endRecord() << "\r\n";
}

}  // namespace fc::bench
