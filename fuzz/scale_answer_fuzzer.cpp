// Feeds arbitrary bytes to the decoding of a scale's answer over Ethernet, as
// the socket's DataArrival hands them over: whatever arrives, the code is
// the first byte, a checksum stays within 16 bits, an error number within 8,
// and the length counts what came, up to the most the field holds.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "ethernet/respuesta_balanza.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string answer(reinterpret_cast<const char*>(data), size);
    fc::RespuestaBalanza r;
    r.checksum_balanza = 1234;
    r.error_balanza = 56;
    fc::TomaRespuesta(r, answer);
    const fc::Byte code = answer.empty() ? 0 : static_cast<fc::Byte>(answer[0]);
    if (r.codigo_respuesta != code)
        __builtin_trap();
    if (r.longitud_respuesta != static_cast<long>(std::min<std::size_t>(size, 32767)))
        __builtin_trap();
    if (r.checksum_balanza < 0 || r.checksum_balanza > 0xFFFF)
        __builtin_trap();
    if (r.error_balanza < 0 || r.error_balanza > 0xFF)
        __builtin_trap();
    // Only a code 5 changes the checksum, only a code 10 the error number.
    if (code != fc::respuesta::kChecksum && r.checksum_balanza != 1234)
        __builtin_trap();
    if (code != fc::respuesta::kError && r.error_balanza != 56)
        __builtin_trap();
    return 0;
}
