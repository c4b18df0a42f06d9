// A screen for the firmware readers: the controls and variables they use,
// on the virtual clock, with recorded message boxes and a folder for the
// files under test.
#pragma once

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
#include "support/scenario_rig.h"
#include "virtual/virtual_pump.h"

namespace fc::test {

struct FirmwareScreen {
    VirtualPump pump;
    RecordingDialogs dialogs{pump};
    FileTable files;
    Drives drives;  // none: the files are named by their host paths
    TempFolder folder;
    Screen screen{"Firmcast"};
    ProgressBar Barra{screen, "Barra"};
    Label Label2{screen, "Label2"};
    Label lblModelo{screen, "lblModelo"};

    std::string fichero_firmware;
    std::string linea_fichero;
    std::string inicio_linea;
    std::string cabecera_modelo;
    std::vector<Byte> memoria = std::vector<Byte>(kLimiteMemoria + 1, 0xFF);
    Long pos_memoria = 0;
    Byte estado_lector = 0;
    Byte banco_fichero = 0;
    Long base_segmento = 0;
    Integer num_fichero = 0;
    Flag es_serie_n = kFalse;
    Flag es_serie_w = kTrue;
    Flag es_tr8200 = kFalse;
    std::vector<MensajeEth> mensajes;
    Long longitud_datos = 0;
    int acaba2Calls = 0;

    ReaderPanel reader() {
        return ReaderPanel{dialogs,          files,         drives,  Barra,       Label2,
                           fichero_firmware, linea_fichero, memoria, pos_memoria, estado_lector};
    }
    SegmentState segment() { return SegmentState{banco_fichero, base_segmento}; }
    PreprocessPanel preprocess() {
        return PreprocessPanel{pump,
                               dialogs,
                               files,
                               drives,
                               lblModelo,
                               es_serie_n,
                               es_serie_w,
                               es_tr8200,
                               linea_fichero,
                               inicio_linea,
                               cabecera_modelo,
                               mensajes,
                               longitud_datos,
                               [this] { ++acaba2Calls; }};
    }

    // Writes `content` as a file and makes it the chosen firmware file.
    std::string useFile(const std::string& content, const std::string& name = "fw.hex") {
        fichero_firmware = folder.write(name, content);
        return fichero_firmware;
    }

    std::vector<std::string> boxes() const { return dialogs.texts(); }
};

}  // namespace fc::test
