#include "firmware/checksum_memoria.h"

#include "platform/runtime_error.h"

namespace fc {

namespace {
constexpr Long kDesde = 0x40000;
constexpr Long kHasta = 0xEFFFE;
}  // namespace

Long calcula_checksum_memoria(const std::vector<Byte>& memoria) {
    if (memoria.size() < static_cast<std::size_t>(kHasta + 2 - kDesde))
        throw RuntimeError(err::kSubscriptOutOfRange);
    Long suma = 0;
    for (Long p = kDesde; p <= kHasta; p += 2) {
        const auto i = static_cast<std::size_t>(p - kDesde);
        suma = (suma + memoria[i + 1] * 256 + memoria[i]) % 65536;
    }
    return 65536 - suma - 1;
}

}  // namespace fc
