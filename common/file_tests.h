// Tests and names of files.
#pragma once

#include <string>

#include "platform/vb_types.h"

namespace fc {

struct CommonModule;

// True (-1) when the file search finds anything for `ruta`: a file or a
// folder, the last part of the path possibly holding wild cards.
Flag ExisteFichero(CommonModule& c, const std::string& ruta);

// The program's folder, then `carpeta` (given with its slashes, such as
// "\Database\"), then `nombre`.
std::string NombrarBD(CommonModule& c, const std::string& carpeta, const std::string& nombre);

}  // namespace fc
