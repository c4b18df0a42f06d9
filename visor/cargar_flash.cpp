// The load button and what runs under it: the way made ready, the file read
// into the image unless it is there already, the dialogue on the chosen way;
// and the other buttons of the screen: stop, back, end.
#include <cctype>

#include "common/address_tests.h"
#include "firmware/file_loader.h"
#include "platform/dialogs.h"
#include "platform/file_table.h"
#include "platform/pump.h"
#include "platform/runtime_error.h"
#include "visor/frm_carga_mv510.h"
#include "visor/mv510_texts.h"

namespace fc {

namespace {

// The port box's text as a number: blanks around digits; anything else is a
// type mismatch, too large a number an overflow.
Long numeroDePuerto(const std::string& texto) {
    const auto inicio = texto.find_first_not_of(" \t");
    const auto fin = texto.find_last_not_of(" \t");
    if (inicio == std::string::npos)
        throw RuntimeError(err::kTypeMismatch);
    const std::string cifras = texto.substr(inicio, fin - inicio + 1);
    if (cifras.size() > 10)
        throw RuntimeError(err::kOverflow);
    for (char c : cifras) {
        if (!std::isdigit(static_cast<unsigned char>(c)))
            throw RuntimeError(err::kTypeMismatch);
    }
    const long long valor = std::stoll(cifras);
    if (valor > 0x7FFFFFFF)
        throw RuntimeError(err::kOverflow);
    return static_cast<Long>(valor);
}

}  // namespace

UdpSocket& frmCargaMV510::envio() {
    if (!Winsock_Envio)
        throw RuntimeError(err::kObjectNotSet);
    return *Winsock_Envio;
}

UdpSocket& frmCargaMV510::recepcion() {
    if (!Winsock_recepcion)
        throw RuntimeError(err::kObjectNotSet);
    return *Winsock_recepcion;
}

void frmCargaMV510::abreSockets() {
    envio().close();
    recepcion().close();
    envio().setRemoteHost(txtDirTCP.text());
    envio().setRemotePort(numeroDePuerto(TxtPort.text()));
    recepcion().bind(mv510::kPuertoRespuestas);
}

void frmCargaMV510::usoDeControles(bool enUso) {
    for (Control* c : std::initializer_list<Control*>{&Drive1, &Dir1, &File1, &Frame1, &Frame2,
                                                      &frComParameters, &cmdAdelante, &cmdAtras}) {
        c->setEnabled(enUso);
    }
}

void frmCargaMV510::cmdAdelante_Click() {
    try {
        if (optEthernet.value()) {
            if (!EsDireccionIP(txtDirTCP)) {
                services_.dialogs.msgBox(mv510::kDireccionMala);
                txtDirTCP.setFocus();
                return;
            }
            abreSockets();
        }
        usoDeControles(false);
        CmdStop.setVisible(true);
        Barra.setVisible(true);
        preparaTransporte();
        CargarFlash();
    } catch (const RuntimeError& error) {
        services_.dialogs.msgBox(std::to_string(error.number()) + " " + error.description(),
                                 mb::kCritical, kAppTitle);
        Label2.setCaption(mv510::kFirmcastError);
        Barra.setVisible(false);
    }
    usoDeControles(true);
    CmdStop.setVisible(false);
}

void frmCargaMV510::CargarFlash() {
    frInfoComunicacion.setVisible(true);
    Label2.setCaption(mv510::kEnciendeBalanza);
    Label2.setVisible(true);
    services_.pump.doPendingEvents();
    Dialogs& dialogs = services_.dialogs;
    if (fichero_firmware != fichero_en_memoria) {
        Label2.setCaption(mv510::kCargandoFichero);
        services_.pump.doPendingEvents();
        ReaderPanel lector{dialogs,     services_.files,  services_.drives, Barra,
                           Label2,      fichero_firmware, linea_fichero,    memoria,
                           pos_memoria, estado_lector};
        if (!carga_fichero(lector, num_fichero)) {
            acaba();
            Label2.setVisible(false);
            Barra.setVisible(false);
            dialogs.msgBox(mv510::kFicheroMalo, mb::kCritical);
            return;
        }
        fichero_en_memoria = fichero_firmware;
    } else if (fichero_firmware.empty()) {
        acaba();
        Label2.setVisible(false);
        Barra.setVisible(false);
        Texto.setVisible(false);
        dialogs.msgBox("File " + fichero_firmware + " not valid", mb::kCritical);
        return;
    }
    Texto.setVisible(true);
    Texto.setCaption(" ");
    if (Label2.caption() != mv510::kFicheroEnMemoria)
        Label2.setVisible(false);
    bool cargado = false;
    if (optrs232.value())
        cargado = MV510sincroniza() && MV510programa();
    else
        cargado = MV510sincroniza_udp() && MV510programa_udp();
    if (cargado)
        Label2.setCaption(mv510::kFirmcastOk);
}

void frmCargaMV510::CmdStop_Click() {
    if (optrs232.value() && Linea.portOpen())
        Linea.setPortOpen(false);
    if (optEthernet.value() && Winsock_Envio && Winsock_recepcion) {
        Winsock_Envio->close();
        Winsock_recepcion->close();
    }
    CmdStop.setVisible(false);
    Barra.setVisible(false);
    Texto.setVisible(false);
    Label2.setVisible(true);
    Label2.setCaption(mv510::kCancelado);
}

void frmCargaMV510::acaba() {
    if (Linea.portOpen())
        Linea.setPortOpen(false);
    services_.files.closeAll();
}

void frmCargaMV510::cmdAtras_Click() {
    if (Linea.portOpen())
        Linea.setPortOpen(false);
    ocultaPantalla();
}

void frmCargaMV510::ocultaPantalla() {
    auto alCerrar = std::move(onUnload);
    onUnload = nullptr;
    unload();
    onUnload = std::move(alCerrar);
}

void frmCargaMV510::FIN_Click() {
    if (Linea.portOpen())
        Linea.setPortOpen(false);
    services_.files.closeAll();
    throw ProgramEnd{0};
}

void frmCargaMV510::Form_Unload() {
    setMousePointer(1);
    FIN_Click();
}

}  // namespace fc
