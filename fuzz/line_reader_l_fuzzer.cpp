// Any bytes as the lines of a firmware file, fed to the extended line reader
// on the main screen's image: it never fails, every line gives a status of
// 0, 1 or 2, a store outside the image is only ever a box, and the image
// keeps its size.
#include <cstddef>
#include <cstdint>
#include <string>

#include "firmware/line_reader.h"
#include "fuzz/firmware_fuzz_screen.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace fc;
    fuzz::FuzzScreen s(kLimiteMemoria + 1);
    ReaderPanel panel = s.reader();
    for (const std::string& line :
         fuzz::linesOf(std::string(reinterpret_cast<const char*>(data), size))) {
        s.linea_fichero = line;
        const Byte estado = leelineaficheroL(panel, s.segment());
        fuzz::check(estado <= estado::kFinFichero);
        if (estado != estado::kLineaTomada)
            break;
    }
    fuzz::check(s.memoria.size() == kLimiteMemoria + 1);
    for (const ShownBox& box : s.dialogs.boxes()) {
        fuzz::check(box.text == "Corrupted file, bad checksum" ||
                    box.text == "9Subscript out of range" || box.text == "6Overflow");
    }
    return 0;
}
