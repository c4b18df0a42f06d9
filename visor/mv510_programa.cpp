// The load proper, once the visor is erased and blank: the image programmed
// 128 bytes a record up to the end of the program and a margin, the whole
// 64 KB read back by dump and compared, then the Boot Status Byte written
// and read back. Any failure has told the operator; a run-time failure (an
// image whose program reaches the top of the 64 KB) ends it silently. Every
// ending but success hides the progress and closes the line and the files.
#include "firmware/hex_record.h"
#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/runtime_error.h"
#include "visor/frm_carga_mv510.h"
#include "visor/isp_way.h"
#include "visor/mv510_texts.h"

namespace fc {

bool frmCargaMV510::MV510programa() {
    return programa(serialWay());
}

bool frmCargaMV510::MV510programa_udp() {
    return programa(udpWay());
}

bool frmCargaMV510::programa(IspWay& way) {
    try {
        if (fases(way))
            return true;
    } catch (const RuntimeError&) {
        // The handler leads to the closing step, as any failure does.
    }
    Barra.setVisible(false);
    Texto.setVisible(false);
    acaba();
    return false;
}

bool frmCargaMV510::fases(IspWay& way) {
    buscaFinPrograma();
    if (!programaBloques(way) || !verificaBloques(way) || !configura(way))
        return false;
    Label2.setCaption(mv510::kCargado);
    Barra.setVisible(false);
    Texto.setVisible(false);
    return true;
}

// The last byte of the image that isn't 0xFF, and 18 more.
void frmCargaMV510::buscaFinPrograma() {
    Label2.setCaption(mv510::kProgramando);
    Label2.setVisible(true);
    Barra.setVisible(true);
    Barra.setMin(0);
    Barra.setValue(0);
    fin_programa = mv510::kFinImagen;
    while (fin_programa >= 1 && memoria[static_cast<std::size_t>(fin_programa)] == 0xFF)
        --fin_programa;
    fin_programa += mv510::kMargenPrograma;
    Barra.setMax(fin_programa);
}

void frmCargaMV510::avanzaBarra(Long tope) {
    Barra.setValue(pos_memoria >= tope ? Barra.max() : pos_memoria);
}

// A timeout, a wrong answer or a closed link, told as each is told; true
// when the answer is the one expected.
bool frmCargaMV510::juzgaRespuesta(IspWay& way, bool enTiempo, const std::string& esperada,
                                   const char* textoMalo, const char* textoSinRespuesta) {
    Dialogs& dialogs = services_.dialogs;
    if (enTiempo) {
        if (respuesta_visor == esperada)
            return true;
        dialogs.msgBox(textoMalo, mb::kCritical);
        return false;
    }
    if (!way.viva()) {
        cancelado();
        return false;
    }
    Label2.setCaption(mv510::kNoCargado);
    dialogs.msgBox(textoSinRespuesta, mb::kCritical);
    return false;
}

bool frmCargaMV510::programaBloques(IspWay& way) {
    pos_memoria = 0;
    while (pos_memoria < fin_programa) {
        MV510prepara_linea(RecordImage{memoria, pos_memoria, linea_envio}, Texto);
        const int esperados = static_cast<int>(linea_envio.size()) + 3;
        const bool enTiempo = way.envio(linea_envio, mv510::kLimitePrograma, esperados);
        if (!juzgaRespuesta(way, enTiempo, linea_envio + mv510::kHecho, mv510::kRespuestaMala,
                            mv510::kSinRespuesta))
            return false;
        avanzaBarra(fin_programa);
    }
    return true;
}

bool frmCargaMV510::configura(IspWay& way) {
    Label2.setCaption(mv510::kConfigurando);
    linea_envio = mv510::kEscribeBsb;
    bool enTiempo =
        way.envio(linea_envio, mv510::kLimitePrograma, static_cast<int>(linea_envio.size()) + 3);
    if (!juzgaRespuesta(way, enTiempo, linea_envio + mv510::kHecho, mv510::kBsbMalEscrito,
                        mv510::kBsbSinRespuestaEscritura))
        return false;
    Label2.setCaption(mv510::kVerificandoConfiguracion);
    linea_envio = mv510::kLeeBsb;
    enTiempo =
        way.envio(linea_envio, mv510::kLimiteVolcado, static_cast<int>(linea_envio.size()) + 4);
    return juzgaRespuesta(way, enTiempo, linea_envio + mv510::kBsbLeido + mv510::kHecho,
                          mv510::kBsbMalLeido, mv510::kBsbSinRespuestaLectura);
}

}  // namespace fc
