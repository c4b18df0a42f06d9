#include "visor/frm_carga_mv510.h"

namespace fc {

frmCargaMV510::frmCargaMV510(Services services)
    : Screen("frmCargaMV510"), services_(std::move(services)) {
    setCaption(kVisorCaption);
}

}  // namespace fc
