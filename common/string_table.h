// The program's string table, and the reading of it relative to
// base_recursos.
#pragma once

#include <optional>
#include <string>

#include "platform/vb_types.h"

namespace fc {

struct CommonModule;

// The text of the table's entry `numero`; nullopt when there is none.
std::optional<std::string> cadenaRecurso(int numero);

// The text number base_recursos + `indice`. A missing entry (error 326) or a
// number past an Integer (error 6) goes to the standard handler
// ("TextoRecurso") and gives an empty text.
std::string TextoRecurso(CommonModule& c, Integer indice);

}  // namespace fc
