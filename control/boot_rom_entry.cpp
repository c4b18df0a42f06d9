// How an operator reaches the boot-ROM load of a Serie_G scale. The
// catalogue's G picture starts the scale's own tool; the button "G scale
// through its boot ROM", under the kinds of device on step 0, shows instead
// the frame of the two kinds of G scale (hacerf). The choice made there sets
// the recording range as its own handler does (Balanza G at level 2 asks for
// the range on Frame4); once a range is set, es_serie_g goes up and the
// wizard goes on to the way step, as after a model's picture. Where the
// choice starts the tool instead (Balanza G at level 1, Cuenta-piezas at
// levels 0 and 2), the wizard stays on step 0 as after the G picture.
#include "control/firmcast_form.h"

namespace fc {

void Firmcast::cmdCargaRomG_Click() {
    choosingBootRomRange_ = true;
    launchesBeforeChoice_ = gseriesLaunches_;
    // The kinds of G scale in place of the models' pictures; a kind of
    // device chosen again shows its pictures again.
    for (Frame* f : {&frBalanzas, &frEtiquetadoras, &frVisores}) f->setVisible(false);
    hacerf.setVisible(true);
    hacerf.setEnabled(true);
}

// After Option5 or Option7: the model, unless the tool was started.
void Firmcast::afterKindOfGChosen() {
    if (!choosingBootRomRange_)
        return;
    choosingBootRomRange_ = false;
    hacerf.setVisible(false);
    hacerf.setEnabled(false);
    highlightOnly(3);
    modelo_elegido = 3;
    if (gseriesLaunches_ != launchesBeforeChoice_)
        return;
    chooseBootRomModel();
}

void Firmcast::chooseBootRomModel() {
    clearModelFlags();
    es_serie_g = kTrue;
    // A tool started earlier in this cycle is the operator's own business
    // now: the load chosen here goes on.
    lanzado_gseries = kFalse;
    for (Frame* f : {&frOption, &frEtiquetadoras, &frBalanzas, &frVisores}) f->setVisible(false);
    showChosenPicture(Picture6);
    frComParameters.setEnabled(false);
    frComParameters.setVisible(false);
    transporte_elegido = 1;
    unidad_elegida.clear();
    paso_asistente = 1;
}

}  // namespace fc
