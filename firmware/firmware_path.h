// Where a firmware file named by a screen is on this machine. A Windows path
// ("t:\Programas\fw.hex") resolves through its drive; any other text (a Linux
// path, as the headless program is given) is taken as it stands. A Windows
// path that resolves to nothing is also kept as it is, so that opening it
// fails as a missing file does.
#pragma once

#include <string>

namespace fc {

class Drives;

std::string rutaFichero(const Drives& drives, const std::string& fichero);

}  // namespace fc
