// The machine's own file system, calendar, kernel objects and database
// engine, for a screen that needs the common procedures and was not handed
// a module of them by its program.
#pragma once

namespace fc {

class FileSystem;
class Calendar;
class KernelObjects;
class DatabaseEngine;

FileSystem& systemFileSystem();
const Calendar& systemCalendar();
KernelObjects& systemKernelObjects();
DatabaseEngine& systemDatabases();

}  // namespace fc
