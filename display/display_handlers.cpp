// The operator's handlers of the display screen: the way, the file, the
// load, the stop and the exits.
#include <cctype>

#include "common/address_tests.h"
#include "display/frm_carga_display_grafico.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/file_table.h"
#include "platform/runtime_error.h"

namespace fc {

namespace {
constexpr const char* kIpNoValida = "The IP Address is not a valid one";
}  // namespace

void frmCargaDisplayGrafico::optEthernet_Click() {
    Frame1.setEnabled(false);
    for (OptionButton* p : {&Option1, &Option2, &Option3, &Option4}) p->setEnabled(false);
    tipo_conexion = 0;
    aplicaVia();
}

void frmCargaDisplayGrafico::optrs232_Click() {
    Frame1.setEnabled(true);
    tipo_conexion = 1;
    if (puerto_com == 0) {
        puerto_com = 1;
        Option1.setValue(true);
    }
    for (OptionButton* p : {&Option1, &Option2, &Option3, &Option4}) p->setEnabled(true);
    frComParameters.setEnabled(true);
    aplicaVia();
}

void frmCargaDisplayGrafico::OptionPort_Click(Integer port) {
    puerto_com = port;
}

void frmCargaDisplayGrafico::aplicaVia() {
    if (optEthernet.value()) {
        frComParameters.setVisible(false);
        frComParameters.setEnabled(false);
        frEthParameters.setVisible(true);
        frEthParameters.setEnabled(true);
        setCaption("Firmcast working on Ethernet ");
        return;
    }
    frComParameters.setVisible(true);
    frComParameters.setEnabled(true);
    frEthParameters.setVisible(false);
    frEthParameters.setEnabled(false);
    transporte_elegido = 1;
    if (puerto_com == 0) {
        services_.dialogs.msgBox("You must select one Serial Port");
        return;
    }
    setCaption("Firmcast working on port COM" + std::to_string(puerto_com) + " ");
    if (cmbvelocidades.listIndex() < 0)
        cmbvelocidades.setListIndex(0);
}

void frmCargaDisplayGrafico::File1_Click() {
    std::string path = File1.path();
    fichero_firmware = path + (path.size() == 3 ? "" : "\\") + File1.fileName();
}

// The selected entry stays the file's name (its click has chosen it); the
// caption shows it. It does not start the load.
void frmCargaDisplayGrafico::File1_DblClick() {
    Texto.setVisible(true);
    Texto.setCaption(" ");
    setCaption(caption() + "     " + File1.fileName());
}

void frmCargaDisplayGrafico::Dir1_Change() {
    File1.setPath(Dir1.path());
    listaCarpetas();
    refrescaCarpeta();
}

// The folder itself, its parent ("..") below a drive's root, and its
// sub-folders.
void frmCargaDisplayGrafico::listaCarpetas() {
    const std::string carpeta = Dir1.path();
    Dir1.clear();
    dirEntries_.assign(1, carpeta);
    Dir1.addItem(carpeta);
    if (carpeta.size() > 3) {
        std::size_t barra = carpeta.rfind('\\');
        dirEntries_.push_back(barra <= 2 ? carpeta.substr(0, 3) : carpeta.substr(0, barra));
        Dir1.addItem("   ..");
    }
    const std::string base = carpeta.size() == 3 ? carpeta : carpeta + "\\";
    for (const std::string& nombre : services_.drives.listFolders(carpeta)) {
        dirEntries_.push_back(base + nombre);
        Dir1.addItem("   " + nombre);
    }
}

void frmCargaDisplayGrafico::Dir1_DblClick() {
    const int i = Dir1.listIndex();
    if (i > 0 && i < static_cast<int>(dirEntries_.size()))
        Dir1.setPath(dirEntries_[static_cast<std::size_t>(i)]);
}

void frmCargaDisplayGrafico::Drive1_Change() {
    std::string raiz = std::string(1, static_cast<char>(std::toupper(Drive1.drive()[0]))) + ":\\";
    if (services_.drives.hostPath(raiz).empty()) {
        RuntimeError fallo(err::kDeviceUnavailable);
        services_.dialogs.msgBox(std::to_string(fallo.number()) + " - " + fallo.description(),
                                 mb::kOkOnly, kAppTitle);
        return;
    }
    Dir1.setPath(raiz);
}

void frmCargaDisplayGrafico::refrescaCarpeta() {
    File1.clear();
    for (const std::string& nombre : services_.drives.listFiles(File1.path()))
        File1.addItem(nombre);
}

void frmCargaDisplayGrafico::txtDirTCP_KeyPress(Integer& KeyAscii) {
    if (KeyAscii != 13)
        return;
    if (!EsDireccionIP(txtDirTCP)) {
        services_.dialogs.msgBox(kIpNoValida);
        txtDirTCP.setFocus();
    }
}

void frmCargaDisplayGrafico::habilitaEntradas(bool enabled) {
    for (Control* c : std::initializer_list<Control*>{&Drive1, &Dir1, &File1, &Frame2, &Frame1,
                                                      &frComParameters, &cmdAdelante, &cmdAtras})
        c->setEnabled(enabled);
}

void frmCargaDisplayGrafico::cmdAdelante_Click() {
    if (optEthernet.value() && !EsDireccionIP(txtDirTCP)) {
        services_.dialogs.msgBox(kIpNoValida);
        txtDirTCP.setFocus();
        return;
    }
    habilitaEntradas(false);
    CmdStop.setVisible(true);
    Barra.setValue(0);
    ConfiguraKorvacom();
    CargarFlash();
    habilitaEntradas(true);
    CmdStop.setVisible(false);
}

void frmCargaDisplayGrafico::cmdAtras_Click() {
    hide();
}

void frmCargaDisplayGrafico::CmdStop_Click() {
    Integer tics = 5;
    CerrarKorvaCOM(tics);
    CmdStop.setVisible(false);
    cmdAdelante.setEnabled(true);
    cmdAtras.setEnabled(true);
    Barra.setVisible(false);
    Texto.setVisible(false);
    Label2.setVisible(true);
    Label2.setCaption("Firmcast cancelled by user");
}

// Ends the whole program, main screen included, without asking; the driver
// is told to end and not waited for.
void frmCargaDisplayGrafico::FIN_Click() {
    Integer tics = 0;
    CerrarKorvaCOM(tics);
    services_.files.closeAll();
    throw ProgramEnd{0};
}

void frmCargaDisplayGrafico::Form_Unload() {
    setMousePointer(1);
    FIN_Click();
}

void frmCargaDisplayGrafico::acaba() {
    services_.files.closeAll();
}

void frmCargaDisplayGrafico::timerout_Timer() {
    tiempo_agotado = kTrue;
}

void frmCargaDisplayGrafico::TimerKorvacom_Timer() {
    if (tiempo_restante_comando > 0)
        --tiempo_restante_comando;
}

void frmCargaDisplayGrafico::TimerP0_Timer() {
    p0_agotado = true;
}

}  // namespace fc
