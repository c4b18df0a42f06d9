#include "display/number_text.h"

#include <cstdio>

namespace fc {

namespace {

// "1.5E-05": the mantissa without trailing zeros, at least two exponent digits.
std::string formaCientifica(const std::string& texto) {
    std::size_t e = texto.find('E');
    std::string mantisa = texto.substr(0, e);
    if (mantisa.find('.') != std::string::npos) {
        while (mantisa.back() == '0') mantisa.pop_back();
        if (mantisa.back() == '.')
            mantisa.pop_back();
    }
    std::string exponente = texto.substr(e + 1);
    char signo = exponente[0];
    std::string cifras = exponente.substr(1);
    while (cifras.size() > 2 && cifras[0] == '0') cifras.erase(0, 1);
    return mantisa + "E" + signo + cifras;
}

}  // namespace

std::string textoNumero(double valor, int digitos) {
    if (valor == 0.0)
        return "0";
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.*G", digitos, valor);
    std::string texto = buffer;
    return texto.find('E') != std::string::npos ? formaCientifica(texto) : texto;
}

}  // namespace fc
