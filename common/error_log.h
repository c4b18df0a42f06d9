// The log of run-time errors: "Balanza_Logs\Errores.log" in the program's
// folder, three lines an entry. Once it has grown past 51,712 bytes the next
// entry empties it, and the reception traces "RX_*.*" of the other tools in
// that folder are deleted with it.
#pragma once

#include <string>

#include "platform/vb_types.h"

namespace fc {

struct CommonModule;

// Adds one entry. A failure is shown in a box titled "EscribirLog" and the
// entry is lost; it never reaches the caller.
void EscribirLog(CommonModule& c, const std::string& nombre, const std::string& descripcion,
                 Long numero);

// Deletes the files "RX_*.*" of the log folder, stopping at the first that
// will not go (the standard handler reports it).
void BorrarFicherosRX(CommonModule& c);

// Runs after every entry. It has nothing to do; it is where a panel of the
// log would be refreshed.
void PonerLogsPanel(CommonModule& c);

// The log's folder and file, as the system writes them ("\" separators),
// each name as it stands on disk when it is there in another case.
std::string carpetaLogs(CommonModule& c);
std::string ficheroLog(CommonModule& c);

// x rounded to the nearest integer, halves to the even one (50.5 gives 50).
long long roundHalfEven(double x);

}  // namespace fc
