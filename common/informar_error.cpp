#include "common/informar_error.h"

#include "common/common_module.h"
#include "common/error_log.h"
#include "platform/dialogs.h"

namespace fc {

void InformarError(CommonModule& c, const std::string& nombre, Long numero,
                   const std::string& descripcion, const RuntimeError& enCurso) {
    Dialogs& dialogs = c.services.dialogs;
    if (numero == kErrorPropio || numero == kErrorPropioAviso) {
        dialogs.msgBox(descripcion, mb::kExclamation, nombre);
        // The entry names the source that raised the error, and leaves the
        // number out on purpose.
        EscribirLog(c, enCurso.source(), enCurso.description(), 0);
        return;
    }
    dialogs.msgBox(std::to_string(numero) + " - " + descripcion, mb::kExclamation, nombre);
    EscribirLog(c, nombre, descripcion, numero);
}

void InformarError(CommonModule& c, const std::string& nombre, const RuntimeError& enCurso) {
    InformarError(c, nombre, enCurso.number(), enCurso.description(), enCurso);
}

}  // namespace fc
