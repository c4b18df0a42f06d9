#include "visor/dump_answer.h"

#include "firmware/hex_text.h"
#include "visor/mv510_texts.h"

namespace fc {

namespace {

std::string_view trozo(const std::string& texto, std::size_t posicion, std::size_t cuantos) {
    return fieldAt(texto, posicion, cuantos);
}

}  // namespace

bool volcadoCoincide(const std::string& respuesta, const std::string& orden,
                     const std::string& registro) {
    const std::size_t longitud = orden.size();
    if (trozo(respuesta, 1, longitud) != orden)
        return false;
    for (std::size_t k = 0; k < 8; ++k) {
        const std::size_t enRespuesta =
            longitud + mv510::kPrimeraLinea + mv510::kSeparacionLineas * k;
        if (trozo(respuesta, enRespuesta, 32) != trozo(registro, 10 + 32 * k, 32))
            return false;
    }
    return true;
}

}  // namespace fc
