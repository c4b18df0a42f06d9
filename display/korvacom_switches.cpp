#include "display/korvacom_switches.h"

#include <cctype>

#include "platform/runtime_error.h"

namespace fc {

std::string switchDireccion(const ValoresKorvacom& v) {
    return "-d " + v.dirLogica + "#" + v.direccionIp + ":" + std::to_string(v.puertoTx);
}

std::string reescribeSwitch(const std::string& linea, const ValoresKorvacom& v, bool& vistoD,
                            bool& vistoE) {
    const std::string clave = linea.substr(0, 2);
    const bool ethernet = v.modo == 1;
    if (clave == "-v")
        return "-v " + v.velocidad;
    if (clave == "-p")
        return "-p " + v.puerto;
    if (clave == "-b")
        return "-b " + v.bits;
    if (clave == "-t")
        return "-t TX.TXT";
    if (clave == "-r")
        return "-r RX.TXT";
    if (clave == "-a")
        return "-a 0";
    if (clave == "-e")
        return "-e " + std::to_string(v.paridad);
    if (clave == "-m")
        return "-m " + std::to_string(v.modo);
    if (clave == "-d") {
        vistoD = true;
        return ethernet ? switchDireccion(v) : linea;
    }
    if (clave == "-E") {
        vistoE = true;
        return "-E 1";
    }
    if (clave == "-j")
        return ethernet ? "-j " + std::to_string(v.puertoRx) + "," + std::to_string(v.puertoTx)
                        : linea;
    if (clave == "-A")
        return "-A 1";
    return linea;
}

Long numeroDeTexto(const std::string& texto) {
    std::size_t i = texto.find_first_not_of(' ');
    std::size_t fin = texto.find_last_not_of(' ');
    if (i == std::string::npos)
        throw RuntimeError(err::kTypeMismatch);
    bool negativo = texto[i] == '-';
    if (texto[i] == '-' || texto[i] == '+')
        ++i;
    if (i > fin)
        throw RuntimeError(err::kTypeMismatch);
    long long valor = 0;
    for (; i <= fin; ++i) {
        if (!std::isdigit(static_cast<unsigned char>(texto[i])))
            throw RuntimeError(err::kTypeMismatch);
        valor = valor * 10 + (texto[i] - '0');
        if (valor > 2147483647LL)
            throw RuntimeError(err::kOverflow);
    }
    return static_cast<Long>(negativo ? -valor : valor);
}

}  // namespace fc
