// The editing of the scale list on step 3: the count in Text1, the choice of
// a scale in cmbbalanza and its address in txtDirTCP. Each takes effect on
// Enter only.
#include "common/address_tests.h"
#include "control/firmcast_form.h"
#include "control/text_numbers.h"
#include "platform/dialogs.h"

namespace fc {

namespace {

constexpr Integer kEnter = 13;
// The keyboard allows up to twenty scales.
constexpr Integer kLimiteTeclado = 21;

bool esDigito(Integer tecla) {
    return tecla >= '0' && tecla <= '9';
}

}  // namespace

// Letters are not filtered: the count is converted on every digit and on
// Enter, and a text that is not a number is the run time's type mismatch.
void Firmcast::Text1_KeyPress(Integer& KeyAscii) {
    if (!esDigito(KeyAscii) && KeyAscii != kEnter)
        return;
    Integer valor = enteroDeTexto(Text1.text() + static_cast<char>(KeyAscii));
    if (valor >= kLimiteTeclado) {
        services_.dialogs.msgBox("It is not allowed to load more that twenty scales",
                                 mb::kInformation);
        KeyAscii = 0;
    }
    if (KeyAscii == kEnter) {
        // The scales that still fit keep their addresses.
        if (valor < 1)
            throw RuntimeError(err::kSubscriptOutOfRange);
        lista_balanzas.resize(valor);
        PrepararListaBalanzas(lstBalanzas, valor);
        CargaComboBalanzas();
        cmbbalanza.setFocus();
    }
    // The operator goes on in the count box, even after Enter.
    Text1.setFocus();
}

void Firmcast::cmbbalanza_Click() {
    Long indice = cmbbalanza.itemData(cmbbalanza.listIndex());
    if (indice < 0 || indice >= static_cast<Long>(lista_balanzas.size()))
        throw RuntimeError(err::kSubscriptOutOfRange);
    txtDirTCP.setText(lista_balanzas[indice]);
}

void Firmcast::cmbbalanza_KeyPress(Integer& KeyAscii) {
    if (KeyAscii != kEnter)
        return;
    cmbbalanza_Click();
    txtDirTCP.setFocus();
}

// An address is stored only here, on Enter; moving on to the next scale is
// left to the operator.
void Firmcast::txtDirTCP_KeyPress(Integer& KeyAscii) {
    if (KeyAscii != kEnter)
        return;
    if (!EsDireccionIP(txtDirTCP)) {
        services_.dialogs.msgBox("The IP Address is not a valid one", mb::kExclamation);
        txtDirTCP.setFocus();
        return;
    }
    Long indice = cmbbalanza.itemData(cmbbalanza.listIndex());
    const std::string direccion = txtDirTCP.text();
    if (DireccionRepetida(common(), lista_balanzas, direccion, std::to_string(indice))) {
        services_.dialogs.msgBox("It is not allowed to introduce twice the same Ip Address",
                                 mb::kInformation);
        txtDirTCP.selectAll();
        txtDirTCP.setFocus();
        return;
    }
    lstBalanzas.setCell(indice, 1, direccion);
    if (indice < 0 || indice >= static_cast<Long>(lista_balanzas.size()))
        throw RuntimeError(err::kSubscriptOutOfRange);
    lista_balanzas[indice] = direccion;
    cmbbalanza.setFocus();
}

}  // namespace fc
