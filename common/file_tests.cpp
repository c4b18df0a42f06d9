#include "common/file_tests.h"

#include "common/common_module.h"
#include "common/standard_handler.h"
#include "platform/file_system.h"

namespace fc {

Flag ExisteFichero(CommonModule& c, const std::string& ruta) {
    Flag found = kFalse;
    withStandardHandler(c, "ExisteFichero",
                        [&] { found = toFlag(!c.services.fileSystem.findFiles(ruta).empty()); });
    return found;
}

std::string NombrarBD(CommonModule& c, const std::string& carpeta, const std::string& nombre) {
    std::string nombreBD;
    withStandardHandler(c, "NombrarBD",
                        [&] { nombreBD = c.services.programFolder + carpeta + nombre; });
    return nombreBD;
}

}  // namespace fc
