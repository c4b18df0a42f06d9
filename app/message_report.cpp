#include "app/message_report.h"

#include <zlib.h>

#include <cstdio>
#include <string>

namespace fc::batch {

namespace {

std::string hexBytes(const std::string& bytes) {
    std::string text;
    char pair[3];
    for (char c : bytes) {
        std::snprintf(pair, sizeof pair, "%02X", static_cast<unsigned char>(c));
        text += pair;
    }
    return text;
}

unsigned long crc32Of(const std::string& datos) {
    uLong crc = crc32(0L, Z_NULL, 0);
    return crc32(crc, reinterpret_cast<const Bytef*>(datos.data()),
                 static_cast<uInt>(datos.size()));
}

}  // namespace

std::string messageLine(std::size_t index, const MensajeEth& m) {
    char crc[9];
    std::snprintf(crc, sizeof crc, "%08lX", crc32Of(m.datos));
    return "msg " + std::to_string(index) + " " + hexBytes(m.tipo) + " " + hexBytes(m.direccion) +
           " " + hexBytes(m.numero) + " " + std::to_string(m.datos.size()) + " " + crc;
}

void printMessages(std::ostream& out, const std::vector<MensajeEth>& mensajes) {
    for (std::size_t i = 0; i < mensajes.size(); ++i) out << messageLine(i, mensajes[i]) << "\n";
}

}  // namespace fc::batch
