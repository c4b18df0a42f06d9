// The main driver: start-up, the cycle of wizard steps with their waits, the
// re-entry point, the end of a pass and the fatal trap. The load paths are in
// serial_load.cpp and the Ethernet subsystem.
#include <cctype>

#include "control/catalogue.h"
#include "control/firmcast_form.h"
#include "platform/dialogs.h"
#include "platform/file_table.h"
#include "platform/pump.h"
#include "serial/line_speeds.h"

namespace fc {

void Firmcast::Form_Load(const std::string& commandLine) {
    runDriver(commandLine);
    throw ProgramEnd{0};  // not reached: the driver never returns
}

void Firmcast::runDriver(const std::string& commandLine) {
    startUp(commandLine);
    Next next = Next::CycleHead;
    for (;;) {
        try {
            switch (next) {
                case Next::CycleHead:
                    next = cycleHead();
                    break;
                case Next::WayStep:
                    next = wayStep();
                    break;
                case Next::FileStep:
                    next = fileStep();
                    break;
                case Next::ReEntry:
                    next = reEntry();
                    break;
                case Next::EndOfPass:
                    next = endOfPass();
                    break;
            }
        } catch (const RuntimeError& error) {
            if (trapArmed_)
                fatalTrap(error);
            unhandledError(error);
        }
    }
}

void Firmcast::startUp(const std::string& commandLine) {
    linea_comandos_ = commandLine;
    setCaption(caption() + " A");
    commandLine_ = commandLine;
    nivel = commandLine.empty() ? 0
                                : Integer((std::isdigit(static_cast<unsigned char>(commandLine[0]))
                                               ? commandLine[0] - '0'
                                               : 0) &
                                          15);
    if (nivel > 3) {
        services_.dialogs.msgBox("The parameter is not valid.", mb::kCritical, kAppTitle);
        try {
            load();  // the unload below needs a loaded form to run its handler
            unload();
        } catch (ProgramEnd&) {
            throw ProgramEnd{2};
        }
    }
    load();
    showOperatingLevel();
    showPortDevices();
    tipo_conexion = 0;
    CargaComboVelocidades(cmbvelocidades);
    lanzado_gseries = kFalse;
    modelo_elegido = transporte_elegido = puerto_elegido = kTrue;
    unidad_elegida.clear();
    carpeta_elegida.clear();
    fichero_elegido.clear();
    modo_produccion = toFlag(nivel == 1);
    optBalanzas.setValue(true);
}

// ---- Step 0 ---------------------------------------------------------------

Firmcast::Next Firmcast::cycleHead() {
    Barra.setValue(0);
    Banco_actual.setCaption("");
    cmdAtras.setEnabled(false);
    cmdAdelante.setEnabled(true);
    EligeModelo(std::to_string(modelo_elegido));
    frOption.setVisible(true);
    frBalanzas.setVisible(optBalanzas.value());
    frEtiquetadoras.setVisible(optEtiquetadoras.value());
    frVisores.setVisible(optVisores.value());
    frComParameters.setVisible(false);
    frComParameters.setEnabled(true);
    Seleccion.setVisible(true);
    Seleccion.setEnabled(true);
    frPuerto.setVisible(false);
    frDirectorio.setVisible(false);
    frInfoComunicacion.setVisible(false);

    while (!anyModelFlag()) {
        services_.pump.doEventsForOperator();
        services_.pump.sleep(1);
    }
    if (es_serie_g && lanzado_gseries) {
        es_serie_g = lanzado_gseries = kFalse;
        return Next::CycleHead;
    }
    cmdAtras.setEnabled(true);
    Seleccion.setVisible(false);
    Seleccion.setEnabled(false);
    frPuerto.setVisible(true);
    for (auto& picture : Dibujo) picture->setVisible(false);
    indice_dibujo = 0;
    estado_lector = 0;
    tiempo_agotado = kFalse;
    return Next::WayStep;
}

// ---- Step 1 ---------------------------------------------------------------

Firmcast::Next Firmcast::wayStep() {
    frPuerto.setVisible(true);
    frDirectorio.setVisible(false);
    frInfoComunicacion.setVisible(false);
    bool withEthernet = es_serie_w || es_tr8200;
    optEthernet.setEnabled(withEthernet);
    if (transporte_elegido == 0 || transporte_elegido == 1) {
        restoreRememberedWay();
    } else if (withEthernet) {
        optEthernet.setEnabled(true);
        if (tipo_conexion == 0) {
            optEthernet.setValue(true);
        } else {
            optrs232.setValue(true);
        }
    } else {
        optEthernet.setEnabled(false);
        optrs232.setValue(true);
    }
    waitWhileStep(1);
    return paso_asistente == 0 ? Next::CycleHead : Next::FileStep;
}

// ---- Step 2 ---------------------------------------------------------------

Firmcast::Next Firmcast::fileStep() {
    frPuerto.setVisible(false);
    frDirectorio.setVisible(true);
    frInfoComunicacion.setVisible(false);
    frBalanzasEth.setVisible(false);
    lblInformacion.setVisible(false);
    Drive1.setEnabled(true);
    Dir1.setEnabled(true);
    File1.setEnabled(true);
    try {
        if (unidad_elegida.empty()) {
            if (File1.listCount() > 0)
                File1.setListIndex(0);
            showStartFolder();
        } else {
            restoreRememberedFile();
        }
    } catch (const RuntimeError&) {
        fallBackToDriveC();
    }
    frComParameters.setEnabled(tipo_conexion == 1 && (es_serie_w || es_tr8200 || es_mv510));

    waitWhileStep(2);
    if (paso_asistente == 1)
        return Next::WayStep;
    if (paso_asistente == 0)
        return Next::CycleHead;
    fichero_procesado = kFalse;
    return Next::ReEntry;
}

void Firmcast::waitWhileStep(Integer step) {
    while (paso_asistente == step) {
        services_.pump.doEventsForOperator();
        services_.pump.sleep(1);
    }
}

// The model's folder on the drive of the level: T: at level 1, S: at level 2,
// C:\ for everyone at levels 0 and 3.
void Firmcast::showStartFolder() {
    if (nivel != 1 && nivel != 2) {
        setDrive("c:");
        setFolder("C:\\");
        return;
    }
    int code = modelCodeOfFlags();
    const CatalogueEntry& entry = catalogueEntry(code < 0 ? 0 : code);
    setDrive(nivel == 1 ? "t:" : "s:");
    setFolder(nivel == 1 ? entry.folderLevel1 : entry.folderLevel2);
}

void Firmcast::restoreRememberedFile() {
    setDrive(unidad_elegida);
    setFolder(carpeta_elegida);
    for (int i = 0; i < File1.listCount(); ++i) {
        if (File1.list(i) == fichero_elegido) {
            File1.setListIndex(i);
            break;
        }
    }
}

// Any failure to show the start folder lands on C:\, without a word.
void Firmcast::fallBackToDriveC() {
    try {
        setDrive("c:");
        setFolder("C:\\");
    } catch (const RuntimeError&) {
        // C: always exists; if even it cannot be listed the lists stay empty.
    }
}

// ---- Re-entry point and the end of a pass ---------------------------------

Firmcast::Next Firmcast::reEntry() {
    trapArmed_ = true;
    frComParameters.setEnabled(false);
    if (optEthernet.value() && (es_serie_w || es_tr8200))
        return ethernetPath();
    return serialPath();
}

Firmcast::Next Firmcast::endOfPass() {
    paso_asistente = 0;
    setMousePointer(1);
    cmdAgain.setVisible(true);
    optProduccion.setVisible(true);
    optProduccion.setValue(modo_produccion ? 1 : 0);
    esperando_otra = kTrue;
    while (esperando_otra) {
        services_.pump.doEventsForOperator();
        services_.pump.sleep(1);
    }
    cmdAdelante.setEnabled(true);
    cmdAtras.setEnabled(true);
    optProduccion.setVisible(false);
    cmdAgain.setVisible(false);
    if (!modo_produccion) {
        paso_asistente = 0;
        return Next::CycleHead;
    }
    paso_asistente = 3;
    if (es_tr6100 || es_serie_h || es_matrix4000 || es_serie_g)
        cmbvelocidades.setListIndex(1);
    return Next::ReEntry;
}

// A run-time error inside a load: its number and description run together in
// one box, the line and files are closed, and the program ends.
void Firmcast::fatalTrap(const RuntimeError& error) {
    services_.dialogs.msgBox(std::to_string(error.number()) + error.description(), mb::kCritical,
                             kAppTitle);
    acaba();
    throw ProgramEnd{3};
}

}  // namespace fc
