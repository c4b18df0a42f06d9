// What the scale last answered over its Ethernet connection, as the socket's
// events leave it for the loader's waits to read. The loader polls these
// fields while it yields; the events write them.
#pragma once

#include <string>

#include "platform/vb_types.h"

namespace fc {

// The answer codes of the scale's boot loader.
namespace respuesta {
constexpr Byte kBorrada = 3;   // flash erased
constexpr Byte kChecksum = 5;  // the checksum of what was loaded
constexpr Byte kError = 10;    // an error, with its number
}  // namespace respuesta

struct RespuestaBalanza {
    // First byte of the last answer; never cleared.
    Byte codigo_respuesta = 0;
    // Length of the last answer; 0 before any answer, and cleared by the
    // erase wait only.
    Integer longitud_respuesta = 0;
    // The checksum of the last code 5 answer.
    Long checksum_balanza = 0;
    // The error number of the last code 10 answer.
    Long error_balanza = 0;
    // Set when the socket reports that a send is complete.
    Flag envio_completo = kFalse;
    // How many code 5 answers have been decoded: a record of a scale's turn
    // tells by it whether this scale answered its checksum at all, which
    // `checksum_balanza` alone, never cleared, cannot say.
    long respuestas_checksum = 0;
};

// DataArrival: decodes `datos_recibidos` into `r`. The first byte is the
// code; code 5 carries the checksum in characters 7-10 (two hex digits of the
// high byte, two of the low), code 10 the error number in characters 6 and 7
// (one hex digit each). Nothing checks the length: a character that is not
// there, or is not a hex digit, counts as 0. The length is written last, so
// that a wait that sees a length sees the decoded fields too.
void TomaRespuesta(RespuestaBalanza& r, const std::string& datos_recibidos);

}  // namespace fc
