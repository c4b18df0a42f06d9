// The checksum a scale must report after an Ethernet load, over the image of
// the extended reader (index 0 stands for address 0x40000): the 16-bit words
// of 0x40000 to 0xEFFFF, low byte first, added modulo 65536, and the sum's
// complement. The range is fixed, whatever the file held: cells no record
// wrote count as 0xFF.
#pragma once

#include <vector>

#include "platform/vb_types.h"

namespace fc {

// The image must reach index 0xAFFFF; a shorter one is RuntimeError 9.
Long calcula_checksum_memoria(const std::vector<Byte>& memoria);

}  // namespace fc
