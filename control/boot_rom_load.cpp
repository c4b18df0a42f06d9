// The boot ROM load of a Serie_G scale on this screen's line, its file
// reader's image and its range variables.
#include "control/firmcast_form.h"
#include "control/firmware_panels.h"
#include "serial/msc1210_loader.h"

namespace fc {

void Firmcast::bootRomLoad() {
    LinePanel line = linePanel();
    ReaderPanel reader = readerPanel(*this);
    Msc1210Panel panel{line,        reader,       linea_envio, respuesta_msc, intento_msc,
                       rango_banco, limite_rango, hacer_f,     nivel};
    carga_F(panel);
}

}  // namespace fc
