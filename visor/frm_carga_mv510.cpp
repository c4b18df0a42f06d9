#include "visor/frm_carga_mv510.h"

#include <cctype>

#include "common/folder_list.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/runtime_error.h"
#include "visor/isp_way.h"
#include "visor/isp_ways.h"
#include "visor/mv510_texts.h"

namespace fc {

namespace {

constexpr const char* kCarpetaProduccion = "t:\\Programas\\Industrial\\Visores\\MV-510";

// The speeds of the line, fastest first.
constexpr const char* kVelocidades[] = {"115200", "57600", "38400", "28800", "19200",
                                        "14400",  "9600",  "2400",  "1200"};

// The level is the first character of the command line, as the main screen
// reads it.
Integer nivelDe(const std::string& commandLine) {
    if (commandLine.empty())
        return 0;
    const unsigned char c = static_cast<unsigned char>(commandLine[0]);
    return static_cast<Integer>((std::isdigit(c) ? c - '0' : 0) & 15);
}

}  // namespace

frmCargaMV510::frmCargaMV510(Services services, Network* network)
    : Screen("frmCargaMV510"),
      timerout(services.pump, "timerout"),
      Linea(services.pump, services.serialPorts),
      services_(std::move(services)),
      network_(network) {
    setCaption(kVisorCaption);
    if (network_) {
        Winsock_Envio = std::make_unique<UdpSocket>(services_.pump, *network_);
        Winsock_recepcion = std::make_unique<UdpSocket>(services_.pump, *network_);
    }
    serialWay_ = makeSerialWay(*this);
    udpWay_ = makeUdpWay(*this);
    buildControls();
    wireHandlers();
}

frmCargaMV510::~frmCargaMV510() = default;

void frmCargaMV510::buildControls() {
    enrol(timerout);
    Frame1.setCaption("Serial port selection");
    Option1.setCaption("COM 1");
    Option2.setCaption("COM 2");
    Option3.setCaption("COM 3");
    Option4.setCaption("COM 4");
    optrs232.setCaption("RS-232");
    optEthernet.setCaption("Ethernet");
    // RS-232 is the way the screen is drawn with.
    optrs232.setValue(true);
    frComParameters.setCaption("Serial Parameters");
    frEthParameters.setCaption("Ethernet Parameters");
    frEthParameters.setVisible(false);
    lblDirTCP.setCaption("IP Address");
    lblPort.setCaption("UDP Port");
    cmdAdelante.setCaption("Load");
    cmdAtras.setCaption("Back");
    CmdStop.setCaption("Stop");
    CmdStop.setVisible(false);
    FIN.setCaption("Exit");
}

void frmCargaMV510::wireHandlers() {
    cmdAdelante.onClick = [this] { cmdAdelante_Click(); };
    cmdAtras.onClick = [this] { cmdAtras_Click(); };
    CmdStop.onClick = [this] { CmdStop_Click(); };
    FIN.onClick = [this] { FIN_Click(); };
    optrs232.onClick = [this] { optrs232_Click(); };
    optEthernet.onClick = [this] { optEthernet_Click(); };
    Option1.onClick = [this] { OptionPort_Click(1); };
    Option2.onClick = [this] { OptionPort_Click(2); };
    Option3.onClick = [this] { OptionPort_Click(3); };
    Option4.onClick = [this] { OptionPort_Click(4); };
    File1.onClick = [this] { File1_Click(); };
    File1.onDblClick = [this] { File1_DblClick(); };
    Dir1.onChange = [this] { Dir1_Change(); };
    Dir1.onDblClick = [this] { Dir1_DblClick(); };
    Drive1.onChange = [this] { Drive1_Change(); };
    timerout.onTimer = [this] { timerout_Timer(); };
    onUnload = [this] { Form_Unload(); };
    if (Winsock_recepcion) {
        Winsock_recepcion->onDataArrival = [this](Long total) {
            Winsock_recepcion_DataArrival(total);
        };
    }
}

void frmCargaMV510::Form_Load(const std::string& commandLine, Integer puertoElegido) {
    load();
    nivel = nivelDe(commandLine);
    if (nivel > 3) {
        services_.dialogs.msgBox(mv510::kParametroMalo);
        unload();
        return;
    }
    tipo_conexion = 1;
    fillSpeeds();
    fichero_firmware.clear();
    fichero_en_memoria.clear();
    Barra.setVisible(false);
    Texto.setVisible(false);
    optrs232.setValue(true);
    puerto_com = puertoElegido;
    OptionButton* puertos[] = {&Option1, &Option2, &Option3, &Option4};
    if (puerto_com >= 1 && puerto_com <= 4)
        puertos[puerto_com - 1]->setValue(true);
    startFolder();
    cmbvelocidades.setListIndex(0);
    TxtPort.setText(std::to_string(mv510::kPuertoVisor));
}

void frmCargaMV510::fillSpeeds() {
    cmbvelocidades.clear();
    for (const char* velocidad : kVelocidades) cmbvelocidades.addItem(velocidad);
}

// Level 1 starts on the workshop's folder of visor firmware on T:, the
// others on C:.
void frmCargaMV510::startFolder() {
    muestraUnidades(Drive1, services_.drives);
    if (nivel == 1) {
        Drive1.setDrive("t:");
        if (!services_.drives.hostPath(kCarpetaProduccion).empty())
            muestraCarpeta(Dir1, dirEntries_, services_.drives, kCarpetaProduccion);
    } else {
        Drive1.setDrive("c:");
    }
    if (File1.listCount() > 0)
        File1.setListIndex(0);
}

void frmCargaMV510::refreshFileList() {
    File1.clear();
    if (services_.drives.hostPath(File1.path()).empty())
        return;
    for (const std::string& name : services_.drives.listFiles(File1.path())) File1.addItem(name);
}

void frmCargaMV510::File1_Click() {
    if (File1.listIndex() < 0)
        return;
    const std::string carpeta = File1.path();
    const bool conBarra = !carpeta.empty() && carpeta.back() == '\\';
    fichero_firmware = carpeta + (conBarra ? "" : "\\") + File1.fileName();
    unidad_elegida = Drive1.drive();
    carpeta_elegida = Dir1.path();
    fichero_elegido = File1.fileName();
}

void frmCargaMV510::File1_DblClick() {
    Texto.setVisible(true);
    Texto.setCaption(" ");
    if (File1.listIndex() >= 0)
        setCaption(File1.fileName());
}

void frmCargaMV510::Dir1_Change() {
    File1.setPath(Dir1.path());
    refreshFileList();
}

// A drive that isn't there leaves the folder list as it was.
void frmCargaMV510::Drive1_Change() {
    try {
        muestraCarpeta(Dir1, dirEntries_, services_.drives, Drive1.drive());
    } catch (const RuntimeError&) {
    }
}

// A double click opens the folder of its line.
void frmCargaMV510::Dir1_DblClick() {
    const int index = Dir1.listIndex();
    if (index < 0 || index >= static_cast<int>(dirEntries_.size()))
        return;
    try {
        muestraCarpeta(Dir1, dirEntries_, services_.drives, dirEntries_[index]);
    } catch (const RuntimeError&) {
        // The folder went away meanwhile: the list stays as it was.
    }
}

void frmCargaMV510::timerout_Timer() {
    tiempo_agotado = kTrue;
}

}  // namespace fc
