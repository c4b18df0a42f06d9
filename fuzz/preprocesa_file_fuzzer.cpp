// Any bytes as a firmware file, read as the Ethernet load of a Serie_W scale
// reads it: PreprocesaFile for the message list, carga_ficheroL for the
// image. Neither read may fail other than by answering false after a box; a
// list read to its end runs from the erase message to the end of load, with
// fixed-length fields of their widths. (The image's checksum is a fixed loop
// over a fixed range that no input can change the course of; left out, it
// keeps the fuzzer several times faster.)
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "firmware/file_loader.h"
#include "firmware/preprocesa_file.h"
#include "fuzz/firmware_fuzz_screen.h"

namespace {

// The one file this process writes each input to, removed when it ends.
struct ScratchFile {
    std::string path = "/tmp/firmcast-fuzz-" + std::to_string(getpid()) + ".hex";
    ~ScratchFile() { unlink(path.c_str()); }
};

const std::string& scratchFile() {
    static const ScratchFile file;
    return file.path;
}

void write(const std::string& path, const std::uint8_t* data, std::size_t size) {
    std::FILE* out = std::fopen(path.c_str(), "wb");
    fc::fuzz::check(out != nullptr);
    std::fwrite(data, 1, size, out);
    std::fclose(out);
}

void checkList(const std::vector<fc::MensajeEth>& mensajes) {
    using fc::fuzz::check;
    check(mensajes.size() >= 2);
    check(mensajes.front().tipo == "\x55" && mensajes.front().datos == std::string(1024, '0'));
    check(mensajes.back().tipo == "\x67" && mensajes.back().datos == std::string(1024, '0'));
    for (const fc::MensajeEth& m : mensajes) {
        check(m.tipo.size() == 1 && m.direccion.size() == 2 && m.numero.size() == 2);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace fc;
    const std::string& path = scratchFile();
    write(path, data, size);
    fuzz::FuzzScreen s(kLimiteMemoria + 1);
    s.fichero_firmware = path;

    PreprocessPanel preproceso = s.preprocess();
    if (PreprocesaFile(preproceso, path)) {
        checkList(s.mensajes);
    } else {
        fuzz::check(!s.dialogs.boxes().empty());
    }
    ReaderPanel lector = s.reader();
    const bool enMemoria = carga_ficheroL(lector, s.segment());
    fuzz::check(!enMemoria || s.Label2.caption() == "File is in memory");
    fuzz::check(s.Barra.value() <= s.Barra.max());
    fuzz::check(s.memoria.size() == kLimiteMemoria + 1);
    return 0;
}
