// The system builds its paths the Windows way, with "\" between the parts
// ("<program folder>\Balanza_Logs\Errores.log"). On Linux the separator is
// "/", and a backslash is never meant as part of a name here.
#pragma once

#include <string>

namespace fc {

// The path with every "\" turned into "/". Drive letters are not resolved here.
std::string nativePath(std::string path);

}  // namespace fc
