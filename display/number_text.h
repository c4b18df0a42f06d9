// Numbers written as text the way the run time writes them when a number is
// joined to a text: the shortest form with up to 7 (single) or 15 (double)
// significant digits, no trailing zeros, "0.5" with its leading zero, and
// the "1.234E-05" form for numbers below 0.0001.
#pragma once

#include <string>

namespace fc {

std::string textoNumero(double valor, int digitos);

}  // namespace fc
