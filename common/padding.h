// Left padding of texts.
#pragma once

#include <string>

#include "platform/vb_types.h"

namespace fc {

// Pads `texto` on the left to `longitud` characters with the first character
// of `relleno`, by these rules in this order:
// 1. `texto` longer than `longitud`: `longitud` fill characters; the text is
//    dropped, not cut.
// 2. `relleno` blank: two blanks for each missing character, then `texto`.
// 3. otherwise the missing characters in the fill character, then `texto`.
// Errors (an empty fill where one is needed, a negative length) are ignored:
// the result is then empty.
std::string RellenarIzquierda(const std::string& relleno, const std::string& texto, Long longitud);

}  // namespace fc
