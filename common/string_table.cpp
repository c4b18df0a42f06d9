#include "common/string_table.h"

#include <limits>
#include <map>

#include "common/common_module.h"
#include "common/standard_handler.h"
#include "platform/runtime_error.h"

namespace fc {

namespace {

constexpr int kResourceNotFound = 326;

// The entries the system reads: the parities of the display driver's line,
// 53 to 57 after the base of 3000.
const std::map<int, std::string>& table() {
    static const std::map<int, std::string> entries = {
        {3053, "Even"}, {3054, "Odd"}, {3055, "None"}, {3056, "Mark"}, {3057, "Space"},
    };
    return entries;
}

}  // namespace

std::optional<std::string> cadenaRecurso(int numero) {
    auto it = table().find(numero);
    if (it == table().end())
        return std::nullopt;
    return it->second;
}

std::string TextoRecurso(CommonModule& c, Integer indice) {
    std::string texto;
    withStandardHandler(c, "TextoRecurso", [&] {
        int numero = c.base_recursos + indice;
        if (numero > std::numeric_limits<Integer>::max() ||
            numero < std::numeric_limits<Integer>::min()) {
            throw RuntimeError(err::kOverflow);
        }
        std::optional<std::string> entrada = cadenaRecurso(numero);
        if (!entrada) {
            throw RuntimeError(kResourceNotFound, "Resource with identifier '" +
                                                      std::to_string(numero) + "' not found");
        }
        texto = *entrada;
    });
    return texto;
}

}  // namespace fc
