// The screen that loads a graphic display through the communications driver,
// `korvacom`, a program of its own in the folder "korvacom" of the program's
// folder. The main screen opens it modally from its way step. On one page it
// takes the firmware file, the way to the scale (Ethernet or a COM port) and
// the display's logical address; its handlers run the load themselves: the
// driver is configured by its switch file, started, commanded through
// "ctrl.txt", handed the records in "TX.TXT", followed by the marks it
// leaves there, and asked for the scale's verdict through "RX.TXT".
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "display/korvacom_switches.h"
#include "platform/controls.h"
#include "platform/database.h"
#include "platform/kernel_objects.h"
#include "platform/screen.h"
#include "platform/services.h"
#include "platform/vb_types.h"
#include "platform/window_timer.h"

namespace fc {

struct CommonModule;

constexpr const char* kDisplayCaption = "Cobalt Graphic Display Loader";

// The image of a display: indices 0 to 0x10000.
constexpr Long kLimiteMemoriaDisplay = 0x10000;

class frmCargaDisplayGrafico : public Screen {
  public:
    // Starts a program from a Windows command line; its process number, or 0.
    using StartProgram = std::function<long(const std::string& commandLine)>;

    frmCargaDisplayGrafico(Services services, CommonModule& common, StartProgram startProgram);

    // ---- Controls ----------------------------------------------------------
    Frame frDirectorio{*this, "frDirectorio"};
    DriveList Drive1{*this, "Drive1", &frDirectorio};
    DirList Dir1{*this, "Dir1", &frDirectorio};
    FileList File1{*this, "File1", &frDirectorio};
    Frame Frame2{*this, "Frame2"};
    OptionButton optEthernet{*this, "optEthernet", &Frame2};
    OptionButton optrs232{*this, "optrs232", &Frame2};
    Frame Frame1{*this, "Frame1", &Frame2};
    OptionButton Option1{*this, "Option1", &Frame1};
    OptionButton Option2{*this, "Option2", &Frame1};
    OptionButton Option3{*this, "Option3", &Frame1};
    OptionButton Option4{*this, "Option4", &Frame1};
    ComboBox cmbDirLogica{*this, "cmbDirLogica", &Frame2};
    Label lblDirLogica{*this, "lblDirLogica", &Frame2};
    Frame frEthParameters{*this, "frEthParameters"};
    TextBox txtDirTCP{*this, "txtDirTCP", &frEthParameters};
    Label lblIPAddr{*this, "lblIPAddr", &frEthParameters};
    TextBox TxtPort{*this, "TxtPort", &frEthParameters};
    Label lblPort{*this, "lblPort", &frEthParameters};
    TextBox TxtPortRX{*this, "TxtPortRX", &frEthParameters};
    Label lblPortRX{*this, "lblPortRX", &frEthParameters};
    Frame frComParameters{*this, "frComParameters"};
    ComboBox cmbvelocidades{*this, "cmbvelocidades", &frComParameters};
    Label Label5{*this, "Label5", &frComParameters};
    ComboBox nbits{*this, "nbits", &frComParameters};
    Label lblBits{*this, "lblBits", &frComParameters};
    ComboBox cboParidad{*this, "cboParidad", &frComParameters};
    Label lblParidad{*this, "lblParidad", &frComParameters};
    Frame frInfoComunicacion{*this, "frInfoComunicacion"};
    Label Texto{*this, "Texto", &frInfoComunicacion};
    ProgressBar Barra{*this, "Barra", &frInfoComunicacion};
    Label Banco_actual{*this, "Banco_actual", &frInfoComunicacion};
    Label Label2{*this, "Label2", &frInfoComunicacion};
    CommandButton cmdAdelante{*this, "cmdAdelante"};
    CommandButton cmdAtras{*this, "cmdAtras"};
    CommandButton CmdStop{*this, "CmdStop"};
    CommandButton FIN{*this, "FIN"};

    WindowTimer timerout;
    WindowTimer TimerKorvacom;
    WindowTimer TimerP0;

