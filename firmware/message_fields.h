// The fields of Ethernet messages as the message lists build them: the bank
// and the running number go out low byte first, taken from hex text through
// DameHex, and a control message carries 1024 chars "0" (0x30, not zero).
#pragma once

#include <string>

#include "firmware/mensaje_eth.h"
#include "platform/dialogs.h"
#include "platform/vb_types.h"

namespace fc {

// The message types of the Ethernet load.
namespace tipo_msg {
constexpr Byte kBorrado = 0x55;      // erase
constexpr Byte kBanco = 0x02;        // start of a bank
constexpr Byte kDatos = 0x00;        // data
constexpr Byte kFinPrograma = 0x01;  // end of the program
constexpr Byte kDatoBalanza = 0x66;  // one data byte for the scale
constexpr Byte kFinCarga = 0x67;     // end of the load
constexpr Byte kMac = 0x68;          // the scale's new MAC address
}  // namespace tipo_msg

// `numero` of a running number: its hex text left-padded with "0" to four
// digits, then the byte of digits 3-4 followed by the byte of digits 1-2.
std::string numeroDeContador(Long contador, Dialogs& dialogs);

// `direccion` of a bank given as four hex digits: the byte of digits 3-4
// followed by the byte of digits 1-2.
std::string direccionDeBloque(const std::string& bloque, Dialogs& dialogs);

// A message of one byte of type, bank 00 00, number 00 00 and 1024 "0".
MensajeEth mensajeDeControl(Byte tipo);

// The one-byte text of a type.
inline std::string tipoDe(Byte tipo) {
    return std::string(1, static_cast<char>(tipo));
}

}  // namespace fc
