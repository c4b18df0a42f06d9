#include "display/frm_carga_display_grafico.h"

#include "common/common_module.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/file_table.h"
#include "platform/native_path.h"
#include "platform/pump.h"
#include "platform/runtime_error.h"

namespace fc {

frmCargaDisplayGrafico::frmCargaDisplayGrafico(Services services, CommonModule& common,
                                               StartProgram startProgram)
    : Screen("frmCargaDisplayGrafico"),
      timerout(services.pump, "timerout"),
      TimerKorvacom(services.pump, "TimerKorvacom"),
      TimerP0(services.pump, "TimerP0"),
      services_(services),
      common_(common),
      startProgram_(std::move(startProgram)) {
    for (WindowTimer* t : {&timerout, &TimerKorvacom, &TimerP0}) {
        enrol(*t);
        t->setInterval(1000);
    }
    buildControls();
    wireHandlers();
}

// The captions and state of the controls as the window is designed.
void frmCargaDisplayGrafico::buildControls() {
    setCaption(kDisplayCaption);
    frDirectorio.setCaption("Firmware file");
    Frame2.setCaption("Communication");
    optEthernet.setCaption("Ethernet");
    optrs232.setCaption("RS-232");
    Frame1.setCaption("Serial port selection");
    OptionButton* puertos[] = {&Option1, &Option2, &Option3, &Option4};
    for (int n = 1; n <= 4; ++n) puertos[n - 1]->setCaption("COM " + std::to_string(n));
    lblDirLogica.setCaption("Logic Address:");
    frEthParameters.setCaption("Ethernet Parameters");
    lblIPAddr.setCaption("IP Address");
    lblPort.setCaption("TX Port:");
    lblPortRX.setCaption("RX Port:");
    TxtPortRX.setText("3001");
    frComParameters.setCaption("Serial Parameters");
    Label5.setCaption("Baud Rate");
    lblBits.setCaption("Bits:");
    lblParidad.setCaption("Parity:");
    cmdAdelante.setCaption("Load");
    cmdAtras.setCaption("Back");
    CmdStop.setCaption("Stop");
    CmdStop.setVisible(false);
    FIN.setCaption("Exit");
}

void frmCargaDisplayGrafico::wireHandlers() {
    auto on = [this](std::function<void()>& event, void (frmCargaDisplayGrafico::*handler)()) {
        event = [this, handler] { guard([this, handler] { (this->*handler)(); }); };
    };
    on(cmdAdelante.onClick, &frmCargaDisplayGrafico::cmdAdelante_Click);
    on(cmdAtras.onClick, &frmCargaDisplayGrafico::cmdAtras_Click);
    on(CmdStop.onClick, &frmCargaDisplayGrafico::CmdStop_Click);
    on(optEthernet.onClick, &frmCargaDisplayGrafico::optEthernet_Click);
    on(optrs232.onClick, &frmCargaDisplayGrafico::optrs232_Click);
    on(File1.onClick, &frmCargaDisplayGrafico::File1_Click);
    on(File1.onDblClick, &frmCargaDisplayGrafico::File1_DblClick);
    on(Dir1.onChange, &frmCargaDisplayGrafico::Dir1_Change);
    on(Dir1.onDblClick, &frmCargaDisplayGrafico::Dir1_DblClick);
    on(Drive1.onChange, &frmCargaDisplayGrafico::Drive1_Change);
    on(timerout.onTimer, &frmCargaDisplayGrafico::timerout_Timer);
    on(TimerKorvacom.onTimer, &frmCargaDisplayGrafico::TimerKorvacom_Timer);
    on(TimerP0.onTimer, &frmCargaDisplayGrafico::TimerP0_Timer);
    txtDirTCP.onKeyPress = [this](Integer& key) {
        guard([this, &key] { txtDirTCP_KeyPress(key); });
    };
    FIN.onClick = [this] { FIN_Click(); };
    onUnload = [this] { Form_Unload(); };
    OptionButton* puertos[] = {&Option1, &Option2, &Option3, &Option4};
    for (Integer n = 1; n <= 4; ++n)
        puertos[n - 1]->onClick = [this, n] { guard([this, n] { OptionPort_Click(n); }); };
}

// A run-time error that no handler of the screen catches: the run time
// reports it and the program ends there.
void frmCargaDisplayGrafico::guard(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const RuntimeError& error) {
        services_.dialogs.msgBox(
            "Run-time error '" + std::to_string(error.number()) + "':\n\n" + error.description(),
            mb::kCritical, kAppTitle);
        services_.files.closeAll();
        throw ProgramEnd{3};
    }
}

std::string frmCargaDisplayGrafico::rutaKorvacom(const std::string& nombre) const {
    const std::string carpeta = nativePath(services_.programFolder + "\\korvacom");
    for (const FoundEntry& e : services_.fileSystem.findFiles(carpeta + "/" + nombre)) {
        if (!e.isFolder)
            return carpeta + "/" + e.name;
    }
    return carpeta + "/" + nombre;
}

std::string frmCargaDisplayGrafico::rutaPrograma(const std::string& nombre) const {
    return nativePath(services_.programFolder + "\\" + nombre);
}

bool frmCargaDisplayGrafico::existeEnKorvacom(const std::string& nombre) const {
    for (const FoundEntry& e : services_.fileSystem.findFiles(rutaKorvacom(nombre))) {
        if (!e.isFolder)
            return true;
    }
    return false;
}

void frmCargaDisplayGrafico::borraEnKorvacom(const std::string& nombre) {
    services_.fileSystem.deleteFile(rutaKorvacom(nombre));
}

}  // namespace fc
