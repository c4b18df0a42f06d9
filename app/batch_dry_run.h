// The dry runs of the headless program. `--inspect FILE` reads a file as the
// Ethernet load of a Serie_W scale does, on the main screen, with no device:
// PreprocesaFile for the message list, carga_ficheroL for the image, and the
// image's checksum. It prints "header: ", "messages: ", "checksum: " and one
// "msg" line per message. `--inspect-synthetic` prints the list of
// LlenadoMemoria the same way, without header and checksum.
//
// A file the Ethernet load could not take (refused by PreprocesaFile, not
// read into the image, or with data outside the image) is told in one line on
// the error stream, with its cause; a read that meets data outside the image
// stops at the first such byte, whose box is the last printed.
#pragma once

#include <ostream>
#include <string>

namespace fc::batch {

// Exit status 0 when both reads succeeded, 1 otherwise.
int inspectFile(const std::string& path, std::ostream& out, std::ostream& err);
int inspectSynthetic(std::ostream& out);

}  // namespace fc::batch
