#include "firmware/hex_record.h"

#include "firmware/hex_text.h"
#include "platform/controls.h"
#include "platform/runtime_error.h"

namespace fc {

namespace {

// The position of a data field, held in a byte as the record check holds it.
Long bytePosition(Long position) {
    if (position > 0xFF)
        throw RuntimeError(err::kOverflow);
    return position;
}

// The high address byte of a record at `address`: 16-bit addresses are a hard
// limit of these records, so anything else overflows the byte.
Byte highAddressByte(Long address) {
    const Long alto = (address & ~Long{0xFF}) / 256;
    if (alto < 0 || alto > 0xFF)
        throw RuntimeError(err::kOverflow);
    return static_cast<Byte>(alto);
}

// The image byte at `index`, checked against the image's upper bound (and the
// vector itself, which must never be read past its end).
Byte imageByte(const std::vector<Byte>& memoria, Long index, Long limite) {
    if (index < 0 || index > limite || static_cast<std::size_t>(index) >= memoria.size()) {
        throw RuntimeError(err::kSubscriptOutOfRange);
    }
    return memoria[static_cast<std::size_t>(index)];
}

// What distinguishes the two record builders.
struct RecordShape {
    Byte longitud;
    Long limite;
    const char* final;
};

// Appends to linea_envio the address, type and data of one record and its
// checksum, moving pos_memoria on byte by byte as the image is read.
void appendRecordBody(RecordImage imagen, const RecordShape& forma) {
    const Byte alto = highAddressByte(imagen.pos_memoria);
    Long suma = alto + forma.longitud;
    const Byte bajo = static_cast<Byte>(imagen.pos_memoria & 0xFF);
    suma += bajo;
    imagen.linea_envio += char_hex(alto) + char_hex(bajo) + "00";
    for (int k = 0; k < forma.longitud; ++k) {
        const Byte dato = imageByte(imagen.memoria, imagen.pos_memoria, forma.limite);
        imagen.linea_envio += char_hex(dato);
        suma += dato;
        ++imagen.pos_memoria;
    }
    // Complement and add 1 within a byte: a sum of 0 gives 0.
    imagen.linea_envio += char_hex(static_cast<Byte>(~static_cast<Byte>(suma) + 1));
}

void buildRecord(RecordImage imagen, Control& Texto, const RecordShape& forma) {
    imagen.linea_envio = ":" + char_hex(forma.longitud);
    appendRecordBody(imagen, forma);
    imagen.linea_envio += forma.final;
    Texto.setCaption(imagen.linea_envio);
}

// The smallest i in 1..n-1 for which address + i is a multiple of 128, or 0.
Long splitPoint(Long address, Long n) {
    for (Long i = 1; i <= n - 1; ++i) {
        if ((address + i) % 128 == 0)
            return i;
    }
    return 0;
}

// ":" + count + four address digits (the low 16 bits) + type and data +
// the checksum of all that follows the ":".
std::string halfRecord(Long count, Long address, const std::string& typeAndData, Dialogs& dialogs) {
    const std::string cuerpo = char_hex(static_cast<Byte>(count)) +
                               char_hex(static_cast<Byte>(address >> 8)) +
                               char_hex(static_cast<Byte>(address)) + typeAndData;
    return ":" + cuerpo + DameCheckSum(cuerpo, dialogs);
}

}  // namespace

bool calcheck(const std::string& linea_fichero) {
    const Long n = ValHexAt(linea_fichero, 2, 2);
    Long suma = n + ValHexAt(linea_fichero, 4, 2) + ValHexAt(linea_fichero, 6, 2) +
                ValHexAt(linea_fichero, 8, 2);
    for (Long i = 0; i < n; ++i) {
        suma += ValHexAt(linea_fichero, static_cast<std::size_t>(bytePosition(2 * i + 10)), 2);
    }
    const Long esperado = -suma & 0xFF;
    return ValHexAt(linea_fichero, static_cast<std::size_t>(2 * n + 10), 2) == esperado;
}

void prepara_linea(RecordImage imagen, Control& Texto) {
    buildRecord(imagen, Texto, RecordShape{0x10, kLimiteMemoria, "\r\n"});
}

void MV510prepara_linea(RecordImage imagen, Control& Texto) {
    buildRecord(imagen, Texto, RecordShape{0x80, kLimiteMemoriaMV510, ""});
}

Integer envia_linea_partida(std::string& linea_fichero, Dialogs& dialogs,
                            const std::function<Integer()>& EnviaLineaNumerada) {
    const Long n = ValHexAt(linea_fichero, 2, 2);
    const Long a = ValHexAt(linea_fichero, 4, 4);  // negative from 0x8000: harmless here
    const Long i = splitPoint(a, n);
    if (i == 0)
        return EnviaLineaNumerada();

    const std::string completa = linea_fichero;
    const auto tramo = [&](Long position, Long count) {
        return std::string(
            fieldAt(completa, static_cast<std::size_t>(position), static_cast<std::size_t>(count)));
    };
    linea_fichero = halfRecord(i, a, tramo(8, 2 * i + 2), dialogs);
    const Integer primera = EnviaLineaNumerada();
    if (primera == kFalse)
        return primera;

    linea_fichero = halfRecord(n - i, a + i, tramo(8, 2) + tramo(2 * i + 10, 2 * (n - i)), dialogs);
    return EnviaLineaNumerada();
}

}  // namespace fc
