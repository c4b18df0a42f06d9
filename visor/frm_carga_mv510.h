// The screen that loads an MV-510 visor. The main screen opens it modally
// when the visor model is chosen. The operator picks a file and a way to the
// visor (a serial port, or an address and UDP port); the load button reads
// the file into the 64 KB image unless that file is there already, and runs
// the ISP dialogue with the visor's boot loader: synchronise, erase, blank
// check, program, verify, and the Boot Status Byte.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/screen.h"
#include "platform/serial_line.h"
#include "platform/services.h"
#include "platform/udp_socket.h"
#include "platform/vb_types.h"
#include "platform/window_timer.h"

namespace fc {

class Network;
class IspWay;

constexpr const char* kVisorCaption = "MV-510 Firmware Loader";

class frmCargaMV510 : public Screen {
  public:
    // Without a network the UDP way is not there: a load over it is a
    // run-time error that the load button's handler reports.
    frmCargaMV510(Services services, Network* network);
    ~frmCargaMV510() override;

    const Services& services() const { return services_; }

    // ---- Controls ----------------------------------------------------------
    Frame Frame2{*this, "Frame2"};
    OptionButton optrs232{*this, "optrs232", &Frame2};
    OptionButton optEthernet{*this, "optEthernet", &Frame2};
    Frame Frame1{*this, "Frame1"};
    OptionButton Option1{*this, "Option1", &Frame1};
    OptionButton Option2{*this, "Option2", &Frame1};
    OptionButton Option3{*this, "Option3", &Frame1};
    OptionButton Option4{*this, "Option4", &Frame1};
    Frame frComParameters{*this, "frComParameters"};
    ComboBox cmbvelocidades{*this, "cmbvelocidades", &frComParameters};
    Label lblBits{*this, "lblBits", &frComParameters};
    Label lblParidad{*this, "lblParidad", &frComParameters};
    Frame frEthParameters{*this, "frEthParameters"};
    Label lblDirTCP{*this, "lblDirTCP", &frEthParameters};
    TextBox txtDirTCP{*this, "txtDirTCP", &frEthParameters};
    Label lblPort{*this, "lblPort", &frEthParameters};
    TextBox TxtPort{*this, "TxtPort", &frEthParameters};
    Frame frDirectorio{*this, "frDirectorio"};
    DriveList Drive1{*this, "Drive1", &frDirectorio};
    DirList Dir1{*this, "Dir1", &frDirectorio};
    FileList File1{*this, "File1", &frDirectorio};
    Frame frInfoComunicacion{*this, "frInfoComunicacion"};
    Label Texto{*this, "Texto", &frInfoComunicacion};
    ProgressBar Barra{*this, "Barra", &frInfoComunicacion};
    Label Label2{*this, "Label2", &frInfoComunicacion};
    Label Banco_actual{*this, "Banco_actual", &frInfoComunicacion};
    CommandButton cmdAdelante{*this, "cmdAdelante"};
    CommandButton cmdAtras{*this, "cmdAtras"};
    CommandButton CmdStop{*this, "CmdStop"};
    CommandButton FIN{*this, "FIN"};

    WindowTimer timerout;
    SerialLine Linea;
    // Present when the screen was given a network.
    std::unique_ptr<UdpSocket> Winsock_Envio;
    std::unique_ptr<UdpSocket> Winsock_recepcion;

    // ---- State -------------------------------------------------------------
    Integer nivel = 0;
    Integer tipo_conexion = 1;
    Integer puerto_com = 0;
    std::string fichero_firmware;
    std::string fichero_en_memoria;
    std::string unidad_elegida, carpeta_elegida, fichero_elegido;
    std::vector<Byte> memoria = std::vector<Byte>(0x10001, 0xFF);
    Long pos_memoria = 0;
    Long fin_programa = 0;
    std::string linea_envio;
    std::string linea_guardada;
    std::string linea_fichero;
    std::string respuesta_visor;
    Flag tiempo_agotado = kFalse;
    Integer paso_sinc = 1;
    Long limite_sinc = 2000;
    std::string buffer_udp;
    Long contador_udp = 0;
    Integer num_fichero = 0;
    Byte estado_lector = 0;

    // ---- Handlers ----------------------------------------------------------
    // Runs when the screen is first shown; `commandLine` is the program's.
    void Form_Load(const std::string& commandLine, Integer puertoElegido);
    void cmdAdelante_Click();
    void cmdAtras_Click();
    void CmdStop_Click();
    [[noreturn]] void FIN_Click();
    void Form_Unload();
    void optrs232_Click();
    void optEthernet_Click();
    void OptionPort_Click(Integer port);
    void File1_Click();
    void File1_DblClick();
    void Dir1_Change();
    void Dir1_DblClick();
    void Drive1_Change();
    void timerout_Timer();
    void Winsock_recepcion_DataArrival(Long bytesTotal);

    // ---- Procedures --------------------------------------------------------
    void CargarFlash();
    Flag lanza_linea();
    void acaba();
    bool MV510haz_envio(const std::string& texto, int limiteMs, int esperados);
    bool MV510haz_envio_udp(const std::string& texto, int limiteMs, int esperados);
    bool MV510sincroniza();
    bool MV510sincroniza_udp();
    bool MV510programa();
    bool MV510programa_udp();

    // The image is read only while the screen lives; the way in hand.
    IspWay& serialWay() { return *serialWay_; }
    IspWay& udpWay() { return *udpWay_; }

  private:
    void buildControls();
    void wireHandlers();
    void fillSpeeds();
    void startFolder();
    void refreshFileList();
    void preparaTransporte();
    void usoDeControles(bool enUso);
    void abreSockets();
    UdpSocket& envio();
    UdpSocket& recepcion();
    // Hides the screen: the modal show that opened it returns, the image
    // and the chosen file stay.
    void ocultaPantalla();

    // The dialogue, on either way.
    bool sincroniza(IspWay& way);
    bool pasoSincronia(IspWay& way);
    bool juzgaSincronia(const std::string& respuesta);
    bool programa(IspWay& way);
    bool fases(IspWay& way);
    void buscaFinPrograma();
    bool programaBloques(IspWay& way);
    bool verificaBloques(IspWay& way);
    bool verificaBloque(IspWay& way, int& intentos, bool& repetir);
    bool coincideVolcado() const;
    bool configura(IspWay& way);
    bool juzgaRespuesta(IspWay& way, bool enTiempo, const std::string& esperada,
                        const char* textoMalo, const char* textoSinRespuesta);
    void cancelado();
    void avanzaBarra(Long tope);

    Services services_;
    Network* network_;
    std::unique_ptr<IspWay> serialWay_;
    std::unique_ptr<IspWay> udpWay_;
    // The folder each line of Dir1 stands for.
    std::vector<std::string> dirEntries_;
};

}  // namespace fc
