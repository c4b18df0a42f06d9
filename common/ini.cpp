#include "common/ini.h"

#include "common/section_split.h"
#include "common/standard_handler.h"
#include "platform/profile.h"

namespace fc {

std::string LeeClaveIni(CommonModule& c, const std::string& fichero, const std::string& seccion,
                        const std::string& clave, const std::string& defecto) {
    std::string valor = defecto;
    withStandardHandler(c, "LeeClaveIni", [&] {
        std::string recibido = getPrivateProfileString(seccion, clave, "", kBufferClave, fichero);
        if (!recibido.empty())
            valor = recibido;
    });
    return valor;
}

void EscribeClaveIni(CommonModule& c, const std::string& fichero, const std::string& seccion,
                     const std::string& clave, const std::string& valor) {
    withStandardHandler(c, "EscribeClaveIni",
                        [&] { writePrivateProfileString(seccion, clave, valor, fichero); });
}

void BorraClaveIni(CommonModule& c, const std::string& fichero, const std::string& seccion,
                   const std::string& clave) {
    withStandardHandler(c, "BorraClaveIni", [&] {
        if (clave.empty()) {
            writePrivateProfileString(seccion, std::nullopt, std::nullopt, fichero);
        } else {
            writePrivateProfileString(seccion, clave, std::nullopt, fichero);
        }
    });
}

std::optional<std::vector<std::string>> LeeSeccionIni(CommonModule& c, const std::string& fichero,
                                                      const std::string& seccion) {
    std::optional<std::vector<std::string>> coleccion;
    withStandardHandler(c, "LeeSeccionIni", [&] {
        std::string recibido = getPrivateProfileSection(seccion, kBufferSeccion, fichero);
        if (recibido.empty())
            return;
        // The buffer past what the call counted holds NULs.
        coleccion = splitSectionBlock(recibido + std::string(2, '\0'));
    });
    return coleccion;
}

}  // namespace fc
