#include "common/padding.h"

#include <limits>
#include <optional>

namespace fc {

namespace {

// The run time's String(n, c) and Space(n): nullopt where they raise an error
// (no character to repeat, a negative count or one past a string's limit).
std::optional<std::string> repeat(long long count, const std::string& fill) {
    if (fill.empty() || count < 0 || count > std::numeric_limits<Long>::max())
        return std::nullopt;
    return std::string(static_cast<std::size_t>(count), fill[0]);
}

bool blankAfterTrim(const std::string& s) {
    return s.find_first_not_of(' ') == std::string::npos;
}

}  // namespace

std::string RellenarIzquierda(const std::string& relleno, const std::string& texto, Long longitud) {
    const long long largo = static_cast<long long>(texto.size());
    // Errors resume at the next statement: a failed assignment leaves the
    // result empty.
    if (largo > longitud)
        return repeat(longitud, relleno).value_or("");
    if (blankAfterTrim(relleno)) {
        // Two blanks for each missing character: the doubling is deliberate.
        std::optional<std::string> blanks = repeat((longitud - largo) * 2, " ");
        return blanks ? *blanks + texto : "";
    }
    std::optional<std::string> fill = repeat(longitud - largo, relleno);
    return fill ? *fill + texto : "";
}

}  // namespace fc
