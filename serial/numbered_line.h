// The numbered-line dialect of the Serie_N and Serie_W scales and the TR-8200
// labeller: Intel HEX records, each behind a frame head "H" and its number
// in hex, at 7 data bits and even parity. The device answers 0x06 (taken),
// 0x02 (taken; after the end command: give me a MAC) or 0x15 (send again).
#pragma once

#include <string>

#include "serial/line_panel.h"

namespace fc {

namespace numbered {
constexpr char kAck = 0x06;
constexpr char kAckWantsMac = 0x02;
constexpr char kRefused = 0x15;
constexpr const char* kHandshake = "H0000:020000550000A9";
constexpr const char* kEndCommand = ":0000006799";
constexpr int kMaxResends = 5;
constexpr int kLineTimeout = 14000;
constexpr int kLongestWait = 65535;
}  // namespace numbered

// "H", then the number in upper-case hex with at least four digits.
std::string cabeceraNumerada(Long numero);

// Sends `linea_fichero` behind the frame head of `numero_linea`, resending it
// on 0x15 up to five times. True when the device took it. Sets `pide_mac` on
// the answer to the end command.
Flag EnviaLineaNumerada(LinePanel& panel);

// The handshake H0000 on a line that is open; False (after telling the
// operator and closing up) when the device is silent or answers wrongly.
Flag numberedConnect(LinePanel& panel);
// The first file line as frame 1; the device erases its flash before it
// answers.
Flag numberedFirstLine(LinePanel& panel);
// Every further line up to the end-of-file record.
LoopOutcome numberedLoop(LinePanel& panel);

}  // namespace fc
