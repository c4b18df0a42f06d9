// The display image's check: the CRC-16 with the polynomial 0x1021, most
// significant bit first, starting at 0, without a final inversion.
#pragma once

#include <array>
#include <vector>

#include "platform/vb_types.h"

namespace fc {

// The bytes of the image the CRC covers: 0 to 0xFEFF.
constexpr Long kBytesCrc = 0xFF00;

// The table of the CRC, as signed 16-bit values: entry 1 is 0x1021, entry 2
// 0x2042, entry 8 0x8108.
const std::array<Integer, 256>& constantesCrc();

// Copies the constants into the screen's table, index by index.
void LoadArray(std::array<Integer, 256>& destino, const std::array<Integer, 256>& origen);

// One step of the CRC: the running value after byte `b`.
Long pasoCrc(const std::array<Integer, 256>& tabla, Long crc, Byte b);

}  // namespace fc
