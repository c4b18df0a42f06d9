#include "app/batch_dry_run.h"

#include <cstdio>

#include "app/batch_exit.h"
#include "app/batch_world.h"
#include "app/message_report.h"
#include "control/firmware_panels.h"
#include "firmware/checksum_memoria.h"
#include "firmware/file_loader.h"
#include "firmware/llenado_memoria.h"
#include "firmware/preprocesa_file.h"

namespace fc::batch {

namespace {

std::string fourHexDigits(Long value) {
    char text[5];
    std::snprintf(text, sizeof text, "%04X", static_cast<unsigned>(value & 0xFFFF));
    return text;
}

}  // namespace

int inspectFile(const std::string& path, std::ostream& out) {
    BatchWorld world(out);
    Firmcast form(world.services());
    form.es_serie_w = kTrue;
    form.fichero_firmware = path;
    // Both reads run whatever the first gave, as on the Ethernet path.
    PreprocessPanel preproceso = preprocessPanel(form);
    const bool procesado = PreprocesaFile(preproceso, form.fichero_firmware);
    ReaderPanel lector = readerPanel(form);
    const bool enMemoria = carga_ficheroL(lector, segmentState(form));
    form.checksum_memoria = calcula_checksum_memoria(form.memoria);

    out << "header: " << form.lblModelo.caption() << "\n";
    out << "messages: " << form.mensajes.size() << "\n";
    out << "checksum: " << fourHexDigits(form.checksum_memoria) << "\n";
    printMessages(out, form.mensajes);
    out.flush();
    return procesado && enMemoria ? kExitOk : kExitDeviceFailed;
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
