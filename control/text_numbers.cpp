#include "control/text_numbers.h"

#include <cmath>
#include <cstdlib>
#include <optional>

#include "platform/runtime_error.h"

namespace fc {

namespace {

bool esBlanco(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// The number in the text, or nothing. Only a plain decimal with an optional
// sign, point and exponent counts: strtod alone would also take hexadecimal,
// "inf" and "nan", which the run time does not.
std::optional<double> leeNumero(const std::string& texto) {
    std::size_t inicio = 0, fin = texto.size();
    while (inicio < fin && esBlanco(texto[inicio])) ++inicio;
    while (fin > inicio && esBlanco(texto[fin - 1])) --fin;
    std::string nucleo = texto.substr(inicio, fin - inicio);
    if (nucleo.empty() || nucleo.find_first_not_of("0123456789+-.eE") != std::string::npos)
        return std::nullopt;
    char* final = nullptr;
    double valor = std::strtod(nucleo.c_str(), &final);
    if (final != nucleo.c_str() + nucleo.size())
        return std::nullopt;
    return valor;
}

double redondeado(const std::string& texto, double minimo, double maximo) {
    std::optional<double> valor = leeNumero(texto);
    if (!valor)
        throw RuntimeError(err::kTypeMismatch);
    double entero = std::nearbyint(*valor);  // the default mode rounds half to even
    if (entero < minimo || entero > maximo)
        throw RuntimeError(err::kOverflow);
    return entero;
}

}  // namespace

bool esNumerico(const std::string& texto) {
    return leeNumero(texto).has_value();
}

Integer enteroDeTexto(const std::string& texto) {
    return static_cast<Integer>(redondeado(texto, -32768.0, 32767.0));
}

Long largoDeTexto(const std::string& texto) {
    return static_cast<Long>(redondeado(texto, -2147483648.0, 2147483647.0));
}

}  // namespace fc
