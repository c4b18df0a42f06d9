#include "common/kernel_waits.h"

#include "common/common_module.h"
#include "common/standard_handler.h"

namespace fc {

Long EsperaMutex(CommonModule& c, Handle handle) {
    Long resultado = 0;
    withStandardHandler(c, "EsperaMutex", [&] {
        Long r = c.services.kernel.waitForSingleObject(handle, kEsperaMutexMs);
        resultado = (r == wait::kTimeout || r == wait::kAbandoned) ? -1 : 0;
    });
    return resultado;
}

Long LiberaMutex(CommonModule& c, Handle handle) {
    Long resultado = 0;
    withStandardHandler(c, "LiberaMutex",
                        [&] { resultado = c.services.kernel.releaseMutex(handle); });
    return resultado;
}

void EsperaEventoRecursos(CommonModule& c, Long milisegundos) {
    try {
        Handle evento = c.services.kernel.createEvent(true, false, kEventoRecursos);
        c.services.kernel.waitForSingleObject(evento, milisegundos);
        c.services.kernel.closeHandle(evento);
    } catch (const RuntimeError&) {
        // Ignored, as every error here is.
    }
}

}  // namespace fc
