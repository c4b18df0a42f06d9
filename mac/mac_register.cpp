#include "mac/mac_register.h"

#include "mac/mac_tables.h"

namespace fc {
namespace {

std::string columnas(OdbcConnection& bd) {
    return bd.quote("Direccio_MAC") + ", " + bd.quote("Numero_serie") + ", " +
           bd.quote("Departamento") + ", " + bd.quote("fecha_actual") + ", " + bd.quote("Notas");
}

FilaDetalleMac comoFila(const OdbcRow& row) {
    auto texto = [&row](size_t i) { return row.at(i).value_or(""); };
    return {texto(0), texto(1), texto(2), texto(3), texto(4)};
}

}  // namespace

std::optional<long long> LeeContador(OdbcConnection& bd) {
    auto filas = bd.query(sqlLeeContador(bd));
    if (filas.empty() || !filas.front().at(0))
        return std::nullopt;
    return std::stoll(*filas.front().at(0));
}

std::vector<FilaDetalleMac> UltimasDirecciones(OdbcConnection& bd, int cuantas) {
    std::vector<FilaDetalleMac> filas;
    for (const OdbcRow& row :
         bd.query("SELECT " + columnas(bd) + " FROM " + bd.quote(kTablaDetalleMac) + " ORDER BY " +
                  bd.quote("Direccio_MAC") + " DESC LIMIT " + std::to_string(cuantas)))
        filas.push_back(comoFila(row));
    return filas;
}

std::vector<std::string> TodasLasDirecciones(OdbcConnection& bd) {
    std::vector<std::string> todas;
    for (const OdbcRow& row :
         bd.query("SELECT " + bd.quote("Direccio_MAC") + " FROM " + bd.quote(kTablaDetalleMac)))
        todas.push_back(row.at(0).value_or(""));
    return todas;
}

}  // namespace fc
