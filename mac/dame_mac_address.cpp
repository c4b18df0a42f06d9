#include "mac/dame_mac_address.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "common/common_module.h"
#include "common/error_log.h"
#include "common/frm_aviso_errores.h"
#include "mac/mac_module.h"
#include "mac/mac_tables.h"
#include "mac/mac_text.h"
#include "platform/calendar.h"
#include "platform/database.h"
#include "platform/dialogs.h"
#include "platform/pump.h"
#include "platform/runtime_error.h"
#include "platform/window_timer.h"

namespace fc {
namespace {

constexpr int kInvalidUseOfNull = 94;

// The counter's text as a Long; a number too big for one overflows.
Long comoLong(const std::optional<std::string>& texto) {
    if (!texto)
        throw RuntimeError(kInvalidUseOfNull, "Invalid use of Null");
    long long numero = 0;
    try {
        numero = std::stoll(*texto);
    } catch (const std::exception&) {
        throw RuntimeError(err::kTypeMismatch);
    }
    if (numero < INT32_MIN || numero > INT32_MAX)
        throw RuntimeError(err::kOverflow);
    return static_cast<Long>(numero);
}

[[noreturn]] void terminaPrograma(MacModule& m, const RuntimeError& error) {
    m.c.services.dialogs.msgBox("Problema al obtener la MAC, error: " +
                                std::to_string(error.number()) + " " + error.description());
    CierraBdMac(m);
    throw ProgramEnd{kFinPorBaseMac};
}

// The first pause between two tries of a failing database, and the
// longest: each pause doubles the one before, up to the longest.
constexpr int kPrimeraPausaMs = 10;
constexpr int kPausaMaximaMs = 1000;

// Between two tries the program's events run (the window stays alive and the
// operator may end the program) for `pausaMs`, which then grows.
void esperaOtroIntento(MacModule& m, int& pausaMs) {
    Pump& pump = m.c.services.pump;
    bool cumplida = false;
    WindowTimer pausa(pump, "pausaBaseMac");
    pausa.onTimer = [&cumplida] { cumplida = true; };
    pausa.setInterval(pausaMs);
    pausa.setEnabled(true);
    while (!cumplida) pump.doEvents();
    pausaMs = std::min(pausaMs * 2, kPausaMaximaMs);
}

// Steps 1 to 5: open, add one to the counter, read it. A failure of the
// database is tried again from the start, for as long as it takes (or as
// the module allows), pausing between tries; the log says once what the
// allocation is waiting for.
Long numeroSiguiente(MacModule& m) {
    const Micros desde = m.c.services.pump.nowMicros();
    int pausaMs = kPrimeraPausaMs;
    bool anotado = false;
    for (;;) {
        try {
            CierraBdMac(m);
            m.bd_mac = m.odbc.openConnection(m.origen);
            return TomaNumeroMac(m);
        } catch (const RuntimeError& error) {
            if (error.number() != err::kOdbcFailure)
                terminaPrograma(m, error);
            CierraBdMac(m);
            if (!anotado) {
                anotado = true;
                EscribirLog(m.c, "DameMACAddress",
                            "Waiting for the MAC database: " + error.description(), error.number());
            }
            const Micros esperado = m.c.services.pump.nowMicros() - desde;
            if (m.esperaMaximaMs >= 0 && esperado >= Micros{m.esperaMaximaMs} * 1000)
                throw;
            esperaOtroIntento(m, pausaMs);
        }
    }
}

// A failure of the database at the register: the address has been counted
// but not recorded, and the operator is told it is not valid.
[[noreturn]] void avisaDireccionNoValida(MacModule& m) {
    CierraBdMac(m);
    frmAvisoErrores aviso(m.c);
    aviso.Mostrar();
    if (m.descargaPrincipal)
        m.descargaPrincipal();
    throw ProgramEnd{kFinPorBaseMac};
}

}  // namespace

Long TomaNumeroMac(MacModule& m) {
    OdbcConnection& bd = *m.bd_mac;
    bd.begin();
    bd.execute(sqlSubeContador(bd));
    auto filas = bd.query(sqlLeeContador(bd));
    // Without the counter's row there is nothing to take: no retry mends that.
    if (filas.empty())
        throw RuntimeError(dberr::kNoCurrentRecord, "No current record");
    Long numero = comoLong(filas.front().at(0));
    bd.commit();
    return numero;
}

void AnotaDireccionMac(MacModule& m, const std::string& mac) {
    OdbcConnection& bd = *m.bd_mac;
    bd.execute(sqlNuevaDireccion(bd), {MacConGuiones(mac), std::string(" "), std::string(" "),
                                       m.c.services.calendar.now()});
}

std::string DameMACAddress(MacModule& m) {
    Long numero = numeroSiguiente(m);
    // Past the last number the counter has moved all the same, and goes on
    // rising at each try; no address is formed and nothing is recorded.
    if (numero > kUltimoNumeroMac) {
        CierraBdMac(m);
        return "";
    }
    std::string mac = MacDeNumero(numero);
    try {
        AnotaDireccionMac(m, mac);
    } catch (const RuntimeError& error) {
        if (error.number() == err::kOdbcFailure)
            avisaDireccionNoValida(m);
        terminaPrograma(m, error);
    }
    CierraBdMac(m);
    return mac;
}

}  // namespace fc
