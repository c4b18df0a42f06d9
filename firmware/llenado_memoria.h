// LlenadoMemoria: the message list of a synthetic flash image, a known
// pattern over the whole programmable area of a scale (0x48000 to 0xEFFFF),
// in place of one read from a file. The erase message, then for each of
// eleven banks its bank message and its data messages, then the end of the
// program; no end of load. Each data message is a letter, 1022 times a digit
// and the letter again; the letter runs A..J, the digit 1..9, both moving on
// at each message and starting again at A and 1 with each bank.
#pragma once

#include <vector>

#include "firmware/mensaje_eth.h"

namespace fc {

class Dialogs;

void LlenadoMemoria(std::vector<MensajeEth>& mensajes, Dialogs& dialogs);

}  // namespace fc
