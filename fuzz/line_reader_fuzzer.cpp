// Any bytes as the lines of a firmware file, fed to the plain line reader on
// the visor's image: every line gives a status of 0, 1 or 2, or one of the
// two fatal failures of the load (a store past the image, error 9; a record
// too long for its checksum to be checked, error 6), and nothing else; the
// image keeps its size.
#include <cstddef>
#include <cstdint>
#include <string>

#include "firmware/line_reader.h"
#include "fuzz/firmware_fuzz_screen.h"
#include "platform/runtime_error.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace fc;
    fuzz::FuzzScreen s(kLimiteMemoriaMV510 + 1);
    ReaderPanel panel = s.reader();
    for (const std::string& line :
         fuzz::linesOf(std::string(reinterpret_cast<const char*>(data), size))) {
        s.linea_fichero = line;
        try {
            const Byte estado = leelineafichero(panel, 1);
            fuzz::check(estado <= estado::kFinFichero);
            if (estado != estado::kLineaTomada)
                break;
        } catch (const RuntimeError& e) {
            fuzz::check(e.number() == err::kSubscriptOutOfRange || e.number() == err::kOverflow);
            break;
        }
    }
    fuzz::check(s.memoria.size() == kLimiteMemoriaMV510 + 1);
    return 0;
}
