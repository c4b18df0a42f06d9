// Intel HEX data records: checking a file line's checksum, building records
// from the memory image, and splitting a record at a 128-byte boundary.
//
// These work on the screen's own variables (the current file line, the
// outgoing record, the image and its position), so they take them by
// reference and leave them changed just as the screen expects.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/dialogs.h"
#include "platform/vb_types.h"

namespace fc {

class Control;

// Upper bounds of the memory image (the highest valid index): the main
// screen's image, and that of the visor and display screens.
constexpr Long kLimiteMemoria = 0xC0000;
constexpr Long kLimiteMemoriaMV510 = 0x10000;

// The screen variables a record builder reads and moves on.
struct RecordImage {
    std::vector<Byte>& memoria;
    Long& pos_memoria;
    std::string& linea_envio;
};

// True when the checksum field of the record in `linea_fichero` is right.
// Fields missing from a short line read as 0, so an empty line passes. The
// data position is held in a byte: a record of more than 123 data bytes is an
// overflow (RuntimeError 6), outside what the system accepts.
bool calcheck(const std::string& linea_fichero);

// Builds into linea_envio the 16-byte data record ":10..." of the image at
// pos_memoria, ended by CR LF, moves pos_memoria past its data and shows the
// record in Texto. An address of 0x10000 or more (or negative) does not fit
// the record's high address byte: RuntimeError 6. An index past
// kLimiteMemoria: RuntimeError 9.
void prepara_linea(RecordImage imagen, Control& Texto);

// As prepara_linea, for a 128-byte record ":80..." without CR LF, on an image
// bounded by kLimiteMemoriaMV510.
void MV510prepara_linea(RecordImage imagen, Control& Texto);

// Sends the record in linea_fichero through EnviaLineaNumerada, which sends
// whatever linea_fichero holds and answers non-zero when the line was taken.
// A record that crosses a 128-byte boundary of its target address is sent as
// two records split there, each with its own checksum: linea_fichero is
// rewritten with each half before it goes. Answers the first failure, or the
// answer to the last line sent.
Integer envia_linea_partida(std::string& linea_fichero, Dialogs& dialogs,
                            const std::function<Integer()>& EnviaLineaNumerada);

}  // namespace fc
