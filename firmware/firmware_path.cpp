#include "firmware/firmware_path.h"

#include "platform/drives.h"

namespace fc {

std::string rutaFichero(const Drives& drives, const std::string& fichero) {
    const std::string host = drives.hostPath(fichero);
    return host.empty() ? fichero : host;
}

}  // namespace fc
