// The main screen, `Firmcast`: a five-step wizard (model, way, file, scale
// list, load) whose load event runs the main driver for the life of the
// program. The controls are named as the operator's screen names them; the
// run state is the screen's own variables; the handlers are thin and the
// driver does the rest.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "common/common_module.h"
#include "control/load_hooks.h"
#include "display/frm_carga_display_grafico.h"
#include "ethernet/ethernet_panel.h"
#include "ethernet/network_module.h"
#include "ethernet/respuesta_balanza.h"
#include "firmware/hex_record.h"
#include "firmware/mensaje_eth.h"
#include "platform/controls.h"
#include "platform/runtime_error.h"
#include "platform/screen.h"
#include "platform/serial_line.h"
#include "platform/services.h"
#include "platform/tcp_socket.h"
#include "platform/vb_types.h"
#include "platform/window_timer.h"
#include "serial/line_panel.h"
#include "serial/serial_panel.h"
#include "visor/frm_carga_mv510.h"

namespace fc {

constexpr const char* kDesignCaption = "Firmware Loader 1.22";

class Firmcast : public Screen {
  public:
    Firmcast(Services services, LoadHooks hooks = {});

    // The load event: runs the main driver until the program ends, which it
    // always does by throwing ProgramEnd. `commandLine` is everything after
    // the program's name.
    [[noreturn]] void Form_Load(const std::string& commandLine);

    // ---- Controls, by step -------------------------------------------------
    // Step 0, the model.
    Frame Seleccion{*this, "Seleccion"};
    Frame frOption{*this, "frOption"};
    OptionButton optBalanzas{*this, "optBalanzas", &frOption};
    OptionButton optEtiquetadoras{*this, "optEtiquetadoras", &frOption};
    OptionButton optVisores{*this, "optVisores", &frOption};
    // The boot-ROM load of a G scale, beside the kinds of device.
    CommandButton cmdCargaRomG{*this, "cmdCargaRomG", &frOption};
    Frame frBalanzas{*this, "frBalanzas"};
    PictureBox Picture4{*this, "Picture4", &frBalanzas};
    PictureBox Picture3{*this, "Picture3", &frBalanzas};
    PictureBox Picture2{*this, "Picture2", &frBalanzas};
    PictureBox Picture6{*this, "Picture6", &frBalanzas};
    Frame frEtiquetadoras{*this, "frEtiquetadoras"};
    PictureBox Picture5{*this, "Picture5", &frEtiquetadoras};
    PictureBox Picture8{*this, "Picture8", &frEtiquetadoras};
    PictureBox Picture7{*this, "Picture7", &frEtiquetadoras};
    PictureBox Picture9{*this, "Picture9", &frEtiquetadoras};
    Frame frVisores{*this, "frVisores"};
    PictureBox Picture12{*this, "Picture12", &frVisores};
    // The recording ranges of the boot ROM load, kept hidden and disabled.
    Frame hacerf{*this, "hacerf"};
    OptionButton Option5{*this, "Option5", &hacerf};
    OptionButton Option7{*this, "Option7", &hacerf};
    Frame Frame4{*this, "Frame4"};
    OptionButton Option6{*this, "Option6", &Frame4};
    OptionButton Option9{*this, "Option9", &Frame4};
    OptionButton Option8{*this, "Option8", &Frame4};
    OptionButton Option10{*this, "Option10", &Frame4};
    OptionButton Option11{*this, "Option11", &Frame4};

    // Step 1, the communication way.
    PictureBox PictureVisualizar{*this, "PictureVisualizar"};
    Frame frPuerto{*this, "frPuerto"};
    Label Label6{*this, "Label6", &frPuerto};
    OptionButton optrs232{*this, "optrs232", &frPuerto};
    OptionButton optEthernet{*this, "optEthernet", &frPuerto};
    Frame Frame1{*this, "Frame1", &frPuerto};
    OptionButton Option1{*this, "Option1", &Frame1};
    OptionButton Option2{*this, "Option2", &Frame1};
    OptionButton Option3{*this, "Option3", &Frame1};
    OptionButton Option4{*this, "Option4", &Frame1};
    CommandButton cmdDisplayGrafico{*this, "cmdDisplayGrafico"};

