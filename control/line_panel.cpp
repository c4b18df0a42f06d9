// The main screen's line protocols: the numbered and banked dialects of the
// serial subsystem, run on this screen's line, file and status controls.
#include "control/firmcast_form.h"
#include "serial/banked_line.h"
#include "serial/numbered_line.h"

namespace fc {

LinePanel Firmcast::linePanel() {
    return LinePanel{panel_,
                     services_.files,
                     1,
                     Texto,
                     Barra,
                     Banco_actual,
                     Label2,
                     Tiempo1,
                     linea_fichero,
                     inicio_linea,
                     numero_linea,
                     pide_mac,
                     linea_ok,
                     es_serie_w,
                     es_tr8200,
                     es_tr6100,
                     [this] { paradibu(); },
                     [this] { acaba(); },
                     [this] { acaba2(); },
                     [this] { return lanza_linea(); }};
}

// Fills the hooks of the line protocols that the program did not set itself.
void Firmcast::useLineProtocols() {
    auto onPanel = [](auto protocol) {
        return [protocol](Firmcast& f) {
            LinePanel p = f.linePanel();
            return protocol(p);
        };
    };
    if (!hooks_.numberedConnect)
        hooks_.numberedConnect = onPanel(numberedConnect);
    if (!hooks_.numberedFirstLine)
        hooks_.numberedFirstLine = onPanel(numberedFirstLine);
    if (!hooks_.numberedLoop)
        hooks_.numberedLoop = onPanel(numberedLoop);
    if (!hooks_.EnviaLineaNumerada)
        hooks_.EnviaLineaNumerada = onPanel(EnviaLineaNumerada);
    if (!hooks_.testk1)
        hooks_.testk1 = onPanel(testk1);
    if (!hooks_.bankedFirstLine)
        hooks_.bankedFirstLine = onPanel(bankedFirstLine);
    if (!hooks_.bankedLoop)
        hooks_.bankedLoop = onPanel(bankedLoop);
}

}  // namespace fc
