#include "firmware/line_reader.h"

#include "firmware/error_box.h"
#include "firmware/hex_record.h"
#include "firmware/hex_text.h"
#include "platform/dialogs.h"
#include "platform/file_table.h"
#include "platform/runtime_error.h"

namespace fc {

namespace {

constexpr const char* kChecksumMalo = "Corrupted file, bad checksum";

// Record types the readers tell apart.
constexpr Long kTipoDatos = 0x00;
constexpr Long kTipoFin = 0x01;
constexpr Long kTipoSegmento = 0x02;
constexpr Long kTipoBanco = 0x66;

// Stores one byte, checked against the image's upper bound.
void guarda(std::vector<Byte>& memoria, Long indice, Long valor) {
    if (indice < 0 || static_cast<std::size_t>(indice) >= memoria.size())
        throw RuntimeError(err::kSubscriptOutOfRange);
    memoria[static_cast<std::size_t>(indice)] = static_cast<Byte>(valor);
}

// The two-digit field at the 1-based `posicion` of the current line.
Long campo(const ReaderPanel& panel, Long posicion) {
    return ValHexAt(panel.linea_fichero, static_cast<std::size_t>(posicion), 2);
}

// The record's 16-bit address, unsigned: 0x8000 to 0xFFFF are the upper half
// of a 64 KB bank, not negative numbers.
Long direccionDelRegistro(const ReaderPanel& panel) {
    return campo(panel, 4) * 256 + campo(panel, 6);
}

bool esFin(Long longitud, Long tipo) {
    return longitud == 0 && tipo == kTipoFin;
}

Byte cierraCon(ReaderPanel& panel, Integer num_fichero, Byte estado) {
    panel.files.close(num_fichero);
    return estado;
}

Byte rechazaChecksum(ReaderPanel& panel, Integer num_fichero) {
    panel.files.close(num_fichero);
    panel.dialogs.msgBox(kChecksumMalo, mb::kOkOnly);
    return estado::kChecksumMalo;
}

// calcheck under the extended reader's handler: a record too long for the
// check is told, and then taken as failing it.
bool checksumCorrecto(ReaderPanel& panel) {
    try {
        return calcheck(panel.linea_fichero);
    } catch (const RuntimeError& error) {
        avisaError(panel.dialogs, error);
        return false;
    }
}

// The data of a type 00 record at pos_memoria, image index 0 standing for
// 0x40000. A byte outside the image is told and dropped; the rest go on.
void guardaDatosL(ReaderPanel& panel, Long longitud) {
    for (Long i = 0; i < longitud; ++i) {
        try {
            guarda(panel.memoria, panel.pos_memoria - kBaseMemoriaL, campo(panel, 2 * i + 10));
        } catch (const RuntimeError& error) {
            avisaError(panel.dialogs, error);
        }
        ++panel.pos_memoria;
    }
}

}  // namespace

Byte leelineafichero(ReaderPanel& panel, Integer num_fichero) {
    const Long longitud = campo(panel, 2);
    panel.pos_memoria = direccionDelRegistro(panel);
    if (esFin(longitud, campo(panel, 8)))
        return cierraCon(panel, num_fichero, estado::kFinFichero);
    if (!calcheck(panel.linea_fichero))
        return rechazaChecksum(panel, num_fichero);
    for (Long i = 0; i < longitud; ++i) {
        guarda(panel.memoria, panel.pos_memoria, campo(panel, 2 * i + 10));
        ++panel.pos_memoria;
    }
    return estado::kLineaTomada;
}

Byte leelineaficheroL(ReaderPanel& panel, SegmentState segmento) {
    if (!checksumCorrecto(panel))
        return rechazaChecksum(panel, kFicheroPrincipal);
    const Long longitud = campo(panel, 2);
    const Long tipo = campo(panel, 8);
    if (esFin(longitud, tipo))
        return cierraCon(panel, kFicheroPrincipal, estado::kFinFichero);
    if (tipo == kTipoBanco) {
        segmento.banco_fichero = static_cast<Byte>(campo(panel, 10));
    } else if (tipo == kTipoSegmento) {
        segmento.base_segmento = (campo(panel, 10) * 256 + campo(panel, 12)) * 16;
    } else if (tipo == kTipoDatos) {
        panel.pos_memoria = direccionDelRegistro(panel) + segmento.base_segmento;
        if (segmento.banco_fichero != 0 && panel.pos_memoria < kInicioBanco)
            return estado::kLineaTomada;
        guardaDatosL(panel, longitud);
    }
    return estado::kLineaTomada;
}

}  // namespace fc
