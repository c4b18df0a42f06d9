// What the main screen hands the line protocols of the serial subsystem: its
// line, file and status controls, its run state, and the clean-ups and the
// line set-up that stay the screen's own.
#include "control/firmcast_form.h"

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

}  // namespace fc
