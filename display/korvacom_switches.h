// The driver's switch file, "Korctrl.txt": one switch a line, selected by its
// first two characters. Before each load every line the screen has a value
// for is rewritten; the others stay as they were.
#pragma once

#include <string>

#include "platform/vb_types.h"

namespace fc {

struct ValoresKorvacom {
    std::string velocidad;    // the text of cmbvelocidades
    std::string puerto;       // "COM" and the port number
    std::string bits;         // the text of nbits
    Integer paridad = 0;      // the index of cboParidad
    int modo = 0;             // 1 Ethernet, 0 serial
    std::string dirLogica;    // the text of cmbDirLogica
    std::string direccionIp;  // the text of txtDirTCP
    Long puertoTx = 0;        // TxtPort
    Long puertoRx = 0;        // TxtPortRX
};

// The line written for `linea`; `vistoD` and `vistoE` are raised when the
// line is a "-d" or an "-E" switch.
std::string reescribeSwitch(const std::string& linea, const ValoresKorvacom& v, bool& vistoD,
                            bool& vistoE);

// The Ethernet form of "-d": logical address, "#", IP address, ":", port.
std::string switchDireccion(const ValoresKorvacom& v);

// A box's text as a number, as the conversion of the run time reads it:
// blanks around it allowed, anything else not a number is a type mismatch (13).
Long numeroDeTexto(const std::string& texto);

}  // namespace fc
