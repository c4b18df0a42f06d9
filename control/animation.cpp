// The load animation: twelve pictures shown one after another while a load
// runs, and its stop before every result message.
#include "control/firmcast_form.h"

namespace fc {

void Firmcast::Tiempo1_Timer() {
    if (!animando) {
        Tiempo1.setEnabled(false);
        return;
    }
    indice_dibujo = static_cast<Byte>(indice_dibujo + 1);
    if (indice_dibujo >= 1 && indice_dibujo <= 12) {
        dibujo(indice_dibujo == 1 ? 12 : indice_dibujo - 1).setVisible(false);
        dibujo(indice_dibujo).setVisible(true);
    }
    if (indice_dibujo == 12)
        indice_dibujo = 0;
}

void Firmcast::paradibu() {
    Tiempo1.setEnabled(false);
    for (auto& picture : Dibujo) picture->setVisible(false);
}

}  // namespace fc
