// A screen for the firmware fuzz targets: the controls and variables the
// readers and the preprocessing use, on the virtual clock, with recorded
// message boxes. One is built for each input, so nothing carries over.
#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include "firmware/hex_record.h"
#include "firmware/mensaje_eth.h"
#include "firmware/preprocess_panel.h"
#include "firmware/reader_panel.h"
#include "operator/recording_dialogs.h"
#include "platform/controls.h"
#include "platform/drives.h"
#include "platform/file_table.h"
#include "platform/screen.h"
#include "virtual/virtual_pump.h"

namespace fc::fuzz {

inline void check(bool condition) {
    if (!condition)
        std::abort();
}

// The input's lines, split as a file's lines are read: CR LF, LF or a lone CR.
inline std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\r' || c == '\n') {
            lines.push_back(line);
            line.clear();
            if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
                ++i;
        } else {
            line.push_back(c);
        }
    }
    if (!line.empty())
        lines.push_back(line);
    return lines;
}

struct FuzzScreen {
    explicit FuzzScreen(std::size_t imagen) : memoria(imagen, 0xFF) {}

    VirtualPump pump;
    RecordingDialogs dialogs{pump};
    FileTable files;
    Drives drives;  // none: the files are named by their host paths
    Screen screen{"Firmcast"};
    ProgressBar Barra{screen, "Barra"};
    Label Label2{screen, "Label2"};
    Label lblModelo{screen, "lblModelo"};
    std::string fichero_firmware, linea_fichero, inicio_linea, cabecera_modelo;
    std::vector<Byte> memoria;
    Long pos_memoria = 0;
    Byte estado_lector = 0;
    Byte banco_fichero = 0;
    Long base_segmento = 0;
    Flag es_serie_n = kFalse, es_serie_w = kTrue, es_tr8200 = kFalse;
    std::vector<MensajeEth> mensajes;
    Long longitud_datos = 0;

    ReaderPanel reader() {
        return ReaderPanel{dialogs,          files,         drives,  Barra,       Label2,
                           fichero_firmware, linea_fichero, memoria, pos_memoria, estado_lector};
    }
    SegmentState segment() { return SegmentState{banco_fichero, base_segmento}; }
    PreprocessPanel preprocess() {
        return PreprocessPanel{pump,           dialogs,      files,           drives,
                               lblModelo,      es_serie_n,   es_serie_w,      es_tr8200,
                               linea_fichero,  inicio_linea, cabecera_modelo, mensajes,
                               longitud_datos, [] {}};
    }
};

}  // namespace fc::fuzz
