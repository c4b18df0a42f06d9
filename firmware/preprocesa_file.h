// PreprocesaFile: a firmware file in Intel HEX form into the list of
// messages the Ethernet loader sends to a scale, `mensajes`: the erase
// message, a bank message for every 02 record with the bank's data in
// messages of 1024 bytes numbered from 1, the end of the program, and the
// end of the load. It checks the file's first line first, and shows the
// model header that follows the marker ":02000002EFFE0F" in `lblModelo`.
// Record checksums are not looked at here.
#pragma once

#include <string>

#include "firmware/preprocess_panel.h"

namespace fc {

// The marker of the model header's record, compared as the whole line.
constexpr const char* kMarcaCabecera = ":02000002EFFE0F";

// True when the file was read to its end. False when it was refused ("The
// file is empty", "This is not a Flash program file", after which acaba2
// has run) or failed ("Error en Preprocesado del fichero" in a stop box,
// with the list left as far as it got). `fichero` is a Windows path or a
// path of this machine.
bool PreprocesaFile(PreprocessPanel& panel, const std::string& fichero);

}  // namespace fc
