#include "common/address_tests.h"

#include <cstdlib>

#include "common/common_module.h"
#include "common/standard_handler.h"
#include "platform/controls.h"
#include "platform/runtime_error.h"

namespace fc {

namespace {

bool blankAfterTrim(const std::string& s) {
    return s.find_first_not_of(' ') == std::string::npos;
}

// A number in text as a comparison with a number reads it: blanks around
// allowed, anything else a type mismatch.
double asNumber(const std::string& text) {
    std::size_t first = text.find_first_not_of(' ');
    std::size_t last = text.find_last_not_of(' ');
    if (first == std::string::npos)
        throw RuntimeError(err::kTypeMismatch);
    std::string core = text.substr(first, last - first + 1);
    char* end = nullptr;
    double value = std::strtod(core.c_str(), &end);
    if (end != core.c_str() + core.size())
        throw RuntimeError(err::kTypeMismatch);
    return value;
}

}  // namespace

bool EsDireccionIP(const TextBox& caja) {
    const std::string& s = caja.text();
    if (blankAfterTrim(s))
        return false;
    std::size_t inicio = 0;  // where the current field starts
    int campo = 1;
    int puntos = 0;
    for (;;) {
        std::size_t punto = s.find('.', inicio);
        if (punto == std::string::npos) {
            if (campo < 4 || blankAfterTrim(s.substr(inicio)))
                return false;
            break;
        }
        if (++puntos > 3)
            return false;
        if (punto - inicio > 3)
            return false;
        ++campo;
        inicio = punto + 1;
    }
    return puntos == 3;
}

bool DireccionRepetida(CommonModule& c, const std::vector<std::string>& lista_balanzas,
                       const std::string& ip, const std::string& indice) {
    bool repetida = false;
    withStandardHandler(c, "DireccionRepetida", [&] {
        double propio = asNumber(indice);
        for (std::size_t i = 0; i < lista_balanzas.size(); ++i) {
            if (static_cast<double>(i) != propio && lista_balanzas[i] == ip) {
                repetida = true;
                return;
            }
        }
    });
    return repetida;
}

}  // namespace fc
