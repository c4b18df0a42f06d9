#include "display/tx_records.h"

#include "common/padding.h"
#include "platform/runtime_error.h"

namespace fc {

namespace {

std::string rellenaDerecha(const std::string& texto, std::size_t longitud) {
    if (texto.size() > longitud)
        throw RuntimeError(err::kInvalidProcedureCall);
    return texto + std::string(longitud - texto.size(), '0');
}

std::string completa(const std::string& campos) {
    return rellenaDerecha(campos, kLongitudRegistro);
}

}  // namespace

std::string registroArranque(const std::string& dd, Long crc) {
    return completa(dd + "D100SW" + RellenarIzquierda("0", std::to_string(crc), 5) + "KORVA");
}

std::string registroDatos(const std::string& dd, Long numero, const std::string& a,
                          const std::string& b) {
    return completa(dd + "D500" + RellenarIzquierda("0", std::to_string(numero), 6) +
                    rellenaDerecha(a, kLongitudFuente) + "  " + rellenaDerecha(b, kLongitudFuente));
}

std::string registroPregunta(const std::string& dd, const std::string& etiqueta) {
    return completa(dd + "P000ASKDG0000" + etiqueta);
}

std::string medio(const std::string& texto, std::size_t desde, std::size_t cuantos) {
    if (desde < 1 || desde > texto.size())
        return "";
    return texto.substr(desde - 1, cuantos);
}

}  // namespace fc
