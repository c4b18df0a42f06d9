// What a screen of the system is handed to reach the world: its pump, its
// dialogs, its serial ports, its files and drives, where the program lives,
// and the machine's file system, calendar, kernel objects, databases and
// network.
// Each program (GUI, headless, tests) builds one and passes it down; nothing
// here is global.
#pragma once

#include <string>

namespace fc {

class Pump;
class Dialogs;
class SerialPortOpener;
class FileTable;
class Drives;
class FileSystem;
class KernelObjects;
class Calendar;
class DatabaseEngine;
class Network;

struct Services {
    Pump& pump;
    Dialogs& dialogs;
    SerialPortOpener& serialPorts;
    FileTable& files;
    // The program's folder (config.ini, Balanza_Logs, Gseries ...).
    std::string programFolder;
    // What the drive letters of the system's paths stand for.
    const Drives& drives;
    FileSystem& fileSystem;
    KernelObjects& kernel;
    const Calendar& calendar;
    DatabaseEngine& databases;
    // The machine's network: sockets, the address table, the echo.
    Network& network;
};

}  // namespace fc
