// The synchronisation with the visor's boot loader, in three steps: "U"
// until the visor, switched on, echoes it; the erase; the blank check of the
// lower 32 KB. A step that times out or is answered wrongly is sent again,
// with no count of tries: that is how the screen waits for the visor to be
// switched on. Only the operator's closing of the link ends it otherwise.
#include "platform/pump.h"
#include "visor/frm_carga_mv510.h"
#include "visor/isp_way.h"
#include "visor/mv510_texts.h"

namespace fc {

namespace {

const char* registroDelPaso(Integer paso) {
    switch (paso) {
        case 1:
            return mv510::kSincronia;
        case 2:
            return mv510::kBorrado;
        default:
            return mv510::kComprobacionBlanco;
    }
}

// "U" is answered by itself; a record by its echo, ".", CR and LF.
int esperadosDelPaso(Integer paso) {
    return paso == 1 ? 1 : static_cast<int>(std::string(registroDelPaso(paso)).size()) + 3;
}

}  // namespace

bool frmCargaMV510::MV510sincroniza() {
    return sincroniza(serialWay());
}

bool frmCargaMV510::MV510sincroniza_udp() {
    return sincroniza(udpWay());
}

bool frmCargaMV510::sincroniza(IspWay& way) {
    Texto.setCaption(mv510::kEnciende);
    limite_sinc = mv510::kLimiteSincroniaInicial;
    way.preparaSincronia();
    paso_sinc = 1;
    for (;;) {
        if (!pasoSincronia(way)) {
            cancelado();
            Barra.setVisible(false);
            Texto.setVisible(false);
            acaba();
            return false;
        }
        if (paso_sinc > 3)
            break;
    }
    timerout.setEnabled(false);
    return true;
}

// One pass: the step's record out and its answer judged. False when the
// operator has closed the link; paso_sinc passes 3 when the last step has
// been answered.
bool frmCargaMV510::pasoSincronia(IspWay& way) {
    tiempo_agotado = kFalse;
    timerout.setInterval(static_cast<int>(limite_sinc));
    timerout.setEnabled(true);
    way.descartaEntrada();
    const int esperados = esperadosDelPaso(paso_sinc);
    way.envia(registroDelPaso(paso_sinc));
    while (tiempo_agotado == kFalse && way.vivaEnSincronia() && !way.cuentaCumplida(esperados)) {
        services_.pump.doEvents();
    }
    if (!way.vivaEnSincronia())
        return false;
    const std::string respuesta = way.respuesta();
    if (tiempo_agotado == kFalse && juzgaSincronia(respuesta))
        ++paso_sinc;
    timerout.setEnabled(false);
    return true;
}

// Moves the screen on when the step's answer is right.
bool frmCargaMV510::juzgaSincronia(const std::string& respuesta) {
    if (paso_sinc == 1) {
        if (respuesta != mv510::kSincronia)
            return false;
        Label2.setVisible(false);
        Texto.setCaption(mv510::kBorrando);
        limite_sinc = mv510::kLimiteSincroniaBorrado;
        return true;
    }
    if (respuesta != std::string(registroDelPaso(paso_sinc)) + mv510::kHecho)
        return false;
    if (paso_sinc == 2)
        Texto.setCaption(mv510::kVerificandoBlanco);
    return true;
}

void frmCargaMV510::cancelado() {
    Label2.setCaption(mv510::kCancelado);
}

}  // namespace fc
