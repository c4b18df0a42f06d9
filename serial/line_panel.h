// What the line protocols use of the main screen: its serial panel, its file
// table, the status controls of the load step, and the run state that the
// protocols read and write under the screen's own names. The screen builds
// one for the load it is running.
#pragma once

#include <functional>
#include <string>

#include "platform/vb_types.h"
#include "serial/serial_panel.h"

namespace fc {

class FileTable;
class Label;
class ProgressBar;
class WindowTimer;

// How a line loop ended, and so where the driver goes on.
enum class LoopOutcome {
    Success,    // the last record was accepted: the success steps follow
    EndOfPass,  // a send failed and has told why: straight to the end of the pass
    Abandon,    // the file ended badly or a body line failed: close up, then end the pass
};

struct LinePanel {
    SerialPanel& serial;
    FileTable& files;
    int fileNumber;  // the firmware file, open for input
    Label& Texto;
    ProgressBar& Barra;
    Label& Banco_actual;
    Label& Label2;
    WindowTimer& Tiempo1;
    std::string& linea_fichero;
    std::string& inicio_linea;
    Long& numero_linea;
    Flag& pide_mac;
    Flag& linea_ok;
    const Flag& es_serie_w;
    const Flag& es_tr8200;
    const Flag& es_tr6100;
    std::function<void()> paradibu;
    std::function<void()> acaba;
    std::function<void()> acaba2;
    std::function<Flag()> lanza_linea;
};

}  // namespace fc
