#include "firmware/file_loader.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>

#include "firmware/error_box.h"
#include "firmware/firmware_path.h"
#include "firmware/line_reader.h"
#include "platform/controls.h"
#include "platform/file_table.h"
#include "platform/runtime_error.h"

namespace fc {

namespace {

constexpr const char* kEnMemoria = "File is in memory";

void llenaMemoria(std::vector<Byte>& memoria, Long hasta) {
    if (memoria.size() <= static_cast<std::size_t>(hasta))
        throw RuntimeError(err::kSubscriptOutOfRange);
    std::fill_n(memoria.begin(), hasta + 1, Byte{0xFF});
}

void abre(ReaderPanel& panel, Integer num_fichero) {
    panel.files.open(num_fichero, rutaFichero(panel.drives, panel.fichero_firmware),
                     FileTable::Mode::Input);
    panel.linea_fichero.clear();
}

// The bar from 0 to the file's length in bytes.
void muestraBarra(ReaderPanel& panel, Integer num_fichero) {
    const auto longitud =
        std::min<std::int64_t>(panel.files.lof(num_fichero), std::numeric_limits<Long>::max());
    panel.Barra.setVisible(true);
    panel.Barra.setMin(0);
    panel.Barra.setValue(0);
    panel.Barra.setMax(static_cast<Long>(longitud));
}

bool enMemoria(ReaderPanel& panel) {
    panel.Barra.setValue(panel.Barra.max());
    panel.Label2.setCaption(kEnMemoria);
    return true;
}

// Line ends are not counted, so the bar can't pass its maximum.
void avanzaBarra(ReaderPanel& panel) {
    panel.Barra.setValue(panel.Barra.value() + static_cast<Long>(panel.linea_fichero.size()));
}

// The loop both wrappers share: the first call works on the empty line,
// which passes the checksum and stores nothing. `aceptaLinea` may refuse a
// line just read (it has then closed the file).
bool leeHastaElFin(ReaderPanel& panel, Integer num_fichero, const std::function<Byte()>& lee,
                   const std::function<bool()>& aceptaLinea) {
    for (;;) {
        panel.estado_lector = lee();
        if (panel.estado_lector == estado::kChecksumMalo)
            return false;
        if (panel.estado_lector == estado::kFinFichero)
            return enMemoria(panel);
        if (panel.files.eof(num_fichero)) {
            panel.files.close(num_fichero);
            return false;
        }
        panel.files.lineInput(num_fichero, panel.linea_fichero);
        if (!aceptaLinea())
            return false;
        avanzaBarra(panel);
    }
}

}  // namespace

bool carga_fichero(ReaderPanel& panel, Integer& num_fichero) {
    num_fichero = static_cast<Integer>(panel.files.freeFile());
    const Integer numero = num_fichero;
    abre(panel, numero);
    muestraBarra(panel, numero);
    llenaMemoria(panel.memoria, kLlenadoCorto);
    const auto empiezaConDosPuntos = [&] {
        if (!panel.linea_fichero.empty() && panel.linea_fichero[0] == ':')
            return true;
        panel.files.close(numero);
        return false;
    };
    return leeHastaElFin(
        panel, numero, [&] { return leelineafichero(panel, numero); }, empiezaConDosPuntos);
}

bool carga_ficheroL(ReaderPanel& panel, SegmentState segmento) {
    try {
        panel.files.close(kFicheroPrincipal);
        abre(panel, kFicheroPrincipal);
        muestraBarra(panel, kFicheroPrincipal);
        llenaMemoria(panel.memoria, kLlenadoLargo);
        segmento.banco_fichero = 0;
        segmento.base_segmento = 0;
        return leeHastaElFin(
            panel, kFicheroPrincipal, [&] { return leelineaficheroL(panel, segmento); },
            [] { return true; });
    } catch (const RuntimeError& error) {
        avisaError(panel.dialogs, error);
        return false;
    }
}

}  // namespace fc
