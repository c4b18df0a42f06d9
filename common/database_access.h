// The database of the display screen, through the embedded engine.
#pragma once

#include <memory>
#include <string>

#include "platform/database.h"
#include "platform/vb_types.h"

namespace fc {

struct CommonModule;

// Opens the database file `ruta` in the engine's default workspace. A failure
// goes to the standard handler ("AbrirBD") and gives nullptr.
std::unique_ptr<Database> AbrirBD(CommonModule& c, const std::string& ruta);

// Closes the recordset, giving back the engine's result of that.
Long CierraTabla(CommonModule& c, Recordset& tabla);

}  // namespace fc
