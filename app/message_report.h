// The lines a dry run prints for a message list: one per element, with its
// type, bank and number as sent, the length of its data and the data's
// CRC-32, so that two lists can be compared line by line.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "firmware/mensaje_eth.h"

namespace fc::batch {

// "msg <index> <tipo> <direccion> <numero> <length> <crc32>": hex in upper
// case, the two-byte fields in the order their bytes are sent.
std::string messageLine(std::size_t index, const MensajeEth& mensaje);

// One line per element, in order.
void printMessages(std::ostream& out, const std::vector<MensajeEth>& mensajes);

}  // namespace fc::batch
