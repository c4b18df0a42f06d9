// The Ethernet path of the main driver up to the load itself: the scale list
// on step 3, its wait, and the hand-over to the Ethernet loader.
#include "control/firmcast_form.h"
#include "platform/dialogs.h"

namespace fc {

Firmcast::Next Firmcast::ethernetPath() {
    Drive1.setEnabled(false);
    Dir1.setEnabled(false);
    File1.setEnabled(false);
    frBalanzasEth.setVisible(true);
    frBalanzasEth.setEnabled(true);
    Text1.setText("");
    // The list is read afresh from the file: nothing entered before is kept.
    lista_balanzas.assign(1, "");
    CargaInfoIni();
    cmdSave.setEnabled(true);
    Next back = waitInScaleStep();
    if (back != Next::ReEntry)
        return back;
    if (hooks_.ethernetPath) {
        hooks_.ethernetPath(*this);
    } else {
        services_.dialogs.msgBox(
            "The Ethernet loader is not available in this build of the program");
        cmdAgain.setVisible(true);
    }
    return Next::EndOfPass;
}

}  // namespace fc
