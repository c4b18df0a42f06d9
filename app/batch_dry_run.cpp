#include "app/batch_dry_run.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <optional>

#include "app/batch_exit.h"
#include "app/batch_world.h"
#include "app/message_report.h"
#include "control/firmware_panels.h"
#include "firmware/checksum_memoria.h"
#include "firmware/file_loader.h"
#include "firmware/line_reader.h"
#include "firmware/llenado_memoria.h"
#include "firmware/preprocesa_file.h"

namespace fc::batch {

namespace {

std::string fourHexDigits(Long value) {
    char text[5];
    std::snprintf(text, sizeof text, "%04X", static_cast<unsigned>(value & 0xFFFF));
    return text;
}

std::string address(Long value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%05lX", static_cast<unsigned long>(value));
    return text;
}

// The read of the image met a byte outside it: the reader tells each such
// byte in a box of its own, and a file with one has many. The dry run stops
// at the first.
struct OutsideTheImage {
    Long address;
};

// The boxes shown from `from` on, as one text: the last of them.
std::optional<std::string> lastBoxSince(const RecordingDialogs& dialogs, std::size_t from) {
    if (dialogs.boxes().size() <= from)
        return std::nullopt;
    return dialogs.boxes().back().text;
}

// Why the file could not be read at all, or nothing.
std::optional<std::string> cannotOpen(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (in)
        return std::nullopt;
    return std::string(std::strerror(errno));
}

}  // namespace

int inspectFile(const std::string& path, std::ostream& out, std::ostream& err) {
    BatchWorld world(out);
    Firmcast form(world.services());
    bool reading = false;
    const std::string outOfRange = std::to_string(err::kSubscriptOutOfRange) +
                                   RuntimeError(err::kSubscriptOutOfRange).description();
    world.dialogs.onShown = [&](const ShownBox& box) {
        out << "msgbox: " << box.text << std::endl;
        if (reading && box.text == outOfRange)
            throw OutsideTheImage{form.pos_memoria};
    };
    form.es_serie_w = kTrue;
    form.fichero_firmware = path;
    // Both reads run whatever the first gave, as on the Ethernet path.
    PreprocessPanel preproceso = preprocessPanel(form);
    const bool procesado = PreprocesaFile(preproceso, form.fichero_firmware);
    const std::size_t boxesBeforeRead = world.dialogs.boxes().size();
    std::optional<std::string> refusal = lastBoxSince(world.dialogs, 0);
    ReaderPanel lector = readerPanel(form);
    bool enMemoria = false;
    std::optional<Long> outside;
    try {
        reading = true;
        enMemoria = carga_ficheroL(lector, segmentState(form));
    } catch (const OutsideTheImage& byte) {
        outside = byte.address;
    }
    reading = false;
    form.checksum_memoria = calcula_checksum_memoria(form.memoria);

    out << "header: " << form.lblModelo.caption() << "\n";
    out << "messages: " << form.mensajes.size() << "\n";
    out << "checksum: " << fourHexDigits(form.checksum_memoria) << "\n";
    printMessages(out, form.mensajes);
    out.flush();
    if (procesado && enMemoria)
        return kExitOk;

    std::string why;
    if (std::optional<std::string> reason = cannotOpen(path)) {
        why = *reason;
    } else if (!procesado) {
        why = refusal.value_or("the message list could not be made");
    } else if (outside) {
        why = "data at " + address(*outside) + " lies outside the image of an Ethernet load (" +
              address(kBaseMemoriaL) + " to " + address(kBaseMemoriaL + kLlenadoLargo - 1) +
              "); the dry run stopped at its first byte";
    } else {
        why = lastBoxSince(world.dialogs, boxesBeforeRead).value_or("the file has no end record");
    }
    err << "firmcast-batch: " << path << ": not fit for an Ethernet load: " << why << std::endl;
    return kExitDeviceFailed;
}

int inspectSynthetic(std::ostream& out) {
    BatchWorld world(out);
    Firmcast form(world.services());
    LlenadoMemoria(form.mensajes, world.dialogs);
    out << "messages: " << form.mensajes.size() << "\n";
    printMessages(out, form.mensajes);
    out.flush();
    return kExitOk;
}

}  // namespace fc::batch