    // Step 2, the file, and the line parameters.
    Frame frDirectorio{*this, "frDirectorio"};
    DriveList Drive1{*this, "Drive1", &frDirectorio};
    DirList Dir1{*this, "Dir1", &frDirectorio};
    FileList File1{*this, "File1", &frDirectorio};
    // What the selected file holds, for the operator's eye only.
    Label lblComprobacion{*this, "lblComprobacion", &frDirectorio};
    Frame frComParameters{*this, "frComParameters"};
    Label Label5{*this, "Label5", &frComParameters};
    ComboBox cmbvelocidades{*this, "cmbvelocidades", &frComParameters};
    Label lblBits{*this, "lblBits", &frComParameters};
    Label lblParidad{*this, "lblParidad", &frComParameters};

    // Step 3, the scale list (Ethernet).
    Frame frBalanzasEth{*this, "frBalanzasEth"};
    Label Label3{*this, "Label3", &frBalanzasEth};
    TextBox Text1{*this, "Text1", &frBalanzasEth};
    Label Label4{*this, "Label4", &frBalanzasEth};
    ComboBox cmbbalanza{*this, "cmbbalanza", &frBalanzasEth};
    TextBox txtDirTCP{*this, "txtDirTCP", &frBalanzasEth};
    ListView lstBalanzas{*this, "lstBalanzas", &frBalanzasEth};
    CommandButton cmdSave{*this, "cmdSave", &frBalanzasEth};
    CheckBox chkADSL{*this, "chkADSL", &frBalanzasEth};
    Label lblADSL{*this, "lblADSL", &frBalanzasEth};
    Label lblModelo{*this, "lblModelo"};
    Label lblInformacion{*this, "lblInformacion"};
    // The operating level, and the device each serial port stands for.
    Label lblNivel{*this, "lblNivel"};
    Label lblPuertos{*this, "lblPuertos", &Frame1};

    // Step 4, the load.
    Frame frInfoComunicacion{*this, "frInfoComunicacion"};
    std::array<std::unique_ptr<PictureBox>, 12> Dibujo;  // Dibujo1..Dibujo12 at [0]..[11]
    Label Texto{*this, "Texto", &frInfoComunicacion};
    ProgressBar Barra{*this, "Barra", &frInfoComunicacion};
    Label Label2{*this, "Label2", &frInfoComunicacion};
    Label Banco_actual{*this, "Banco_actual", &frInfoComunicacion};
    ProgressBar BarraEth{*this, "BarraEth"};

    // Always there.
    CommandButton cmdAtras{*this, "cmdAtras"};
    CommandButton cmdAdelante{*this, "cmdAdelante"};
    CommandButton Command1{*this, "Command1"};
    CommandButton Command2{*this, "Command2"};
    CommandButton cmdAgain{*this, "cmdAgain"};
    CheckBox optProduccion{*this, "optProduccion"};
    CommandButton FIN{*this, "FIN"};

    // Timers and the serial control.
    WindowTimer timerout;
    WindowTimer Tiempo1;
    WindowTimer TimerConnection;
    WindowTimer TimerEnvio;
    WindowTimer TimerClose;
    SerialLine Linea;
    // The Ethernet loader's client sockets: the load, and a short connection
    // of its own for the erase of one scale.
    TcpSocket WsckCliente;
    TcpSocket WsckClienteSiguiente;

