#include "operator/scale_list_entry.h"

#include "control/firmcast_form.h"
#include "operator/operator_script.h"

namespace fc {

namespace {

constexpr Integer kEnter = 13;

// A person empties the box before typing into it.
void escribe(Firmcast& form, TextBox& caja, const std::string& texto) {
    caja.setText("");
    operatorType(form, caja.name(), texto);
    operatorKey(form, caja.name(), kEnter);
}

}  // namespace

void introduceListaBalanzas(Firmcast& form, const std::vector<std::string>& direcciones,
                            bool guardar) {
    escribe(form, form.Text1, std::to_string(direcciones.size()));
    const int entradas = form.cmbbalanza.listCount();
    for (int i = 0; i < static_cast<int>(direcciones.size()) && i < entradas; ++i) {
        operatorSelect(form, "cmbbalanza", i);
        escribe(form, form.txtDirTCP, direcciones[i]);
    }
    if (guardar)
        operatorClick(form, "cmdSave");
}

}  // namespace fc
