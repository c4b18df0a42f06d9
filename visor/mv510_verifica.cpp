// The verify: every 128-byte block of the 64 KB image asked back from the
// visor by a dump command and compared, in nine pieces, with the record the
// block makes. A block gets three tries against timeouts; a difference ends
// the load at once.
#include "firmware/hex_record.h"
#include "firmware/hex_text.h"
#include "platform/controls.h"
#include "platform/dialogs.h"
#include "visor/dump_answer.h"
#include "visor/frm_carga_mv510.h"
#include "visor/isp_way.h"
#include "visor/mv510_texts.h"

namespace fc {

namespace {

std::string trozo(const std::string& texto, std::size_t posicion, std::size_t cuantos) {
    return std::string(fieldAt(texto, posicion, cuantos));
}

// ":05000004", the block's start address, its high byte again with 7F or FF
// as the end's low byte, dump mode 00, and the checksum.
std::string ordenVolcado(const std::string& registro, Dialogs& dialogs) {
    const std::string fin = trozo(registro, 6, 2) == "00" ? "7F00" : "FF00";
    const std::string orden =
        std::string(mv510::kCabeceraVolcado) + trozo(registro, 4, 4) + trozo(registro, 4, 2) + fin;
    return orden + DameCheckSum(orden.substr(1), dialogs);
}

}  // namespace

bool frmCargaMV510::verificaBloques(IspWay& way) {
    Label2.setCaption(mv510::kVerificando);
    pos_memoria = 0;
    Barra.setMax(mv510::kFinImagen);
    int intentos = 0;
    while (pos_memoria < mv510::kFinImagen) {
        bool repetir = false;
        if (!verificaBloque(way, intentos, repetir))
            return false;
        if (repetir)
            pos_memoria -= mv510::kBloque;
        avanzaBarra(mv510::kFinImagen);
    }
    return true;
}

// One block asked for and judged. `repetir` asks for the same block again
// after a timeout that isn't yet the third in a row.
bool frmCargaMV510::verificaBloque(IspWay& way, int& intentos, bool& repetir) {
    MV510prepara_linea(RecordImage{memoria, pos_memoria, linea_envio}, Texto);
    linea_guardada = linea_envio;
    linea_envio = ordenVolcado(linea_guardada, services_.dialogs);
    const std::size_t longitud = linea_envio.size();
    const int esperados = static_cast<int>(longitud) + mv510::kCaracteresVolcado;
    if (way.envio(linea_envio, mv510::kLimiteVolcado, esperados)) {
        if (!coincideVolcado()) {
            services_.dialogs.msgBox(mv510::kRespuestaMala, mb::kCritical);
            return false;
        }
        intentos = 0;
        return true;
    }
    ++intentos;
    if (!way.viva()) {
        cancelado();
        return false;
    }
    if (intentos >= mv510::kIntentosVolcado) {
        Label2.setCaption(mv510::kNoCargado);
        services_.dialogs.msgBox(mv510::kSinRespuestaVolcado, mb::kCritical);
        return false;
    }
    repetir = true;
    return true;
}

// The echo and the eight lines, against the record the block makes.
bool frmCargaMV510::coincideVolcado() const {
    return volcadoCoincide(respuesta_visor, linea_envio, linea_guardada);
}

}  // namespace fc