    // ---- Run state ---------------------------------------------------------
    Integer nivel = 0;
    std::string mac_actual;
    Flag pide_mac = kFalse;
    Byte indice_dibujo = 0;
    std::string inicio_linea;
    Integer puerto_com = 0;
    Flag animando = kFalse;
    Flag tiempo_agotado = kFalse;
    std::string fichero_firmware;
    std::string linea_fichero;
    long proceso_externo = 0;
    Flag es_serie_n = kFalse, es_serie_h = kFalse, es_serie_w = kFalse, es_tr6100 = kFalse;
    Flag es_serie_g = kFalse, es_tr8200 = kFalse, es_matrix4000 = kFalse, es_mv510 = kFalse;
    Long numero_linea = 1;
    Flag esperando_otra = kFalse;
    Flag lanzado_gseries = kFalse;
    Long pos_memoria = 0;
    std::vector<Byte> memoria = std::vector<Byte>(kLimiteMemoria + 1, 0xFF);
    Long checksum_memoria = 0;
    Integer modelo_elegido = kTrue;
    Integer transporte_elegido = kTrue;
    Integer puerto_elegido = kTrue;
    std::string unidad_elegida, carpeta_elegida, fichero_elegido;
    Integer paso_asistente = 0;
    Flag modo_produccion = kFalse;
    // The recording range of a boot ROM load, set by Option5..Option11.
    Byte rango_banco = 0;
    Long limite_rango = 0;
    Flag rango_elegido = kFalse;
    Flag hacer_f = kFalse;
    // The boot ROM load's outgoing record, the ROM's last answer, its try.
    std::string linea_envio;
    std::string respuesta_msc;
    Byte intento_msc = 0;
    // The file reader's state byte: 0 line taken, 1 bad checksum, 2 end seen.
    Byte estado_lector = 0;
    // Local to the driver, living across its passes.
    Flag fichero_procesado = kFalse;
    Flag linea_ok = kFalse;
    // The Ethernet messages of the file, and what the file readers keep.
    std::vector<MensajeEth> mensajes;
    std::string cabecera_modelo;
    Long longitud_datos = 0;
    Byte banco_fichero = 0;
    Long base_segmento = 0;

    // Shared globals of the program.
    Integer tipo_conexion = 0;
    std::vector<std::string> lista_balanzas;
    std::vector<bool> estado_balanzas;
    Long puerto_tx = 3000;
    // The scale the record form is opened for.
    Integer balanza_actual = 0;
    // The number the scale list's first scale is shown with: 1, except in a
    // parallel run's worker, which loads one scale of a longer list.
    Integer primera_balanza = 1;
    // The MAC the address table gave at the last MAC decision over Ethernet,
    // and the serial number the last record form took: what a record of the
    // load keeps of them.
    std::string mac_tabla;
    std::string numero_serie;
    // The Ethernet load's last answer from a scale, and its image checksum.
    RespuestaBalanza respuesta_balanza;
    // The last text lblInformacion showed during each scale's turn of the
    // last Ethernet pass; with estado_balanzas, how each scale ended.
    std::vector<std::string> resultado_balanzas;

    // ---- Handlers ----------------------------------------------------------
    void cmdAdelante_Click();
    void cmdAtras_Click();
    void Command1_Click();
    void Command2_Click();
    void File1_DblClick();
    void File1_Click();
    void Dir1_Change();
    void Drive1_Change();
    void cmdAgain_Click();
    void cmdSave_Click();
    void cmdDisplayGrafico_Click();
    void optProduccion_Click();
    void optBalanzas_Click();
    void optEtiquetadoras_Click();
    void optVisores_Click();
    void optrs232_Click();
    void optEthernet_Click();
    void OptionPort_Click(Integer port);
    void PictureModel_Click(int code);
    [[noreturn]] void FIN_Click();
    void Form_Unload();
    void timerout_Timer();
    void Tiempo1_Timer();
    // The scale list of step 3.
    void Text1_KeyPress(Integer& KeyAscii);
    void cmbbalanza_Click();
    void cmbbalanza_KeyPress(Integer& KeyAscii);
    void txtDirTCP_KeyPress(Integer& KeyAscii);
    // The folder list's own behaviour: a double click opens the folder.
    void Dir1_DblClick();
    // The recording ranges (hacerf, Frame4).
    void Option5_Click();
    void Option6_Click();
    void Option7_Click();
    void Option8_Click();
    void Option9_Click();
    void Option10_Click();
    void Option11_Click();
    // The boot-ROM load of a G scale: the kind of G scale, then the range.
    void cmdCargaRomG_Click();

