#include "ethernet/respuesta_balanza.h"

#include <algorithm>

#include "firmware/hex_text.h"

namespace fc {

namespace {
constexpr std::size_t kMaxLongitud = 32767;
}  // namespace

void TomaRespuesta(RespuestaBalanza& r, const std::string& datos_recibidos) {
    r.codigo_respuesta = datos_recibidos.empty() ? Byte{0} : static_cast<Byte>(datos_recibidos[0]);
    if (r.codigo_respuesta == respuesta::kChecksum) {
        r.checksum_balanza =
            ValHexAt(datos_recibidos, 7, 2) * 256 + ValHexAt(datos_recibidos, 9, 2);
        ++r.respuestas_checksum;
    } else if (r.codigo_respuesta == respuesta::kError) {
        r.error_balanza = ValHexAt(datos_recibidos, 6, 1) * 16 + ValHexAt(datos_recibidos, 7, 1);
    }
    // A flood of more than the field can count is told as the most it can:
    // only "at least one byte" is ever asked of it.
    const std::size_t largo = std::min<std::size_t>(datos_recibidos.size(), kMaxLongitud);
    r.longitud_respuesta = static_cast<Integer>(largo);
}

}  // namespace fc
