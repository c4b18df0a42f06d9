// The judgement of a visor's dump answer on any bytes: the input is split at
// its first two zero bytes into the answer, the command and the block's
// record (missing parts are empty). Nothing the visor sends may crash it.
#include <cstddef>
#include <cstdint>
#include <string>

#include "visor/dump_answer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string all(reinterpret_cast<const char*>(data), size);
    const std::size_t first = all.find('\0');
    const std::size_t second = first == std::string::npos ? first : all.find('\0', first + 1);
    const std::string respuesta = all.substr(0, first);
    const std::string orden =
        first == std::string::npos
            ? ":05000004000000007F0078"
            : all.substr(first + 1,
                         second == std::string::npos ? std::string::npos : second - first - 1);
    const std::string registro =
        second == std::string::npos ? ":80000000" + std::string(258, '0') : all.substr(second + 1);
    fc::volcadoCoincide(respuesta, orden, registro);
    return 0;
}
