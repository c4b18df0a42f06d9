#include "control/firmcast_form.h"

#include "control/catalogue.h"
#include "platform/dialogs.h"
#include "platform/pump.h"
#include "platform/socket_state.h"

namespace fc {

Firmcast::Firmcast(Services services, LoadHooks hooks)
    : Screen("Firmcast"),
      timerout(services.pump, "timerout"),
      Tiempo1(services.pump, "Tiempo1"),
      TimerConnection(services.pump, "TimerConnection"),
      TimerEnvio(services.pump, "TimerEnvio"),
      TimerClose(services.pump, "TimerClose"),
      Linea(services.pump, services.serialPorts),
      WsckCliente(services.pump, services.network),
      WsckClienteSiguiente(services.pump, services.network),
      services_(services),
      hooks_(std::move(hooks)),
      panel_{services.pump,  services.dialogs, Linea,      timerout,       tiempo_agotado,
             cmbvelocidades, lblBits,          lblParidad, frComParameters} {
    for (int n = 1; n <= 12; ++n) {
        Dibujo[n - 1] =
            std::make_unique<PictureBox>(*this, "Dibujo" + std::to_string(n), &frInfoComunicacion);
    }
    for (WindowTimer* t : {&timerout, &Tiempo1, &TimerConnection, &TimerEnvio, &TimerClose})
        enrol(*t);
    buildControls();
    wireHandlers();
    useScaleList();
}

// The captions and the state of the controls as the window is designed,
// before the driver touches anything.
void Firmcast::buildControls() {
    setCaption(kDesignCaption);
    Seleccion.setCaption("Select the model");
    frOption.setCaption("Kind of device");
    optBalanzas.setCaption("Scales");
    optEtiquetadoras.setCaption("Labellers");
    optVisores.setCaption("MV");
    frBalanzas.setCaption("Scales");
    frEtiquetadoras.setCaption("Labellers");
    frVisores.setCaption("Visors");
    for (int code = 0; code < kCatalogueSize; ++code) {
        const CatalogueEntry& entry = catalogueEntry(code);
        PictureBox& picture = pictureOf(code);
        picture.setPicture(entry.image);
        picture.setSize(160, 120);
        picture.setCaption(entry.device);
    }
    cmdCargaRomG.setCaption("G scale through its boot ROM");
    hacerf.setCaption("Seleccionar la carga");
    Frame4.setCaption("Seleccion de rango de grabaci\xC3\xB3n");
    Option5.setCaption("Balanza G (G410 / G420)");
    Option7.setCaption("Cuenta-piezas / Solo-peso");
    Option6.setCaption("Balanza completa (todo el chip)");
    Option9.setCaption("Balanza, idioma, protocolo ");
    Option8.setCaption("Balanza e idioma");
    Option10.setCaption("Solo balanza (incluidos 128 bytes");
    Option11.setCaption("Balanza normal (sin 128 bytes)");
    for (Control* c : {static_cast<Control*>(&hacerf), static_cast<Control*>(&Frame4)}) {
        c->setVisible(false);
        c->setEnabled(false);
    }

    PictureVisualizar.setVisible(false);
    frPuerto.setCaption("Communication");
    Label6.setCaption("Select Communication Way");
    optrs232.setCaption("RS-232");
    optEthernet.setCaption("Ethernet");
    Frame1.setCaption("Serial port selecction");
    Option1.setCaption("COM 1");
    Option2.setCaption("COM 2");
    Option3.setCaption("COM 3");
    Option4.setCaption("COM 4");
    cmdDisplayGrafico.setCaption("Cobalt Graphic Display Loader");
    cmdDisplayGrafico.setVisible(false);
    cmdDisplayGrafico.setEnabled(false);

    frDirectorio.setCaption("Firmware file");
    frComParameters.setCaption("Communication Parameters");
    Label5.setCaption("Speed");

    frBalanzasEth.setCaption("Scales on Ethernet");
    Label3.setCaption("Number of scales");
    Label4.setCaption("Scale");
    lstBalanzas.setColumns({"Scale", "IP Address"});
    cmdSave.setCaption("Save Config");
    chkADSL.setCaption("ADSL");
    lblADSL.setCaption("Slow line (ADSL)");
    frBalanzasEth.setVisible(false);
    lblInformacion.setVisible(false);

    frInfoComunicacion.setCaption("Loading");
    for (auto& picture : Dibujo) {
        picture->setVisible(false);
        picture->setSize(64, 64);
    }
    for (int n = 1; n <= 12; ++n) dibujo(n).setPicture("load-" + std::to_string(n));
    Texto.setCaption("");
    Label2.setVisible(false);
    BarraEth.setVisible(false);

    cmdAtras.setCaption("< Back");
    cmdAdelante.setCaption("Next >");
    Command1.setCaption("Select");
    Command1.setVisible(false);
    Command2.setCaption("Start");
    Command2.setVisible(false);
    Command2.setEnabled(false);
    cmdAgain.setCaption("Again");
    cmdAgain.setVisible(false);
    optProduccion.setCaption("Production Way");
    optProduccion.setVisible(false);
    FIN.setCaption("Exit");
}

// Every event of the operator goes to its handler through guard(), so that a
// run-time error no handler catches ends the program as the run time would.
void Firmcast::wireHandlers() {
    auto on = [this](std::function<void()>& event, void (Firmcast::*handler)()) {
        event = [this, handler] { guard([this, handler] { (this->*handler)(); }); };
    };
    on(cmdAdelante.onClick, &Firmcast::cmdAdelante_Click);
    on(cmdAtras.onClick, &Firmcast::cmdAtras_Click);
    on(Command1.onClick, &Firmcast::Command1_Click);
    on(Command2.onClick, &Firmcast::Command2_Click);
    on(File1.onDblClick, &Firmcast::File1_DblClick);
    on(File1.onClick, &Firmcast::File1_Click);
    on(Dir1.onChange, &Firmcast::Dir1_Change);
    on(Drive1.onChange, &Firmcast::Drive1_Change);
    on(cmdAgain.onClick, &Firmcast::cmdAgain_Click);
    on(cmdSave.onClick, &Firmcast::cmdSave_Click);
    on(cmdDisplayGrafico.onClick, &Firmcast::cmdDisplayGrafico_Click);
    on(optProduccion.onClick, &Firmcast::optProduccion_Click);
    on(optBalanzas.onClick, &Firmcast::optBalanzas_Click);
    on(optEtiquetadoras.onClick, &Firmcast::optEtiquetadoras_Click);
    on(optVisores.onClick, &Firmcast::optVisores_Click);
    on(optrs232.onClick, &Firmcast::optrs232_Click);
    on(optEthernet.onClick, &Firmcast::optEthernet_Click);
    on(timerout.onTimer, &Firmcast::timerout_Timer);
    // The Ethernet loader's timers stop themselves when they fire.
    for (WindowTimer* t : {&TimerConnection, &TimerEnvio, &TimerClose})
        t->onTimer = [t] { t->setEnabled(false); };
    auto sendComplete = [this](TcpSocket& socket) {
        if (socket.state() == sck::kConnected)
            respuesta_balanza.envio_completo = kTrue;
    };
    WsckCliente.onSendComplete = [this, sendComplete] { sendComplete(WsckCliente); };
    WsckClienteSiguiente.onSendComplete = [this, sendComplete] {
        sendComplete(WsckClienteSiguiente);
    };
    WsckCliente.onDataArrival = [this](Long) {
        TomaRespuesta(respuesta_balanza, WsckCliente.getData());
    };
    // A lost connection is seen through State; the error itself says nothing.
    WsckCliente.onError = [](Integer, const std::string&) {};
    on(Tiempo1.onTimer, &Firmcast::Tiempo1_Timer);
    on(Dir1.onDblClick, &Firmcast::Dir1_DblClick);
    on(cmdCargaRomG.onClick, &Firmcast::cmdCargaRomG_Click);
    Option5.onClick = [this] {
        guard([this] {
            Option5_Click();
            afterKindOfGChosen();
        });
    };
    on(Option6.onClick, &Firmcast::Option6_Click);
    Option7.onClick = [this] {
        guard([this] {
            Option7_Click();
            afterKindOfGChosen();
        });
    };
    on(Option8.onClick, &Firmcast::Option8_Click);
    on(Option9.onClick, &Firmcast::Option9_Click);
    on(Option10.onClick, &Firmcast::Option10_Click);
    on(Option11.onClick, &Firmcast::Option11_Click);
    FIN.onClick = [this] { FIN_Click(); };
    onUnload = [this] { Form_Unload(); };
    OptionButton* ports[] = {&Option1, &Option2, &Option3, &Option4};
    for (Integer port = 1; port <= 4; ++port) {
        ports[port - 1]->onClick = [this, port] {
            guard([this, port] { OptionPort_Click(port); });
        };
    }
    for (int code = 0; code < kCatalogueSize; ++code) {
        pictureOf(code).onClick = [this, code] {
            guard([this, code] { PictureModel_Click(code); });
        };
    }
}

void Firmcast::guard(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const RuntimeError& error) {
        unhandledError(error);
    }
}

