#include "mac/mac_tables.h"

#include "platform/odbc.h"

namespace fc {
namespace {

std::string contadores(OdbcConnection& bd) {
    return bd.quote(kTablaContadores);
}
std::string contador(OdbcConnection& bd) {
    return bd.quote(kColumnaContador);
}

}  // namespace

std::string sqlSubeContador(OdbcConnection& bd) {
    return "UPDATE " + contadores(bd) + " SET " + contador(bd) + " = " + contador(bd) + " + 1";
}

std::string sqlLeeContador(OdbcConnection& bd) {
    return "SELECT " + contador(bd) + " FROM " + contadores(bd);
}

std::string sqlNuevaDireccion(OdbcConnection& bd) {
    return "INSERT INTO " + bd.quote(kTablaDetalleMac) + " (" + bd.quote("Direccio_MAC") + ", " +
           bd.quote("Numero_serie") + ", " + bd.quote("Departamento") + ", " +
           bd.quote("fecha_actual") + ") VALUES (?, ?, ?, ?)";
}

void CreaTablasMac(OdbcConnection& bd) {
    bd.execute("CREATE TABLE IF NOT EXISTS " + contadores(bd) + " (" + contador(bd) +
               " INTEGER NOT NULL)");
    // No key on the address: a row is added for every address given,
    // without looking for an earlier row of the same address.
    bd.execute("CREATE TABLE IF NOT EXISTS " + bd.quote(kTablaDetalleMac) + " (" +
               bd.quote("Direccio_MAC") + " VARCHAR(17), " + bd.quote("Numero_serie") +
               " VARCHAR(50), " + bd.quote("Departamento") + " VARCHAR(50), " +
               bd.quote("fecha_actual") + " TIMESTAMP, " + bd.quote("Notas") + " TEXT)");
    if (bd.query(sqlLeeContador(bd)).empty())
        bd.execute("INSERT INTO " + contadores(bd) + " (" + contador(bd) + ") VALUES (0)");
}

}  // namespace fc