    // ---- State -------------------------------------------------------------
    // The program's command line; the level is read from the database only
    // when it is empty.
    std::string linea_comandos;
    // 0 Ethernet, 1 serial.
    Integer tipo_conexion = 0;
    Integer puerto_com = 0;
    Integer transporte_elegido = 0;
    Integer nivel = 0;
    Flag tiempo_agotado = kFalse;
    std::string fichero_firmware;
    std::string fichero_en_memoria;
    std::string linea_fichero;
    std::vector<Byte> memoria = std::vector<Byte>(kLimiteMemoriaDisplay + 1, 0xFF);
    Long pos_memoria = 0;
    Byte estado_lector = 0;
    std::array<Integer, 256> tabla_crc{};
    Long crc_imagen = 0;
    std::string id_p0;
    bool p0_agotado = false;
    // The driver's handles: never made, so every wait on them fails at once.
    Handle evento_recursos = 0;
    Handle mutex_ctrl = 0;
    Handle mutex_config = 0;
    Integer tiempo_restante_comando = 0;
    // The generator of the questions' tags.
    Long semilla_rnd = 0x50000;
    // The display's database, open for the life of the screen.
    std::unique_ptr<Database> bd;

    // ---- Handlers ----------------------------------------------------------
    void Form_Load();
    void Form_Unload();
    void cmdAdelante_Click();
    void cmdAtras_Click();
    void CmdStop_Click();
    [[noreturn]] void FIN_Click();
    void optEthernet_Click();
    void optrs232_Click();
    void OptionPort_Click(Integer port);
    void File1_Click();
    void File1_DblClick();
    void Dir1_Change();
    // The folder list's own behaviour: a double click opens the folder.
    void Dir1_DblClick();
    void Drive1_Change();
    void txtDirTCP_KeyPress(Integer& KeyAscii);
    void timerout_Timer();
    void TimerKorvacom_Timer();
    void TimerP0_Timer();

    // ---- The driver ---------------------------------------------------------
    void ConfiguraKorvacom();
    void ArrancaKorvacom(bool& resultado);
    void Start();
    void Parar();
    void ReStart();
    void CerrarKorvaCOM(Integer& tics);
    void EsperarFinComando(Integer& tics);

    // ---- The image ----------------------------------------------------------
    void CargarFlash();
    void CalculaChecksum(Long& resultado);
    void GeneraFicheroTx();
    void EnviaImagen(bool& resultado);
    void CompruebaP0(const std::string& linea, bool& resultado);
    void acaba();

    // The host path of `nombre` in the driver's folder, matched without
    // regard to case when it is there.
    std::string rutaKorvacom(const std::string& nombre) const;
    // The host path of `nombre` in the program's folder.
    std::string rutaPrograma(const std::string& nombre) const;

    const Services& services() const { return services_; }
    CommonModule& common() { return common_; }

  private:
    void buildControls();
    void wireHandlers();
    void guard(const std::function<void()>& handler);
    void leeNivel();
    void llenaListas();
    void muestraCarpetaInicial();
    void aplicaVia();
    void habilitaEntradas(bool enabled);
    void enviaComando(const char* letra, const char* nombre, Integer tics);
    bool existeEnKorvacom(const std::string& nombre) const;
    void borraEnKorvacom(const std::string& nombre);
    void escribeArranque();
    bool arranqueEnviado();
    bool esperaArranque();
    void armaTimerout(int ms);
    std::string nuevaEtiqueta();
    ValoresKorvacom valoresKorvacom() const;
    bool leeFicheroEnMemoria();
    bool sigueEnvio(bool& fin);
    bool esperaVeredicto();
    void refrescaCarpeta();
    void listaCarpetas();

    Services services_;
    CommonModule& common_;
    StartProgram startProgram_;
    // The progress of a transfer: the position in "TX.TXT" (from 1) of the
    // first line not yet seen marked, and the record count shown last.
    Long posicion_ = 1;
    Long anterior_ = 0;
    // The folder each line of Dir1 stands for.
    std::vector<std::string> dirEntries_;
};

}  // namespace fc
