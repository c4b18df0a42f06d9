// The wrappers around the line readers: open the chosen file, fill the image
// with 0xFF (erased flash), feed the reader line by line, and drive `Barra`
// by the length of the text read. At the end record the bar is filled and
// `Label2` shows "File is in memory".
#pragma once

#include "firmware/reader_panel.h"
#include "platform/vb_types.h"

namespace fc {

// The highest index each wrapper fills: the visor and display image, and the
// main screen's image for the Ethernet load.
constexpr Long kLlenadoCorto = 0x10000;
constexpr Long kLlenadoLargo = 0xC0000;

// The visor and display screens' reader: a free file number into
// `num_fichero`, `leelineafichero` on each line. False, with no message of
// its own, for a bad checksum, a file without an end record, or a line that
// doesn't start ":". A file that can't be opened is a RuntimeError.
bool carga_fichero(ReaderPanel& panel, Integer& num_fichero);

// The main screen's reader for the Ethernet load: file 1, `leelineaficheroL`
// on each line, bank and segment starting at 0. Any line passes to the
// reader (an empty one is an empty record). False for a bad checksum or a
// file without an end record; any failure (such as a missing file) is shown
// as its number and description and gives false.
bool carga_ficheroL(ReaderPanel& panel, SegmentState segmento);

}  // namespace fc
