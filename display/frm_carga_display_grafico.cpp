#include "display/frm_carga_display_grafico.h"

namespace fc {

frmCargaDisplayGrafico::frmCargaDisplayGrafico(Services services)
    : Screen("frmCargaDisplayGrafico"), services_(std::move(services)) {
    setCaption(kDisplayCaption);
}

}  // namespace fc
