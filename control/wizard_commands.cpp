// The operator's commands on the main screen. They validate, set the step and
// the remembered choices, and return: the driver does the rest.
#include "control/catalogue.h"
#include "control/firmcast_form.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/file_table.h"
#include "serial/lanza_linea.h"

namespace fc {

void Firmcast::cmdAdelante_Click() {
    switch (paso_asistente) {
        case 0:
            if (modelo_elegido == -1) {
                services_.dialogs.msgBox("You must select a model of scale", mb::kInformation,
                                         kAppTitle);
            } else if (modelo_elegido == 7) {
                cmdAdelanteVisor();
            } else if (modelo_elegido == 3) {
                startGseries();
            } else {
                selectRememberedModel();
            }
            break;
        case 1:
            if (modelo_elegido == 7) {
                cmdAdelanteVisor();
                break;
            }
            paso_asistente = 2;
            Command1_Click();
            break;
        case 2:
            paso_asistente = tipo_conexion == 0 ? 3 : 4;
            break;
        case 3:
            paso_asistente = 4;
            break;
        default:
            break;
    }
}

// The visor has a screen of its own, shown modally: the wizard stays where it
// was and is on screen again when that screen closes.
void Firmcast::cmdAdelanteVisor() {
    if (!visor_) {
        visor_ = std::make_unique<frmCargaMV510>(services_, &services_.network);
        visor_->Form_Load(commandLine_, puerto_com);
        if (!visor_->loaded())
            return;
    }
    services_.dialogs.showModal(*visor_);
}

// Step 0 with a remembered model: raise its flag again, show it, and put the
// remembered way back on screen.
void Firmcast::selectRememberedModel() {
    for (Frame* f : {&frOption, &frEtiquetadoras, &frBalanzas, &frVisores}) f->setVisible(false);
    frComParameters.setEnabled(false);
    frComParameters.setVisible(false);
    if (modelo_elegido >= 0 && modelo_elegido < kCatalogueSize && modelo_elegido != 3 &&
        modelo_elegido != 7) {
        raiseModelFlag(modelo_elegido);
        if (modelo_elegido == 0) {
            cmdDisplayGrafico.setVisible(true);
            cmdDisplayGrafico.setEnabled(true);
        }
        showChosenPicture(pictureOf(modelo_elegido));
    }
    restoreRememberedWay();
    paso_asistente = 1;
}

// Puts the way last used back on screen: Ethernet, or RS-232 and its port.
// Nothing is set while no way was chosen yet.
void Firmcast::restoreRememberedWay() {
    if (transporte_elegido == 0) {
        optEthernet.setValue(true);
    } else if (transporte_elegido == 1) {
        optrs232.setValue(true);
        OptionButton* ports[] = {&Option1, &Option2, &Option3, &Option4};
        if (puerto_elegido >= 1 && puerto_elegido <= 4)
            ports[puerto_elegido - 1]->setValue(true);
    }
}

void Firmcast::showChosenPicture(const PictureBox& picture) {
    PictureVisualizar.setPicture(picture.picture());
    PictureVisualizar.setSize(picture.width(), picture.height());
    PictureVisualizar.setCaption(picture.caption());
    PictureVisualizar.setVisible(true);
    PictureVisualizar.setBackColor(kColourHighlight);
}

void Firmcast::cmdAtras_Click() {
    switch (paso_asistente) {
        case 1:
            paso_asistente = 0;
            cmdDisplayGrafico.setVisible(false);
            cmdDisplayGrafico.setEnabled(false);
            break;
        case 2:
            paso_asistente = 1;
            break;
        case 3:
            paso_asistente = 2;
            lblModelo.setCaption("");
            break;
        default:
            break;
    }
}

// Applies the communication way chosen on step 1.
void Firmcast::Command1_Click() {
    if (optEthernet.value()) {
        transporte_elegido = 0;
        if (es_serie_w) {
            frPuerto.setVisible(false);
            frDirectorio.setVisible(true);
            setCaption("Firmcast working on Ethernet ");
        }
        return;
    }
    transporte_elegido = 1;
    puerto_elegido = puerto_com;
    if (puerto_com == 0) {
        services_.dialogs.msgBox("You must select one Serial Port");
        paso_asistente = 1;
        return;
    }
    if (puerto_com >= 1 && puerto_com <= 4) {
        setCaption("Firmcast working on port COM" + std::to_string(puerto_com) + " ");
    }
    if (Linea.portOpen())
        Linea.setPortOpen(false);
    cmbvelocidades.setListIndex(es_mv510 ? 0 : 1);
    if (lanza_linea()) {
        frPuerto.setVisible(false);
        frDirectorio.setVisible(true);
    }
}

// The start display of a load; on the serial way it also reopens the line,
// which picks up a speed the operator changed on the file step.
void Firmcast::Command2_Click() {
    if (frBalanzasEth.visible()) {
        for (const std::string& address : lista_balanzas) {
            if (address.empty()) {
                services_.dialogs.msgBox("You must introduce the Ip Address for every Scale.",
                                         mb::kExclamation);
                cmbbalanza.setFocus();
                return;
            }
        }
    }
    if (Command2.caption() == "Start")
        setCaption(caption() + fichero_firmware);
    startDisplay();
    if (!optEthernet.value()) {
        if (Linea.portOpen())
            Linea.setPortOpen(false);
        lanza_linea();
        frComParameters.setEnabled(false);
    } else {
        frComParameters.setVisible(false);
    }
    animando = kTrue;
}

void Firmcast::startDisplay() {
    Tiempo1.setInterval(600);
    Tiempo1.setEnabled(true);
    Texto.setVisible(true);
    Texto.setCaption(" ");
    Command2.setEnabled(false);
    Command2.setVisible(false);
}

void Firmcast::File1_DblClick() {
    setCaption(caption() + fichero_firmware);
    startDisplay();
    animando = kTrue;
}

void Firmcast::File1_Click() {
    std::string path = File1.path();
    fichero_firmware = path + (path.size() == 3 ? "" : "\\") + File1.fileName();
    unidad_elegida = Drive1.drive();
    carpeta_elegida = Dir1.path();
    fichero_elegido = File1.fileName();
    showFileCheck();
}

void Firmcast::Dir1_Change() {
    File1.setPath(Dir1.path());
    refreshFileList();
}

void Firmcast::Drive1_Change() {
    std::string former = Dir1.path();
    try {
        setFolder(Drive1.drive());
    } catch (const RuntimeError&) {
        // A drive that is not ready: back to where the folder list was.
        if (former.size() < 2)
            return;
        Drive1.setDrive(
            std::string(1, static_cast<char>(std::tolower(static_cast<unsigned char>(former[0])))) +
            ":");
        try {
            setFolder(former);
        } catch (const RuntimeError&) {
            // The former folder has gone too: the drive's root is shown.
        }
    }
}

void Firmcast::cmdAgain_Click() {
    frBalanzasEth.setVisible(false);
    frBalanzasEth.setEnabled(false);
    esperando_otra = kFalse;
}

void Firmcast::cmdSave_Click() {
    GuardaInfoIni();
}

// The graphic display is loaded from a screen of its own, created and loaded
// the first time it is asked for; the wizard stays on the way step.
void Firmcast::cmdDisplayGrafico_Click() {
    if (!display_) {
        auto arranca = [this](const std::string& commandLine) -> long {
            return hooks_.startProgram ? hooks_.startProgram(commandLine) : 0;
        };
        display_ = std::make_unique<frmCargaDisplayGrafico>(services_, common_, arranca);
        display_->linea_comandos = linea_comandos_;
        display_->Form_Load();
    }
    services_.dialogs.showModal(*display_);
}

void Firmcast::optProduccion_Click() {
    modo_produccion = toFlag(optProduccion.value() == 1);
}

void Firmcast::timerout_Timer() {
    tiempo_agotado = kTrue;
}

// The only cancel: closes everything and ends the program at once, from
// inside whichever wait the driver is in. The device is told nothing.
void Firmcast::FIN_Click() {
    if (Linea.portOpen())
        Linea.setPortOpen(false);
    Tiempo1.setEnabled(false);
    services_.files.close(1);
    services_.files.closeAll();
    throw ProgramEnd{0};
}

void Firmcast::Form_Unload() {
    setMousePointer(1);
    FIN_Click();
}

void Firmcast::acaba() {
    if (Linea.portOpen())
        Linea.setPortOpen(false);
    Tiempo1.setEnabled(false);
    services_.files.closeAll();
}

void Firmcast::acaba2() {
    if (Linea.portOpen())
        Linea.setPortOpen(false);
    services_.files.closeAll();
    Tiempo1.setEnabled(false);
    indice_dibujo = 0;
    estado_lector = 0;
    tiempo_agotado = kFalse;
    animando = kFalse;
}

Flag Firmcast::lanza_linea() {
    LineFamily family =
        (es_serie_n || es_serie_w || es_tr8200) ? LineFamily::SevenEven : LineFamily::EightNone;
    return fc::lanza_linea(panel_, puerto_com, family, paso_asistente);
}

// ---- Drive and folder lists ----------------------------------------------

// Selects a drive ("t:"), as the drive list does; a drive that does not exist
// is the run time's "Device unavailable".
void Firmcast::setDrive(const std::string& drive) {
    if (drive.size() < 2 || !services_.drives.driveExists(drive[0]))
        throw RuntimeError(68);
    showDrives();
    std::string lowered =
        std::string(1, static_cast<char>(std::tolower(static_cast<unsigned char>(drive[0])))) + ":";
    Drive1.setDrive(lowered);
}

// The drive list shows the drives that exist now.
void Firmcast::showDrives() {
    std::vector<std::string> drives;
    for (char letter : services_.drives.existingDrives())
        drives.push_back(std::string(1, letter) + ":");
    bool same = static_cast<int>(drives.size()) == Drive1.listCount();
    for (int i = 0; same && i < Drive1.listCount(); ++i) same = Drive1.list(i) == drives[i];
    if (same)
        return;
    Drive1.clear();
    for (const std::string& drive : drives) Drive1.addItem(drive);
}

// Shows a folder in the folder list; one that does not exist is the run
// time's "Path not found". The list is a folder tree's open branch: the
// drive's root, each folder on the way down (indented by its depth), the
// folder itself, selected, and its sub-folders one step further in.
void Firmcast::setFolder(const std::string& folder) {
    std::string wanted = normaliseWindowsPath(folder.size() == 2 ? folder + "\\" : folder);
    if (services_.drives.hostPath(wanted).empty())
        throw RuntimeError(err::kPathNotFound);
    Dir1.clear();
    dirEntries_.assign(1, wanted.substr(0, 3));
    Dir1.addItem(wanted.substr(0, 3));
    std::string indent = "   ";
    for (std::string::size_type start = 3; start < wanted.size();) {
        std::string::size_type slash = wanted.find('\\', start);
        dirEntries_.push_back(wanted.substr(0, slash));
        Dir1.addItem(indent +
                     wanted.substr(start, slash == std::string::npos ? slash : slash - start));
        indent += "   ";
        start = slash == std::string::npos ? wanted.size() : slash + 1;
    }
    int current = Dir1.listCount() - 1;
    std::string parent = wanted.size() == 3 ? wanted : wanted + "\\";
    for (const std::string& name : services_.drives.listFolders(wanted)) {
        dirEntries_.push_back(parent + name);
        Dir1.addItem(indent + name);
    }
    Dir1.setListIndex(current);
    Dir1.setPath(wanted);
}

void Firmcast::Dir1_DblClick() {
    int index = Dir1.listIndex();
    if (index < 0 || index >= static_cast<int>(dirEntries_.size()))
        return;
    try {
        setFolder(dirEntries_[index]);
    } catch (const RuntimeError&) {
        // The folder went away meanwhile: the list stays as it was.
    }
}

void Firmcast::refreshFileList() {
    File1.clear();
    for (const std::string& name : services_.drives.listFiles(File1.path())) File1.addItem(name);
}

}  // namespace fc
