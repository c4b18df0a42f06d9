// The choice of the way to the visor, and the serial line's opening with a
// pulse on DTR that resets the visor's line interface.
#include "platform/dialogs.h"
#include "platform/pump.h"
#include "platform/runtime_error.h"
#include "visor/frm_carga_mv510.h"
#include "visor/mv510_texts.h"

namespace fc {

namespace {

constexpr int kPulsoDtr = 1000;

}  // namespace

void frmCargaMV510::optEthernet_Click() {
    Frame1.setEnabled(false);
    for (OptionButton* o : {&Option1, &Option2, &Option3, &Option4}) o->setEnabled(false);
    tipo_conexion = 0;
    preparaTransporte();
}

void frmCargaMV510::optrs232_Click() {
    Frame1.setEnabled(true);
    for (OptionButton* o : {&Option1, &Option2, &Option3, &Option4}) o->setEnabled(true);
    tipo_conexion = 1;
    preparaTransporte();
}

void frmCargaMV510::OptionPort_Click(Integer port) {
    puerto_com = port;
}

void frmCargaMV510::preparaTransporte() {
    if (optEthernet.value()) {
        if (Linea.portOpen())
            Linea.setPortOpen(false);
        frComParameters.setVisible(false);
        frEthParameters.setVisible(true);
        setCaption("Firmcast working on Ethernet ");
        return;
    }
    frEthParameters.setVisible(false);
    if (puerto_com == 0) {
        services_.dialogs.msgBox(mv510::kSinPuerto);
        return;
    }
    setCaption("Firmcast working on port COM" + std::to_string(puerto_com) + " ");
    if (Linea.portOpen())
        Linea.setPortOpen(false);
    if (cmbvelocidades.listIndex() == -1)
        cmbvelocidades.setListIndex(0);
    lanza_linea();
}

Flag frmCargaMV510::lanza_linea() {
    try {
        std::string velocidad;
        if (cmbvelocidades.listIndex() >= 0) {
            velocidad = cmbvelocidades.list(cmbvelocidades.listIndex());
        } else {
            velocidad = "57600";
            cmbvelocidades.setListIndex(1);
        }
        Linea.setCommPort(puerto_com);
        Linea.setSettings(velocidad + ",N,8,1");
        lblBits.setCaption("Bits: 8");
        lblParidad.setCaption("Parity: NONE");
        if (Linea.portOpen())
            Linea.setPortOpen(false);
        Linea.setDTREnable(true);
        services_.pump.sleep(kPulsoDtr);
        Linea.setPortOpen(true);
        Linea.setInputMode(0);
        frComParameters.setVisible(true);
        Linea.setDTREnable(false);
        return kTrue;
    } catch (const RuntimeError&) {
        services_.dialogs.msgBox(mv510::kErrorPuerto + std::to_string(puerto_com));
        if (Linea.portOpen())
            Linea.setPortOpen(false);
        return kFalse;
    }
}

}  // namespace fc
