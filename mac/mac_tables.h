// The two tables of the MAC database: `contadores`, whose one row holds in
// `Contador` the number of the last address given, and `[Detalle MAC]`, the
// register, one row an address. Every name is quoted the way the driver
// wants: PostgreSQL refuses the brackets, and folds unquoted names to lower
// case, so the names are created and used with one spelling, always quoted.
#pragma once

#include <string>

namespace fc {

class OdbcConnection;

constexpr const char* kOrigenMac = "MacConnection";
constexpr const char* kTablaContadores = "contadores";
constexpr const char* kColumnaContador = "Contador";
constexpr const char* kTablaDetalleMac = "Detalle MAC";

// Adds one to the counter. The engine locks the row for the writer until
// the transaction ends, so a second station waits (or fails with 40002 and
// tries again) and never reads the same number.
std::string sqlSubeContador(OdbcConnection& bd);
std::string sqlLeeContador(OdbcConnection& bd);
// The register's row of a new address: its address, " " serial, " "
// department and the time, bound in that order.
std::string sqlNuevaDireccion(OdbcConnection& bd);

// Creates whichever of the two tables is missing, and the counter's row at 0
// when there is none. Safe to run again.
void CreaTablasMac(OdbcConnection& bd);

}  // namespace fc
