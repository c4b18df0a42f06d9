#include "display/question_tag.h"

#include <cstdint>
#include <cstring>

#include "common/padding.h"
#include "display/number_text.h"
#include "display/tx_records.h"

namespace fc {

void randomize(Long& semilla, double temporizador) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &temporizador, sizeof bits);
    auto alto = static_cast<std::uint32_t>(bits >> 32);
    std::uint32_t mezcla = ((alto & 0xFFFF) ^ (alto >> 16)) << 8;
    auto estado = static_cast<std::uint32_t>(semilla);
    semilla = static_cast<Long>((estado & 0xFF0000FF) | (mezcla & 0xFFFF00));
}

float rnd(Long& semilla) {
    std::uint64_t estado = static_cast<std::uint32_t>(semilla);
    estado = (estado * 0x43FD43FDULL + 0xC39EC3ULL) & 0xFFFFFF;
    semilla = static_cast<Long>(estado);
    return static_cast<float>(estado) / 16777216.0f;
}

std::string textoSimple(float valor) {
    return textoNumero(static_cast<double>(valor), 7);
}

std::string etiquetaDe(float valor) {
    return RellenarIzquierda("0", medio(textoSimple(valor), 3, 6), 6);
}

}  // namespace fc
