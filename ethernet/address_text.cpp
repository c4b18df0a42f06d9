#include "ethernet/address_text.h"

#include <cstdio>

namespace fc {

std::string IpATexto(const std::vector<Byte>& bytes, Integer cuenta) {
    std::string texto;
    for (Integer i = 0; i < cuenta && static_cast<size_t>(i) < bytes.size(); ++i)
        texto += std::to_string(bytes[i]) + ".";
    if (!texto.empty())
        texto.pop_back();
    return texto;
}

std::string MacATexto(const std::vector<Byte>& bytes, const std::string& separador) {
    if (bytes.size() < 6)
        return kErrorMac;
    std::string texto;
    char hex[3];
    for (size_t i = 0; i < 6; ++i) {
        std::snprintf(hex, sizeof hex, "%02X", bytes[i]);
        texto += hex;
        if (i < 5)
            texto += separador;
    }
    return texto;
}

}  // namespace fc
