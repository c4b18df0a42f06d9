// Where the program lives: config.ini, the log folder and the site's tools
// sit there. FIRMCAST_HOME when set, else the folder of the executable.
#pragma once

#include <string>

namespace fc {

std::string programFolder();

// The command line after the program's name, as one text: the words joined
// by single blanks.
std::string commandLineText(int argc, char** argv);

}  // namespace fc
