// What the firmware file readers use of a screen: its dialogs and files, the
// progress bar `Barra` and the label `Label2`, the chosen file, the current
// line, the image `memoria` with its running address and the reader's status
// byte. The main screen (an image of 0xC0001 bytes) and the visor and display
// screens (0x10001 bytes) each hand theirs over, so one reader serves all.
// The image is dimensioned by its screen: its size fixes the upper bound that
// every store is checked against.
#pragma once

#include <string>
#include <vector>

#include "platform/vb_types.h"

namespace fc {

class Dialogs;
class FileTable;
class Drives;
class ProgressBar;
class Label;

struct ReaderPanel {
    Dialogs& dialogs;
    FileTable& files;
    const Drives& drives;  // where the chosen file's drive letter points
    ProgressBar& Barra;
    Label& Label2;
    const std::string& fichero_firmware;
    std::string& linea_fichero;
    std::vector<Byte>& memoria;
    Long& pos_memoria;
    // 0 line taken, 1 bad checksum, 2 end record seen.
    Byte& estado_lector;
};

// What the extended records of a file set, kept by the main screen only:
// the bank of the last 0x66 record and the base of the last 02 record.
struct SegmentState {
    Byte& banco_fichero;
    Long& base_segmento;
};

// The reader's status after a line.
namespace estado {
constexpr Byte kLineaTomada = 0;
constexpr Byte kChecksumMalo = 1;
constexpr Byte kFinFichero = 2;
}  // namespace estado

}  // namespace fc
