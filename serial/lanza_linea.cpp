#include "serial/lanza_linea.h"

#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/runtime_error.h"
#include "platform/serial_line.h"
#include "serial/line_speeds.h"

namespace fc {

namespace {

std::string chosenSpeed(ComboBox& cmbvelocidades) {
    if (cmbvelocidades.listIndex() != -1 && cmbvelocidades.listCount() != 0) {
        return speedForItemData(cmbvelocidades.itemData(cmbvelocidades.listIndex()));
    }
    cmbvelocidades.setListIndex(1);
    return "57600";
}

void applyFamily(SerialPanel& panel, const std::string& speed, LineFamily family) {
    if (family == LineFamily::SevenEven) {
        panel.Linea.setSettings(speed + ",e,7,1");
        panel.lblBits.setCaption("Bits: 7");
        panel.lblParidad.setCaption("Parity: EVEN");
    } else {
        panel.Linea.setSettings(speed + ",N,8,1");
        panel.lblBits.setCaption("Bits: 8");
        panel.lblParidad.setCaption("Parity: NONE");
    }
}

void reportPortError(SerialPanel& panel, Integer puerto_com) {
    if (puerto_com >= 1 && puerto_com <= 4) {
        panel.dialogs.msgBox("Error at port COM" + std::to_string(puerto_com));
    }
}

}  // namespace

Flag lanza_linea(SerialPanel& panel, Integer puerto_com, LineFamily family,
                 Integer& paso_asistente) {
    try {
        std::string speed = chosenSpeed(panel.cmbvelocidades);
        panel.Linea.setCommPort(puerto_com);
        applyFamily(panel, speed, family);
        panel.Linea.setPortOpen(true);
        panel.Linea.setInputMode(0);
        panel.frComParameters.setVisible(true);
        return kTrue;
    } catch (const RuntimeError&) {
        reportPortError(panel, puerto_com);
        panel.Linea.setPortOpen(false);
        paso_asistente = 1;
        return kFalse;
    }
}

}  // namespace fc
