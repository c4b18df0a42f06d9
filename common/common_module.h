// The module of common procedures: the services it reaches the world
// through, and the few globals it keeps. The main screen holds the program's
// one module and hands it to every screen and procedure that calls a common
// procedure; a program without that screen builds its own.
#pragma once

#include "platform/services.h"
#include "platform/vb_types.h"

namespace fc {

struct CommonModule {
    // Dialogs, files by number, the program's folder, the machine's file
    // system, kernel objects, calendar and databases.
    Services& services;

    // Entries written since the start, and since the log was last emptied.
    // Nothing reads them; they are kept as counts.
    Long contador_log = 0;
    Long contador_log_rotacion = 0;

    // Base of the string table's numbers; the display screen sets it to 3000.
    Integer base_recursos = 0;

    // True while BorrarFicherosRX runs. Its own error handler writes to the
    // log, and that entry, finding the log still too long, would call it
    // again without end; the inner call leaves the traces alone instead.
    bool borrandoTrazas = false;
};

}  // namespace fc
