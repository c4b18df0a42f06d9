// The Ethernet path of the main driver, from the scale list of step 3 to the
// wait for "Again": the list read from config.ini, the file prepared once
// (its messages and its image's checksum), the load of every scale, and the
// screen given back to the operator. Production Way comes back here and
// loads the same messages again without preparing the file anew.
#include "control/firmcast_form.h"
#include "control/firmware_panels.h"
#include "ethernet/envia_mensajes.h"
#include "firmware/checksum_memoria.h"
#include "firmware/file_loader.h"
#include "firmware/preprocesa_file.h"

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
    for (Control* c :
         std::initializer_list<Control*>{&Text1, &cmbbalanza, &txtDirTCP, &chkADSL, &cmdSave})
        c->setEnabled(false);
    lblInformacion.setCaption("Processing File ...");
    lblInformacion.setVisible(true);
    setMousePointer(13);
    cmdAdelante.setEnabled(false);
    cmdAtras.setEnabled(false);
    if (!fichero_procesado)
        processEthernetFile();
    estado_balanzas.assign(lista_balanzas.size(), false);
    // A scale that is not loaded keeps what the preparation left.
    resultado_balanzas.assign(lista_balanzas.size(), lblInformacion.caption());
    if (fichero_procesado)
        loadEthernetScales();
    endEthernetLoad();
    return Next::EndOfPass;
}

// The messages of the file, then its image and the checksum it must give,
// read whether the messages could be made or not.
void Firmcast::processEthernetFile() {
    PreprocessPanel panel = preprocessPanel(*this);
    if (PreprocesaFile(panel, fichero_firmware)) {
        fichero_procesado = kTrue;
    } else {
        lblInformacion.setCaption("");
    }
    ReaderPanel reader = readerPanel(*this);
    carga_ficheroL(reader, segmentState(*this));
    checksum_memoria = calcula_checksum_memoria(memoria);
}

void Firmcast::loadEthernetScales() {
    for (std::size_t i = 0; i < lista_balanzas.size(); ++i) {
        if (static_cast<int>(i) < static_cast<int>(lstBalanzas.rows().size()))
            lstBalanzas.setCell(static_cast<int>(i), 2, "");
    }
    EthernetPanel panel = ethernetPanel();
    EnviaMensajes(panel);
}

// What the operator keeps of each scale once the run has gone on: the row's
// result, "ok" or "failed" and the last text of the scale's turn, the same
// words as the headless program's line.
void Firmcast::noteScaleResult(int i) {
    resultado_balanzas[i] = lblInformacion.caption();
    if (i < static_cast<int>(lstBalanzas.rows().size()))
        lstBalanzas.setCell(i, 2,
                            (estado_balanzas[i] ? "ok: " : "failed: ") + resultado_balanzas[i]);
}

void Firmcast::endEthernetLoad() {
    setMousePointer(1);
    for (Control* c : std::initializer_list<Control*>{&Text1, &cmbbalanza, &txtDirTCP, &chkADSL})
        c->setEnabled(true);
    cmdSave.setEnabled(false);
    cmdAgain.setVisible(true);
    BarraEth.setVisible(false);
    Label2.setVisible(false);
    optProduccion.setVisible(true);
    optProduccion.setValue(modo_produccion ? 1 : 0);
}

EthernetPanel Firmcast::ethernetPanel() {
    return EthernetPanel{
        services_.pump,
        services_.dialogs,
        red_,
        WsckCliente,
        WsckClienteSiguiente,
        TimerConnection,
        TimerEnvio,
        timerout,
        tiempo_agotado,
        lblInformacion,
        Texto,
        BarraEth,
        lstBalanzas,
        chkADSL,
        nivel,
        mensajes,
        lista_balanzas,
        primera_balanza,
        estado_balanzas,
        puerto_tx,
        checksum_memoria,
        mac_actual,
        mac_tabla,
        pide_mac,
        balanza_actual,
        respuesta_balanza,
        [this] { return hooks_.DameMACAddress ? hooks_.DameMACAddress(*this) : std::string(); },
        [this] {
            if (hooks_.frmDatosBalanza)
                hooks_.frmDatosBalanza(*this);
        },
        [this] { paradibu(); },
        [this](int i) {
            if (hooks_.scaleTurnStarted)
                hooks_.scaleTurnStarted(*this, i);
        },
        [this](int i) {
            noteScaleResult(i);
            if (hooks_.scaleTurnEnded)
                hooks_.scaleTurnEnded(*this, i);
        }};
}

}  // namespace fc
