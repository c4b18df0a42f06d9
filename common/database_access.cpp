#include "common/database_access.h"

#include "common/common_module.h"
#include "common/standard_handler.h"

namespace fc {

std::unique_ptr<Database> AbrirBD(CommonModule& c, const std::string& ruta) {
    std::unique_ptr<Database> bd;
    withStandardHandler(c, "AbrirBD", [&] { bd = c.services.databases.openDatabase(ruta); });
    return bd;
}

Long CierraTabla(CommonModule& c, Recordset& tabla) {
    Long resultado = 0;
    withStandardHandler(c, "CierraTabla", [&] { resultado = tabla.close(); });
    return resultado;
}

}  // namespace fc
