#include "control/firmware_panels.h"

#include "control/firmcast_form.h"

namespace fc {

ReaderPanel readerPanel(Firmcast& form) {
    const Services& s = form.services();
    return ReaderPanel{s.dialogs,          s.files,      s.drives,
                       form.Barra,         form.Label2,  form.fichero_firmware,
                       form.linea_fichero, form.memoria, form.pos_memoria,
                       form.estado_lector};
}

SegmentState segmentState(Firmcast& form) {
    return SegmentState{form.banco_fichero, form.base_segmento};
}

PreprocessPanel preprocessPanel(Firmcast& form) {
    const Services& s = form.services();
    return PreprocessPanel{s.pump,
                           s.dialogs,
                           s.files,
                           s.drives,
                           form.lblModelo,
                           form.es_serie_n,
                           form.es_serie_w,
                           form.es_tr8200,
                           form.linea_fichero,
                           form.inicio_linea,
                           form.cabecera_modelo,
                           form.mensajes,
                           form.longitud_datos,
                           [&form] { form.acaba2(); }};
}

}  // namespace fc
