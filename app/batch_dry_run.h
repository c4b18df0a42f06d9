// The dry runs of the headless program. `--inspect FILE` reads a file as the
// Ethernet load of a Serie_W scale does, on the main screen, with no device:
// PreprocesaFile for the message list, carga_ficheroL for the image, and the
// image's checksum. It prints "header: ", "messages: ", "checksum: " and one
// "msg" line per message. `--inspect-synthetic` prints the list of
// LlenadoMemoria the same way, without header and checksum.
#pragma once

#include <ostream>
#include <string>

namespace fc::batch {

// Exit status 0 when both reads succeeded, 1 otherwise.
int inspectFile(const std::string& path, std::ostream& out);
int inspectSynthetic(std::ostream& out);

}  // namespace fc::batch
