// firmcast-macdb: the MAC database for the people who run the line.
//
//   firmcast-macdb [--dsn NAME] init        creates the two tables and the counter's row
//   firmcast-macdb [--dsn NAME] next [N]    gives N addresses (1 by default) exactly as
//                                           the loader does, one a line, twelve hex digits
//   firmcast-macdb [--dsn NAME] show [N]    the counter and the register's last N rows
//   --wait SECONDS                          how long `next` tries a failing database
//                                           again before it gives up (10)
//
// The data source is "MacConnection" unless --dsn names another (or gives a
// whole connection string). ODBCINI defaults to odbc.ini in the program's
// folder. Exit status: 0 done, 1 the counter is exhausted, 2 bad usage,
// 3 the database failed.
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "app/console_dialogs.h"
#include "common/common_module.h"
#include "mac/dame_mac_address.h"
#include "mac/mac_module.h"
#include "mac/mac_register.h"
#include "mac/mac_tables.h"
#include "platform/environment.h"
#include "platform/file_table.h"
#include "platform/linux/linux_machine.h"
#include "platform/linux/real_pump.h"
#include "platform/linux/termios_port.h"
#include "platform/linux/unix_odbc.h"
#include "platform/odbc_ini.h"
#include "platform/program_folder.h"
#include "platform/runtime_error.h"

namespace {

constexpr int kExitOk = 0;
constexpr int kExitExhausted = 1;
constexpr int kExitBadUsage = 2;

struct Options {
    std::string dsn = fc::kOrigenMac;
    std::string command;
    int count = 0;
    int waitSeconds = 10;
};

int usage() {
    std::cerr << "usage: firmcast-macdb [--dsn NAME] [--wait SECONDS] init | next [COUNT] | "
                 "show [ROWS]\n";
    return kExitBadUsage;
}

// A whole number from 0 to 86400, or -1.
int seconds(const std::string& text) {
    if (text.empty() || text.size() > 5 ||
        text.find_first_not_of("0123456789") != std::string::npos)
        return -1;
    int value = std::stoi(text);
    return value <= 86400 ? value : -1;
}

bool parse(int argc, char** argv, Options& options) {
    std::vector<std::string> words(argv + 1, argv + argc);
    size_t i = 0;
    bool dsnGiven = false, waitGiven = false;
    while (i + 1 < words.size() && words[i].rfind("--", 0) == 0) {
        if (words[i] == "--dsn" && !dsnGiven) {
            options.dsn = words[i + 1];
            dsnGiven = true;
        } else if (words[i] == "--wait" && !waitGiven) {
            options.waitSeconds = seconds(words[i + 1]);
            if (options.waitSeconds < 0)
                return false;
            waitGiven = true;
        } else {
            return false;
        }
        i += 2;
    }
    if (i >= words.size())
        return false;
    options.command = words[i++];
    options.count = options.command == "show" ? 10 : 1;
    if (i < words.size()) {
        try {
            options.count = std::stoi(words[i++]);
        } catch (const std::exception&) {
            return false;
        }
    }
    return i == words.size() && options.count > 0;
}

// The world of the common procedures, on the real clock and terminal.
struct World {
    fc::RealPump pump;
    fc::ConsoleDialogs dialogs{std::cerr};
    fc::TermiosPortOpener serialPorts;
    fc::FileTable files;
    fc::LinuxMachine machine;
    fc::Services services =
        machine.services(pump, dialogs, serialPorts, files, fc::programFolder());
    fc::CommonModule c{services};
    fc::UnixOdbcEnvironment odbc;
};

int init(World& w, const Options& o) {
    auto bd = w.odbc.openConnection(o.dsn);
    fc::CreaTablasMac(*bd);
    std::cout << "Tables ready in " << bd->engineName() << "\n";
    return kExitOk;
}

int next(World& w, const Options& o) {
    // The loader retries a failing database for as long as it takes; a
    // person at a terminal wants to hear at once that the data source is
    // not there at all.
    w.odbc.openConnection(o.dsn)->close();
    fc::MacModule m{w.c, w.odbc, o.dsn, nullptr, nullptr};
    m.esperaMaximaMs = o.waitSeconds * 1000L;
    for (int i = 0; i < o.count; ++i) {
        std::string mac = fc::DameMACAddress(m);
        if (mac.empty())
            return kExitExhausted;
        std::cout << mac << std::endl;
    }
    return kExitOk;
}

int show(World& w, const Options& o) {
    auto bd = w.odbc.openConnection(o.dsn);
    auto contador = fc::LeeContador(*bd);
    std::cout << "Contador: " << (contador ? std::to_string(*contador) : "(no row)") << "\n";
    for (const fc::FilaDetalleMac& fila : fc::UltimasDirecciones(*bd, o.count))
        std::cout << fila.Direccio_MAC << "  " << fila.fecha_actual << "  [" << fila.Numero_serie
                  << "]  [" << fila.Departamento << "]  " << fila.Notas << "\n";
    return kExitOk;
}

int run(const Options& o) {
    World w;
    if (o.command == "init")
        return init(w, o);
    if (o.command == "next")
        return next(w, o);
    return show(w, o);
}

// A data source that the driver manager does not know: where it looked, and
// what prepares one. The driver manager leaves an empty odbc.ini where there
// was none; that file goes again, so that a later set-up finds none.
int missingDataSource(const Options& o, const std::string& odbcIni, bool iniExisted) {
    std::error_code ec;
    if (!iniExisted && std::filesystem::exists(odbcIni, ec) &&
        std::filesystem::file_size(odbcIni, ec) == 0)
        std::filesystem::remove(odbcIni, ec);
    std::cerr << "firmcast-macdb: the data source \"" << o.dsn << "\" is not in " << odbcIni
              << (iniExisted ? "" : ", which does not exist")
              << ".\nscripts/prepare-home.sh BIN_DIR prepares the embedded one there; "
                 "scripts/setup-postgres-dsn.sh a shared PostgreSQL one.\n";
    return fc::kFinPorBaseMac;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!parse(argc, argv, options))
        return usage();
    if (options.command != "init" && options.command != "next" && options.command != "show")
        return usage();
    fc::defaultOdbcIni(fc::programFolder());
    const std::string odbcIni = fc::environmentVariable("ODBCINI");
    std::error_code ec;
    const bool iniExisted = std::filesystem::exists(odbcIni, ec);
    try {
        return run(options);
    } catch (const fc::ProgramEnd& end) {
        return end.exitStatus;
    } catch (const fc::RuntimeError& error) {
        if (error.description().find("IM002") != std::string::npos)
            return missingDataSource(options, odbcIni, iniExisted);
        std::cerr << "firmcast-macdb: " << error.number() << " - " << error.description() << "\n";
        return fc::kFinPorBaseMac;
    }
}
