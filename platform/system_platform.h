// The machine's own file system, calendar, kernel objects, database engine
// and network, for a screen that needs the common procedures (or the network)
// and was not handed a module of them by its program.
#pragma once

namespace fc {

class FileSystem;
class Calendar;
class KernelObjects;
class DatabaseEngine;
class Network;

FileSystem& systemFileSystem();
const Calendar& systemCalendar();
KernelObjects& systemKernelObjects();
DatabaseEngine& systemDatabases();
Network& systemNetwork();

}  // namespace fc