    // ---- Procedures other parts of the system call -------------------------
    void EligeModelo(const std::string& codigo);
    void acaba();
    void acaba2();
    void paradibu();
    Flag lanza_linea();
    // The scale list and config.ini.
    void CargaInfoIni();
    void GuardaInfoIni();
    void PrepararListaBalanzas(ListView& lista, int cuantos);
    void CargaComboBalanzas();
    // The program's module of common procedures, on this screen's services.
    CommonModule& common() { return common_; }
    SerialPanel& serialPanel() { return panel_; }
    // What the line protocols use of this screen, for the load in hand.
    LinePanel linePanel();
    // What the Ethernet loader uses of this screen.
    EthernetPanel ethernetPanel();
    // The network procedures on this screen's services and close timer.
    NetworkModule& red() { return red_; }
    const Services& services() const { return services_; }
    LoadHooks& hooks() { return hooks_; }
    PictureBox& dibujo(int n) { return *Dibujo[n - 1]; }  // n = 1..12
    // The visor and display screens, once they have been opened.
    frmCargaMV510* visorScreen() { return visor_.get(); }
    frmCargaDisplayGrafico* displayScreen() { return display_.get(); }
    // The picture box of a catalogue code.
    PictureBox& pictureOf(int code);
    // Raises the flag of a model and clears the others.
    void raiseModelFlag(int code);
    void clearModelFlags();
    bool anyModelFlag() const;
    // The folder of the file list joined with the selected name.
    std::string selectedFilePath() const;

  private:
    void buildControls();
    void useScaleList();
    std::string configFile() const;
    void leeDirecciones(const std::string& fichero);
    void leePuerto(const std::string& fichero);
    std::string direccionMostrada(int fila) const;
    void wireHandlers();
    void runDriver(const std::string& commandLine);
    void startUp(const std::string& commandLine);
    [[noreturn]] void fatalTrap(const RuntimeError& error);
    [[noreturn]] void unhandledError(const RuntimeError& error);
    void guard(const std::function<void()>& handler);

    // The driver's stations; each returns where the driver goes next.
    enum class Next { CycleHead, WayStep, FileStep, ReEntry, EndOfPass };
    Next cycleHead();
    Next wayStep();
    Next fileStep();
    Next reEntry();
    Next serialPath();
    Next serialLoad();
    Next ethernetPath();
    void processEthernetFile();
    void loadEthernetScales();
    void endEthernetLoad();
    void noteScaleResult(int i);
    Next waitInScaleStep();
    void setDrive(const std::string& drive);
    void setFolder(const std::string& folder);
    int modelCodeOfFlags() const;
    std::string openFirmwareFile();
    Next endOfPass();
    Next stepWaitExit(Integer step);
    void waitWhileStep(Integer step);
    void showStartFolder();
    void restoreRememberedFile();
    void fallBackToDriveC();
    void showLineProgress();
    Next serialConnect();
    Next finishSerialLoad();
    Next closeSerialLoad();
    Next macStep();
    void refreshFileList();
    void cmdAdelanteVisor();
    void startGseries();
    void launchGseries();
    void chooseRange(Byte banco, Long limite);
    void waitForRangeChoice();
    void showDrives();
    void selectRememberedModel();
    void restoreRememberedWay();
    void showChosenPicture(const PictureBox& picture);
    void startDisplay();
    void highlightOnly(int code);
    void showOperatingLevel();
    void showPortDevices();
    void showFileCheck();
    void afterKindOfGChosen();
    void bootRomLoad();
    void chooseBootRomModel();

    Services services_;
    LoadHooks hooks_;
    SerialPanel panel_;
    bool trapArmed_ = false;
    // The serial load under way has said "The scale is ready".
    bool escala_lista_ = false;
    // The boot-ROM entry: choosing the kind of G scale, and the tool's starts.
    bool choosingBootRomRange_ = false;
    int gseriesLaunches_ = 0;
    int launchesBeforeChoice_ = 0;
    // The folder each line of Dir1 stands for.
    std::vector<std::string> dirEntries_;
    std::unique_ptr<frmCargaMV510> visor_;
    // The command line the program was started with, for the screens it opens.
    std::string commandLine_;
    std::unique_ptr<frmCargaDisplayGrafico> display_;
    // The command line the program was started with.
    std::string linea_comandos_;
    CommonModule common_{services_};
    NetworkModule red_{common_, services_.network, TimerClose};
};

}  // namespace fc
