// The boot-ROM loader of the Serie_G scales (G410, G420), whose MSC1210
// microcontroller carries a small text monitor in ROM: a pulse on DTR wakes
// it, a carriage return brings its banner "MSC1210 Ver:", register writes set
// the flash timing, flash is erased by pages or as a whole, and the image
// goes as 16-byte Intel HEX records, one for each "." of the ROM, then an end
// record that the ROM answers with "T". The outcome is told in a message box
// alone; every pause of the dialogue is a plain sleep.
#pragma once

#include <string>

#include "firmware/reader_panel.h"
#include "platform/vb_types.h"
#include "serial/line_panel.h"

namespace fc {

namespace msc1210 {
constexpr const char* kBanner = "MSC1210 Ver:";
constexpr const char* kConfigRecord = ":02807E00E3BE5F";
constexpr const char* kEndRecord = ":00000001FF";
constexpr const char* kLineEnd = "\r\n";
constexpr int kHandshakeTries = 21;
constexpr Long kImageTop = 0x10000;  // the image this loader fills, 0 to here
constexpr Long kPageSize = 128;
}  // namespace msc1210

// What the boot-ROM load uses of the main screen: the line protocols' panel
// (line, files, Texto, Barra, Tiempo1, the current file line, paradibu,
// acaba2), the file reader's panel (the image and its position), and the
// load's own variables under the screen's names.
struct Msc1210Panel {
    LinePanel& line;
    ReaderPanel& reader;
    std::string& linea_envio;
    std::string& respuesta_msc;
    Byte& intento_msc;
    const Byte& rango_banco;
    const Long& limite_rango;
    const Flag& hacer_f;
    const Integer& nivel;
};

// The whole load, from reading the file to the ROM's last answer.
void carga_F(Msc1210Panel& panel);

// The register writes and the erase, then "E" and "L": True when the ROM is
// erased and takes records.
Flag prog_registros(Msc1210Panel& panel);

// One monitor command and the test of its echo, as the table of the two
// procedures says; a right answer is followed by a short wait.
Flag envia_comando(Msc1210Panel& panel, const std::string& comando, Flag larga);
Flag envia_comando2(Msc1210Panel& panel, const std::string& comando, Flag larga);

// Sends `texto` (stale input thrown away first) and waits up to `limiteMs`
// for `esperados` characters; False on a time-out. Whatever came is in
// `respuesta_msc` either way.
Flag haz_envio(Msc1210Panel& panel, const std::string& texto, int limiteMs, int esperados);

}  // namespace fc
