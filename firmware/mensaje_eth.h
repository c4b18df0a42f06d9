// One message of the Ethernet load: what the scale's boot loader takes as a
// unit. `tipo`, `direccion` and `numero` are fixed-length text (one char a
// byte, sent as they stand): text put into them is cut to their width or
// filled out with blanks, as fixed-length strings are. `datos` is a byte
// string of its own length, 1024 bytes as a rule.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace fc {

struct MensajeEth {
    std::string tipo = " ";        // 1 byte: message type
    std::string direccion = "  ";  // 2 bytes: bank number, low byte first
    std::string numero = "  ";     // 2 bytes: running number in the bank, low byte first
    std::string datos;             // payload
};

// Widths of the fixed-length fields.
constexpr std::size_t kAnchoTipo = 1;
constexpr std::size_t kAnchoDireccion = 2;
constexpr std::size_t kAnchoNumero = 2;

// The usual length of a message's payload.
constexpr std::size_t kLongitudMensaje = 1024;

// `text` as a fixed-length field of `width` chars: cut, or filled with blanks.
std::string fixedText(std::string text, std::size_t width);

}  // namespace fc
