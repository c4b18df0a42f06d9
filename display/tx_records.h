// The records of the driver's transmit file: 130 characters each, filled
// with "0" after their fields. dd is the display's two-character logical
// address.
#pragma once

#include <string>

#include "platform/vb_types.h"

namespace fc {

constexpr int kLongitudRegistro = 130;
// A record and its line end on disk: what every count of the file rests on.
constexpr int kRegistroEnDisco = 132;
// The longest firmware line a data record takes.
constexpr int kLongitudFuente = 43;
// What a sent question reads from its third character: the driver's mark
// over the first character of the command.
constexpr const char* kPreguntaEnviada = "*000ASKDG00";

// dd, "D100SW", the CRC in five digits, "KORVA".
std::string registroArranque(const std::string& dd, Long crc);

// dd, "D500", the record's number in six digits, line A padded with "0" to
// 43 characters, two blanks, line B padded the same way. A line longer than
// 43 characters is a run-time error (5).
std::string registroDatos(const std::string& dd, Long numero, const std::string& a,
                          const std::string& b);

// dd, "P000ASKDG0000", the six-character tag.
std::string registroPregunta(const std::string& dd, const std::string& etiqueta);

// The text of `texto` from the 1-based `desde`, `cuantos` characters at most
// (Mid$), empty past the end.
std::string medio(const std::string& texto, std::size_t desde, std::size_t cuantos);

}  // namespace fc
