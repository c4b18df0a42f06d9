// The two tests of the scale list's addresses.
#pragma once

#include <string>
#include <vector>

namespace fc {

struct CommonModule;
class TextBox;

// A rough test of an IP address in the box's text, with limits that are
// required as they stand: it wants exactly three dots, at most three
// characters before each of them, and something not blank after the last.
// Nothing tests digits or ranges: "999.abc.1.22222" and "1..3.4" pass,
// "1.2.3." and "1.2.3" fail.
bool EsDireccionIP(const TextBox& caja);

// True when `ip` equals, as exact text, an entry of `lista_balanzas` at an
// index other than the number in `indice`; stops at the first. A text that is
// not a number goes to the standard handler ("DireccionRepetida") and gives
// false.
bool DireccionRepetida(CommonModule& c, const std::vector<std::string>& lista_balanzas,
                       const std::string& ip, const std::string& indice);

}  // namespace fc
