// The banked dialect of the Serie_H scale and the TR-6100 and Matrix 4000
// labellers: S-records each ended by a carriage return, at 8 data bits and
// no parity, with a command to record the gathered bank each time the
// address moves into another 32 KB bank.
#pragma once

#include <string>

#include "serial/line_panel.h"

namespace fc {

namespace banked {
constexpr char kProbe = 0x15;           // both ways: are you there / here I am
constexpr char kFirstLineTaken = 0x17;  // from the device
constexpr char kErase = 0x17;           // to the device
constexpr char kErased = 0x1A;
constexpr char kLineTaken = 0x19;
constexpr char kRecordBank = 0x05;
constexpr char kBankRecorded = 0x1B;
constexpr char kEndOfLoad = 0x07;
constexpr char kLoadEnded = 0x1C;
constexpr char kLineEnd = 0x0D;
}  // namespace banked

// The 32 KB bank of an S-record with a 24-bit address, from the digits at
// positions 6 and 7. A letter at position 6 is a run-time error (13).
Integer bancoDeLinea(const std::string& linea);

// The presence probe; reopens the line first if it is closed.
Flag testk1(LinePanel& panel);
// One line and its answer.
Flag EnviaLineaBanco(LinePanel& panel);
// Records the bank gathered so far.
Flag GrabaBanco(LinePanel& panel);
// Ends the load.
Flag FinFirmcast(LinePanel& panel);

// The first file line, then the erase of the flash.
Flag bankedFirstLine(LinePanel& panel);
// Every further line up to the closing S8/S9 record, which is not sent.
LoopOutcome bankedLoop(LinePanel& panel);

}  // namespace fc
