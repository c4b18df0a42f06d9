#include "mac/mac_text.h"

#include <cstdio>

namespace fc {

std::string MacDeNumero(Long numero) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%06X", static_cast<unsigned>(numero));
    return kPrefijoMac + std::string(digits);
}

std::string MacConGuiones(const std::string& mac) {
    std::string text;
    for (size_t i = 0; i < mac.size(); i += 2) {
        if (i > 0)
            text += '-';
        text += mac.substr(i, 2);
    }
    return text;
}

}  // namespace fc
