// The recording ranges of a Serie_G boot ROM load: the option buttons of the
// frames hacerf and Frame4. The frames are created hidden and disabled; the
// values these handlers leave are what the boot ROM loader reads. Every
// handler clears its own button at the end, so that it can be pressed again.
#include "control/firmcast_form.h"
#include "platform/pump.h"

namespace fc {

void Firmcast::chooseRange(Byte banco, Long limite) {
    rango_banco = banco;
    limite_rango = limite;
}

// Balanza G: at level 1 the tool loads it; at level 2 the operator picks the
// range on Frame4, the screen staying alive meanwhile; levels 0 and 3 have a
// fixed range.
void Firmcast::Option5_Click() {
    hacer_f = kFalse;
    switch (nivel) {
        case 0:
            chooseRange(0xEA, 0x7600);
            break;
        case 1:
            launchGseries();
            break;
        case 2:
            waitForRangeChoice();
            break;
        case 3:
            chooseRange(0xF6, 0x7C00);
            break;
        default:
            break;
    }
    rango_elegido = kTrue;
    Option5.setValue(false);
}

void Firmcast::waitForRangeChoice() {
    hacerf.setVisible(false);
    hacerf.setEnabled(false);
    Frame4.setVisible(true);
    Frame4.setEnabled(true);
    rango_elegido = kFalse;
    while (!rango_elegido) services_.pump.doEventsForOperator();
    Frame4.setVisible(false);
    Frame4.setEnabled(false);
}

// Counting or weight-only scales: the levels split the other way round from
// Option5, the tool at levels 0 and 2.
void Firmcast::Option7_Click() {
    if (nivel == 0 || nivel == 2) {
        launchGseries();
    } else {
        hacer_f = kFalse;
        chooseRange(0xF6, 0x7C00);
    }
    rango_elegido = kTrue;
    Option7.setValue(false);
}

void Firmcast::Option6_Click() {
    chooseRange(0xFE, 0x7FFF);
    rango_elegido = hacer_f = kTrue;
    Option6.setValue(false);
}

void Firmcast::Option9_Click() {
    chooseRange(0xF7, 0x7C00);
    rango_elegido = hacer_f = kTrue;
    Option9.setValue(false);
}

void Firmcast::Option8_Click() {
    chooseRange(0xEF, 0x7800);
    rango_elegido = hacer_f = kTrue;
    Option8.setValue(false);
}

void Firmcast::Option10_Click() {
    chooseRange(0xEB, 0x7600);
    rango_elegido = hacer_f = kTrue;
    Option10.setValue(false);
}

// The normal scale keeps hacer_f as it was: after Option5 that is False.
void Firmcast::Option11_Click() {
    chooseRange(0xEA, 0x7600);
    rango_elegido = kTrue;
    Option11.setValue(false);
}

}  // namespace fc
