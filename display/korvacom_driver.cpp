// The communications driver's control: its switch file, its start, its
// one-letter commands in "ctrl.txt" and the wait for it to take them.
#include "common/common_module.h"
#include "common/kernel_waits.h"
#include "common/standard_handler.h"
#include "display/frm_carga_display_grafico.h"
#include "display/korvacom_switches.h"
#include "display/tx_records.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/file_table.h"
#include "platform/kernel_objects.h"
#include "platform/pump.h"
#include "platform/runtime_error.h"

namespace fc {

namespace {
constexpr Long kEsperaDriverMs = 180000;
constexpr int kHourglass = 11;
}  // namespace

ValoresKorvacom frmCargaDisplayGrafico::valoresKorvacom() const {
    ValoresKorvacom v;
    v.velocidad = cmbvelocidades.text();
    v.puerto = "COM" + std::to_string(puerto_com);
    v.bits = nbits.text();
    v.paridad = static_cast<Integer>(cboParidad.listIndex());
    v.modo = optEthernet.value() ? 1 : 0;
    v.dirLogica = cmbDirLogica.text();
    v.direccionIp = txtDirTCP.text();
    v.puertoTx = numeroDeTexto(TxtPort.text());
    v.puertoRx = numeroDeTexto(TxtPortRX.text());
    return v;
}

void frmCargaDisplayGrafico::ConfiguraKorvacom() {
    FileTable& files = services_.files;
    const ValoresKorvacom v = valoresKorvacom();
    EsperaMutex(common_, mutex_config);
    const std::string ctrl = rutaKorvacom("Korctrl.txt");
    const std::string temp = rutaKorvacom("Temp.txt");
    int entrada = files.freeFile();
    files.open(entrada, ctrl, FileTable::Mode::Input);
    int salida = files.freeFile();
    files.open(salida, temp, FileTable::Mode::Output);
    bool vistoD = false, vistoE = false;
    while (!files.eof(entrada))
        files.print(salida, reescribeSwitch(files.lineInput(entrada), v, vistoD, vistoE));
    if (!vistoE)
        files.print(salida, "-E 1");
    if (!vistoD)
        files.print(salida, switchDireccion(v));
    files.close(entrada);
    files.close(salida);
    EsperaEventoRecursos(common_, 20);
    services_.fileSystem.copyFile(temp, ctrl);
    services_.fileSystem.deleteFile(temp);
    LiberaMutex(common_, mutex_config);
    if (existeEnKorvacom("RX.TXT"))
        borraEnKorvacom("RX.TXT");
}

void frmCargaDisplayGrafico::enviaComando(const char* letra, const char* nombre, Integer tics) {
    int numero = 0;
    try {
        EsperaMutex(common_, mutex_ctrl);
        numero = services_.files.freeFile();
        services_.files.open(numero, rutaKorvacom("ctrl.txt"), FileTable::Mode::Output);
        services_.files.print(numero, letra);
        services_.files.close(numero);
        LiberaMutex(common_, mutex_ctrl);
    } catch (const RuntimeError& error) {
        if (numero != 0 && services_.files.isOpen(numero))
            services_.files.close(numero);
        LiberaMutex(common_, mutex_ctrl);
        standardHandler(common_, nombre, error);
        return;
    }
    EsperarFinComando(tics);
}

void frmCargaDisplayGrafico::Start() {
    enviaComando("s", "MenBorradoVentas", 5);
}

void frmCargaDisplayGrafico::Parar() {
    enviaComando("S", "Parar", 5);
}

void frmCargaDisplayGrafico::ReStart() {
    enviaComando("R", "ReStart", 5);
}

void frmCargaDisplayGrafico::CerrarKorvaCOM(Integer& tics) {
    enviaComando("G", "Parar", tics);
}

// Waits until the driver has taken the command (it deletes "ctrl.txt") or
// `tics` seconds have passed; a command never taken just runs out.
void frmCargaDisplayGrafico::EsperarFinComando(Integer& tics) {
    withStandardHandler(common_, "EsperarFinComando", [&] {
        TimerKorvacom.setInterval(1000);
        TimerKorvacom.setEnabled(true);
        tiempo_restante_comando = tics;
        while (existeEnKorvacom("ctrl.txt") && tiempo_restante_comando != 0)
            services_.pump.doEvents();
        TimerKorvacom.setEnabled(false);
    });
}

void frmCargaDisplayGrafico::escribeArranque() {
    int numero = services_.files.freeFile();
    services_.files.open(numero, rutaKorvacom("TX.TXT"), FileTable::Mode::Output);
    services_.files.print(numero, registroArranque(cmbDirLogica.text(), crc_imagen));
    services_.files.close(numero);
}

// True when a line of "TX.TXT" carries the driver's mark.
bool frmCargaDisplayGrafico::arranqueEnviado() {
    FileTable& files = services_.files;
    int numero = files.freeFile();
    files.open(numero, rutaKorvacom("TX.TXT"), FileTable::Mode::Input);
    bool enviado = false;
    while (!files.eof(numero)) {
        if (medio(files.lineInput(numero), 3, 1) == "*")
            enviado = true;
    }
    files.close(numero);
    return enviado;
}

void frmCargaDisplayGrafico::armaTimerout(int ms) {
    timerout.setEnabled(false);
    tiempo_agotado = kFalse;
    timerout.setInterval(ms);
    timerout.setEnabled(true);
}

// From the start of the driver to the start record's mark, 15 s at most.
bool frmCargaDisplayGrafico::esperaArranque() {
    Start();
    services_.pump.sleep(1000);
    armaTimerout(15000);
    bool enviado = false;
    while (!tiempo_agotado && !enviado) {
        enviado = arranqueEnviado();
        services_.pump.doEvents();
        services_.pump.sleep(1000);
    }
    timerout.setEnabled(false);
    Parar();
    ReStart();
    return tiempo_agotado == kFalse;
}

void frmCargaDisplayGrafico::ArrancaKorvacom(bool& resultado) {
    KernelObjects& kernel = services_.kernel;
    escribeArranque();
    if (existeEnKorvacom("ctrl.txt"))
        borraEnKorvacom("ctrl.txt");
    kernel.resetEvent(evento_recursos);
    if (startProgram_)
        startProgram_(services_.programFolder + "\\korvacom\\korvacom.exe");
    setMousePointer(kHourglass);
    services_.pump.sleep(3000);
    services_.pump.doPendingEvents();
    Long espera = kernel.waitForSingleObject(evento_recursos, kEsperaDriverMs);
    if (espera == wait::kTimeout || espera == wait::kAbandoned) {
        services_.dialogs.msgBox("No korvacom");
        setMousePointer(0);
        kernel.closeHandle(evento_recursos);
        resultado = false;
        return;
    }
    kernel.resetEvent(evento_recursos);
    services_.pump.sleep(3000);
    setMousePointer(0);
    if (!esperaArranque()) {
        Texto.setCaption("ERROR. No comunication ");
        resultado = false;
        return;
    }
    Label2.setCaption("Wait. Erasing");
    services_.pump.doPendingEvents();
    services_.pump.sleep(20000);
    resultado = true;
}

}  // namespace fc
