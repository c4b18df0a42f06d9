#include "control/mac_steps.h"

#include "control/firmcast_form.h"
#include "mac/dame_mac_address.h"
#include "mac/frm_datos_balanza.h"
#include "mac/mac_module.h"

namespace fc {

void wireMacSteps(Firmcast& form, MacModule& m) {
    form.hooks().DameMACAddress = [&m](Firmcast&) { return DameMACAddress(m); };
    form.hooks().frmDatosBalanza = [&m](Firmcast& f) {
        frmDatosBalanza datos(DatosBalanzaPanel{m, f.red(), f.mac_actual, f.pide_mac, f.nivel,
                                                f.tipo_conexion, f.lista_balanzas,
                                                f.balanza_actual});
        datos.Mostrar();
        f.numero_serie = datos.txtSerialNumber.text();
    };
}

}  // namespace fc
