// The tags of the transmit file's questions: the run time's random
// generator, seeded from the clock before each draw, and the decimal text of
// the number drawn from its third character on.
#pragma once

#include <string>

#include "platform/vb_types.h"

namespace fc {

// Randomize with the seconds since midnight: the seed's middle bits take the
// timer's, the rest of the generator's state stays.
void randomize(Long& semilla, double temporizador);

// Rnd: the next number of the generator, 0 to below 1.
float rnd(Long& semilla);

// A single-precision number as the run time writes it (see number_text.h).
std::string textoSimple(float valor);

// The six-character tag of a draw: the number's text from its third
// character on, six at most, padded on the left with "0".
std::string etiquetaDe(float valor);

}  // namespace fc
