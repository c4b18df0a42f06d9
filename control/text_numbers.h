// Numbers read from text as the run time's conversions read them: blanks,
// tabs and line ends around the number are allowed, anything else is a type
// mismatch, and a value that does not fit is an overflow.
#pragma once

#include <string>

#include "platform/vb_types.h"

namespace fc {

// True when the text reads as a number (IsNumeric).
bool esNumerico(const std::string& texto);

// The text as an Integer (CInt), rounded half to even: 13 when it is not a
// number, 6 when it is outside -32768..32767.
Integer enteroDeTexto(const std::string& texto);

// The text as a Long (CLng), rounded half to even: 13 or 6 as above.
Long largoDeTexto(const std::string& texto);

}  // namespace fc
