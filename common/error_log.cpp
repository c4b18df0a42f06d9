#include "common/error_log.h"

#include <cctype>
#include <cmath>
#include <limits>
#include <optional>

#include "common/common_module.h"
#include "common/file_tests.h"
#include "common/standard_handler.h"
#include "platform/calendar.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/file_table.h"
#include "platform/native_path.h"
#include "platform/runtime_error.h"

namespace fc {

namespace {

constexpr const char* kLogFolder = "Balanza_Logs";
constexpr const char* kIndent = "                 ";  // 17 blanks
// The log is appended to while its length in KB, rounded, is at most this.
constexpr long long kMaxKilobytes = 50;

// Adds one to a 32-bit counter, overflowing as the run time does.
void addOne(Long& counter) {
    if (counter == std::numeric_limits<Long>::max())
        throw RuntimeError(err::kOverflow);
    ++counter;
}

std::string upper(std::string s) {
    for (char& ch : s) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
    return s;
}

// The name of the entry of `folder` that is `name` in any case, as it is
// written on disk; `name` itself when there is none. Names differing only in
// case are one name to the system, and Linux must be told the one on disk.
std::optional<std::string> foundName(CommonModule& c, const std::string& folder,
                                     const std::string& name) {
    const std::string wanted = upper(name);
    for (const FoundEntry& entry : c.services.fileSystem.findFiles(folder + "\\*.*")) {
        if (upper(entry.name) == wanted)
            return entry.name;
    }
    return std::nullopt;
}

std::string nameOnDisk(CommonModule& c, const std::string& folder, const std::string& name) {
    return foundName(c, folder, name).value_or(name);
}

// Makes the folder unless an entry of its name, in any case, is there. A
// file of that name passes for the folder; the write then fails.
void ensureLogFolder(CommonModule& c) {
    const std::string& home = c.services.programFolder;
    if (!foundName(c, home, kLogFolder))
        c.services.fileSystem.makeFolder(home + "\\" + kLogFolder);
}

bool smallEnoughToAppend(CommonModule& c, const std::string& path) {
    double kilobytes = static_cast<double>(c.services.fileSystem.fileLength(path)) / 1024.0;
    return roundHalfEven(kilobytes) <= kMaxKilobytes;
}

FileTable::Mode chooseMode(CommonModule& c, const std::string& path) {
    if (!ExisteFichero(c, path))
        return FileTable::Mode::Output;
    if (smallEnoughToAppend(c, path))
        return FileTable::Mode::Append;
    BorrarFicherosRX(c);
    c.contador_log_rotacion = 0;
    // A failed deletion has just been logged by the handler of
    // BorrarFicherosRX, and that entry emptied the log already: this one
    // goes after it instead of wiping it.
    if (ExisteFichero(c, path) && smallEnoughToAppend(c, path))
        return FileTable::Mode::Append;
    return FileTable::Mode::Output;
}

std::string twoDigits(int n) {
    return (n < 10 ? "0" : "") + std::to_string(n);
}

void writeEntry(CommonModule& c, int file, const std::string& nombre,
                const std::string& descripcion, Long numero) {
    FileTable& files = c.services.files;
    LocalDateTime now = c.services.calendar.now();
    std::string time = twoDigits(now.hour) + ":" + twoDigits(now.minute);
    files.print(file, c.services.calendar.shortDate(now) + "  " + time + "  " + nombre);
    std::string number = numero != 0 ? std::to_string(numero) + " - " : "";
    files.print(file, kIndent + number + descripcion);
    files.print(file, kIndent + std::string(53, '*'));
}

}  // namespace

long long roundHalfEven(double x) {
    double whole = std::floor(x);
    double rest = x - whole;
    if (rest > 0.5)
        return static_cast<long long>(whole) + 1;
    if (rest < 0.5)
        return static_cast<long long>(whole);
    return static_cast<long long>(std::fmod(whole, 2.0) == 0.0 ? whole : whole + 1);
}

std::string carpetaLogs(CommonModule& c) {
    const std::string& home = c.services.programFolder;
    return home + "\\" + nameOnDisk(c, home, kLogFolder);
}

std::string ficheroLog(CommonModule& c) {
    const std::string folder = carpetaLogs(c);
    return folder + "\\" + nameOnDisk(c, folder, "Errores.log");
}

void EscribirLog(CommonModule& c, const std::string& nombre, const std::string& descripcion,
                 Long numero) {
    FileTable& files = c.services.files;
    int file = 0;
    try {
        addOne(c.contador_log);
        addOne(c.contador_log_rotacion);
        ensureLogFolder(c);
        file = files.freeFile();
        std::string path = ficheroLog(c);
        FileTable::Mode mode = chooseMode(c, path);
        files.open(file, nativePath(path), mode);
        writeEntry(c, file, nombre, descripcion, numero);
        files.close(file);
        PonerLogsPanel(c);
    } catch (const RuntimeError& error) {
        // The number is given back, so that one failed entry does not leave
        // the log open and fail every later one.
        if (file != 0 && files.isOpen(file))
            files.close(file);
        c.services.dialogs.msgBox(std::to_string(error.number()) + " - " + error.description(),
                                  mb::kExclamation, "EscribirLog");
    }
}

void BorrarFicherosRX(CommonModule& c) {
    if (c.borrandoTrazas)
        return;
    struct Guard {
        bool& flag;
        explicit Guard(bool& f) : flag(f) { flag = true; }
        ~Guard() { flag = false; }
    } guard(c.borrandoTrazas);
    withStandardHandler(c, "BorrarFicherosRX", [&] {
        const std::string folder = carpetaLogs(c);
        for (const FoundEntry& entry : c.services.fileSystem.findFiles(folder + "\\RX_*.*")) {
            // The listing of files leaves folders out.
            if (!entry.isFolder)
                c.services.fileSystem.deleteFile(folder + "\\" + entry.name);
        }
    });
}

void PonerLogsPanel(CommonModule& c) {
    withStandardHandler(c, "PonerLogsPanel", [] {});
}

}  // namespace fc
