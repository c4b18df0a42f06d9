// Reading the MAC database back: the counter, and the register's last rows.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/odbc.h"

namespace fc {

struct FilaDetalleMac {
    std::string Direccio_MAC;
    std::string Numero_serie;
    std::string Departamento;
    std::string fecha_actual;
    std::string Notas;
};

// The counter's value, nullopt when its row is missing.
std::optional<long long> LeeContador(OdbcConnection& bd);

// The register's last `cuantas` rows, newest address first. Addresses rise
// with the counter and have fixed width, so their text orders them.
std::vector<FilaDetalleMac> UltimasDirecciones(OdbcConnection& bd, int cuantas);

// Every address of the register, once per row.
std::vector<std::string> TodasLasDirecciones(OdbcConnection& bd);

}  // namespace fc
