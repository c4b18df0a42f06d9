// The line readers: one Intel HEX record of `linea_fichero` into the image.
//
// `leelineafichero` knows data and end records only and stores every other
// record as data at its 16-bit address. `leelineaficheroL` honours the
// extended records (02 sets the segment base, 0x66 the bank) and places the
// bytes in a range that starts at 0x40000: image index 0 is address 0x40000.
// Both answer the status byte (estado::) and close the file themselves on
// status 1 and 2.
#pragma once

#include "firmware/reader_panel.h"
#include "platform/vb_types.h"

namespace fc {

// The main screen reads its firmware always as this file number.
constexpr Integer kFicheroPrincipal = 1;

// The address where a non-zero bank starts taking data, and the address
// that image index 0 stands for in the extended reader.
constexpr Long kInicioBanco = 0x48000;
constexpr Long kBaseMemoriaL = 0x40000;

// A store outside the image is a fatal RuntimeError 9. A bad checksum shows
// "Corrupted file, bad checksum"; an end record is taken before the checksum
// is looked at.
Byte leelineafichero(ReaderPanel& panel, Integer num_fichero);

// Reads for file 1. Every failure inside is shown as the run time's number
// followed by its description in a stop box, and the reader carries on: a
// byte outside the image is dropped (one box each), a record too long to be
// checked counts as a bad checksum.
Byte leelineaficheroL(ReaderPanel& panel, SegmentState segmento);

}  // namespace fc