// A run-time error that no handler of the program catches: the run time
// reports it and the program ends there, without any clean-up of its own.
void Firmcast::unhandledError(const RuntimeError& error) {
    services_.dialogs.msgBox(
        "Run-time error '" + std::to_string(error.number()) + "':\n\n" + error.description(),
        mb::kCritical, kAppTitle);
    throw ProgramEnd{3};
}

PictureBox& Firmcast::pictureOf(int code) {
    PictureBox* pictures[kCatalogueSize] = {&Picture4, &Picture3, &Picture2,  &Picture6, &Picture5,
                                            &Picture8, &Picture7, &Picture12, &Picture9};
    return *pictures[catalogueEntry(code).code];
}

void Firmcast::clearModelFlags() {
    es_serie_n = es_serie_h = es_serie_w = es_tr6100 = kFalse;
    es_serie_g = es_tr8200 = es_matrix4000 = es_mv510 = kFalse;
}

void Firmcast::raiseModelFlag(int code) {
    clearModelFlags();
    switch (catalogueEntry(code).flag) {
        case ModelFlag::SerieW:
            es_serie_w = kTrue;
            break;
        case ModelFlag::SerieN:
            es_serie_n = kTrue;
            break;
        case ModelFlag::SerieH:
            es_serie_h = kTrue;
            break;
        case ModelFlag::Matrix4000:
            es_matrix4000 = kTrue;
            break;
        case ModelFlag::Tr6100:
            es_tr6100 = kTrue;
            break;
        case ModelFlag::Tr8200:
            es_tr8200 = kTrue;
            break;
        case ModelFlag::None:
            break;
    }
}

bool Firmcast::anyModelFlag() const {
    return es_serie_n || es_serie_h || es_serie_w || es_tr6100 || es_serie_g || es_tr8200 ||
           es_matrix4000 || es_mv510;
}

std::string Firmcast::selectedFilePath() const {
    std::string path = File1.path();
    if (path.empty() || path.back() != '\\')
        path += "\\";
    return path + File1.fileName();
}

}  // namespace fc
