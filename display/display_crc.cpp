#include "display/display_crc.h"

namespace fc {

namespace {

constexpr std::array<Integer, 256> tablaCrc() {
    std::array<Integer, 256> tabla{};
    for (int i = 0; i < 256; ++i) {
        unsigned valor = static_cast<unsigned>(i) << 8;
        for (int bit = 0; bit < 8; ++bit)
            valor = (valor & 0x8000) ? ((valor << 1) ^ 0x1021) : (valor << 1);
        tabla[i] = static_cast<Integer>(static_cast<std::uint16_t>(valor & 0xFFFF));
    }
    return tabla;
}

constexpr std::array<Integer, 256> kConstantes = tablaCrc();

}  // namespace

const std::array<Integer, 256>& constantesCrc() {
    return kConstantes;
}

void LoadArray(std::array<Integer, 256>& destino, const std::array<Integer, 256>& origen) {
    for (std::size_t i = 0; i < origen.size(); ++i) destino[i] = origen[i];
}

Long pasoCrc(const std::array<Integer, 256>& tabla, Long crc, Byte b) {
    Long i = ((crc / 256) ^ b) & 0xFF;
    Long sinSigno = static_cast<std::uint16_t>(tabla[static_cast<std::size_t>(i)]);
    return ((crc * 256) & 0xFF00) ^ sinSigno;
}

}  // namespace fc
