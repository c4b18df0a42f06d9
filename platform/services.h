// What a screen of the system is handed to reach the world: its pump, its
// dialogs, its serial ports, its files and where the program lives. Each
// program (GUI, headless, tests) builds one and passes it down; nothing here
// is global.
#pragma once

#include <string>

namespace fc {

class Pump;
class Dialogs;
class SerialPortOpener;
class FileTable;

struct Services {
    Pump& pump;
    Dialogs& dialogs;
    SerialPortOpener& serialPorts;
    FileTable& files;
    // The program's folder (config.ini, Balanza_Logs, Gseries ...).
    std::string programFolder;
};

}  // namespace fc
