#include "serial/msc1210_loader.h"

#include <algorithm>

#include "firmware/firmware_path.h"
#include "firmware/hex_record.h"
#include "firmware/hex_text.h"
#include "firmware/line_reader.h"
#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/file_table.h"
#include "platform/pump.h"
#include "platform/serial_line.h"
#include "platform/window_timer.h"
#include "serial/answer_wait.h"

namespace fc {

namespace {

constexpr const char* kNoAnswer = "No answer from the scale, check the cable";
constexpr const char* kWrongAnswer = "The anwer from the scale is wrong";
constexpr const char* kReady = "The scale is ready";
constexpr const char* kReadyTitle = "The Scale is ready";
constexpr const char* kMistakeAtEnd = "There was a mistake at the end of transmision";

SerialPanel& serialOf(Msc1210Panel& panel) {
    return panel.line.serial;
}

// The pauses of the dialogue are plain sleeps: no event runs meanwhile.
void pausa(Msc1210Panel& panel, int ms) {
    serialOf(panel).pump.sleep(ms);
}

// `count` characters of the answer from the 1-based `position`, as far as
// the answer goes.
std::string enPosicion(const std::string& respuesta, std::size_t position, std::size_t count) {
    return std::string(fieldAt(respuesta, position, count));
}

// The answers' tests: "ok" at a position, or a carriage return at position 7.
Flag juzga(Msc1210Panel& panel, Flag enTiempo, Flag larga, std::size_t posicionOk) {
    if (!enTiempo)
        return kFalse;
    if (larga)
        return toFlag(enPosicion(panel.respuesta_msc, posicionOk, 2) == "ok");
    return toFlag(enPosicion(panel.respuesta_msc, 7, 1) == "\r");
}

Flag comando(Msc1210Panel& panel, const std::string& texto, Flag larga, std::size_t posicionOk,
             int limiteLargaMs, int esperaTrasExitoMs) {
    const int limite = larga ? limiteLargaMs : 200;
    const int esperados = larga ? 10 : 8;
    const Flag enTiempo = haz_envio(panel, texto, limite, esperados);
    const Flag bien = juzga(panel, enTiempo, larga, posicionOk);
    if (bien)
        espera_tiempo(serialOf(panel), esperaTrasExitoMs);
    return bien;
}

void fallo(Msc1210Panel& panel, const char* texto, int estilo) {
    panel.line.paradibu();
    serialOf(panel).dialogs.msgBox(texto, estilo);
    panel.line.acaba2();
}

// Phase 1: the image from the file, the last line never stored. False when
// the reader refused a line (it has told why).
bool leeImagen(Msc1210Panel& panel) {
    LinePanel& l = panel.line;
    ReaderPanel& r = panel.reader;
    l.files.close(kFicheroPrincipal);
    l.files.open(kFicheroPrincipal, rutaFichero(r.drives, r.fichero_firmware),
                 FileTable::Mode::Input);
    l.Barra.setVisible(true);
    l.Barra.setMin(0);
    l.Barra.setValue(0);
    l.Barra.setMax(static_cast<Long>(l.files.lof(kFicheroPrincipal)));
    std::fill_n(r.memoria.begin(), std::min<std::size_t>(r.memoria.size(), msc1210::kImageTop + 1),
                Byte{0xFF});
    l.Tiempo1.setInterval(600);
    l.Tiempo1.setEnabled(true);
    for (;;) {
        r.estado_lector = leelineafichero(r, kFicheroPrincipal);
        if (r.estado_lector == estado::kChecksumMalo)
            return false;
        if (r.estado_lector == estado::kFinFichero)
            break;
        l.linea_fichero = l.files.lineInput(kFicheroPrincipal);
        l.Barra.setValue(l.Barra.value() + static_cast<Long>(l.linea_fichero.size()));
        if (l.files.eof(kFicheroPrincipal)) {
            l.files.close(kFicheroPrincipal);
            break;
        }
    }
    l.Barra.setValue(l.Barra.max());
    l.Texto.setCaption("File is in memory");
    return true;
}

// Phase 2: up to 21 DTR pulses, each followed by a carriage return that the
// ROM answers with two characters and its banner.
bool despiertaRom(Msc1210Panel& panel) {
    SerialLine& linea = serialOf(panel).Linea;
    for (panel.intento_msc = 0; panel.intento_msc < msc1210::kHandshakeTries; ++panel.intento_msc) {
        linea.setDTREnable(true);
        pausa(panel, 300);
        linea.setDTREnable(false);
        pausa(panel, 300);
        if (haz_envio(panel, "\r", 10000, 14) &&
            enPosicion(panel.respuesta_msc, 3, 12) == msc1210::kBanner)
            return true;
    }
    return false;
}

// One record, taken when the ROM's answer starts with ".".
bool enviaRegistro(Msc1210Panel& panel) {
    return haz_envio(panel, panel.linea_envio, 10000, 1) && !panel.respuesta_msc.empty() &&
           panel.respuesta_msc[0] == '.';
}

// Phase 4: the image over the chosen range, 16 bytes a record.
bool enviaDatos(Msc1210Panel& panel) {
    ProgressBar& barra = panel.line.Barra;
    barra.setVisible(true);
    barra.setMin(0);
    barra.setValue(0);
    barra.setMax(panel.limite_rango);
    Long& pos = panel.reader.pos_memoria;
    pos = (panel.nivel == 3 || panel.hacer_f) ? 0 : 0x80;
    while (pos < panel.limite_rango) {
        prepara_linea(RecordImage{panel.reader.memoria, pos, panel.linea_envio}, panel.line.Texto);
        if (!enviaRegistro(panel))
            return false;
        barra.setValue(pos >= panel.limite_rango ? barra.max() : pos);
    }
    return true;
}

// Phase 5: the configuration record when the load started at 0, then the
// end record and the ROM's last word.
void cierra(Msc1210Panel& panel) {
    if (panel.nivel == 3 || panel.hacer_f) {
        panel.linea_envio = std::string(msc1210::kConfigRecord) + msc1210::kLineEnd;
        if (!enviaRegistro(panel)) {
            fallo(panel, kWrongAnswer, mb::kCritical);
            return;
        }
    }
    panel.linea_envio = std::string(msc1210::kEndRecord) + msc1210::kLineEnd;
    const bool fin = haz_envio(panel, panel.linea_envio, 5000, 1) && !panel.respuesta_msc.empty() &&
                     panel.respuesta_msc[0] == 'T';
    Dialogs& dialogs = serialOf(panel).dialogs;
    if (fin)
        dialogs.msgBox(kReady, mb::kInformation, kReadyTitle);
    else
        dialogs.msgBox(kMistakeAtEnd, mb::kCritical);
    panel.line.Barra.setVisible(false);
    panel.line.Texto.setVisible(false);
    serialOf(panel).Linea.setDTREnable(true);
}

}  // namespace

Flag haz_envio(Msc1210Panel& panel, const std::string& texto, int limiteMs, int esperados) {
    SerialPanel& s = serialOf(panel);
    s.Linea.setInBufferCount(0);
    s.Linea.output(texto);
    drena_salida(s);
    const bool enTiempo = espera_respuesta(s, limiteMs, al_menos(s, esperados));
    panel.respuesta_msc = s.Linea.input();
    return toFlag(enTiempo);
}

Flag envia_comando(Msc1210Panel& panel, const std::string& texto, Flag larga) {
    return comando(panel, texto, larga, 7, 5000, 100);
}

Flag envia_comando2(Msc1210Panel& panel, const std::string& texto, Flag larga) {
    return comando(panel, texto, larga, 8, 200, 10);
}

Flag prog_registros(Msc1210Panel& panel) {
    for (const char* registro : {"RWFB0A", "RWFC32", "RWFD2B"}) {
        if (!envia_comando(panel, registro, kFalse))
            return kFalse;
        pausa(panel, 10);
    }
    if ((panel.rango_banco > 250 && panel.hacer_f) || panel.nivel == 3) {
        if (!envia_comando(panel, "M8000", kTrue))
            return kFalse;
        pausa(panel, 10);
        if (!envia_comando(panel, "M0000", kTrue))
            return kFalse;
    } else {
        Long direccion = panel.hacer_f ? 0 : msc1210::kPageSize;
        for (int pagina = 0; pagina <= panel.rango_banco; ++pagina) {
            Integer paraTexto = static_cast<Integer>(direccion);
            panel.line.Texto.setCaption("Clearing Flash page: " + to_hex(paraTexto));
            Integer paraComando = static_cast<Integer>(direccion);
            if (!envia_comando2(panel, "CP" + to_hex(paraComando), kTrue))
                return kFalse;
            direccion += msc1210::kPageSize;
        }
    }
    pausa(panel, 10);
    haz_envio(panel, "E", 100, 0);
    pausa(panel, 10);
    return haz_envio(panel, "L", 100, 0);
}

void carga_F(Msc1210Panel& panel) {
    if (!leeImagen(panel))
        return;
    if (!despiertaRom(panel)) {
        fallo(panel, kNoAnswer, mb::kOkOnly);
        panel.line.Barra.setVisible(false);
        panel.line.Texto.setVisible(false);
        return;
    }
    pausa(panel, 300);
    panel.line.Barra.setVisible(false);
    if (!prog_registros(panel)) {
        fallo(panel, kNoAnswer, mb::kOkOnly);
        return;
    }
    if (!enviaDatos(panel)) {
        fallo(panel, kWrongAnswer, mb::kCritical);
        return;
    }
    cierra(panel);
}

}  // namespace fc
