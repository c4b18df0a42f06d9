#include "postgres_server.h"

#include <pwd.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

namespace fc::test {
namespace {

// Runs a command line through the shell, as the postgres user when root.
int runAsServerUser(const std::string& command) {
    std::string line = getuid() == 0 ? "runuser -u postgres -- " + command : command;
    return std::system((line + " >/dev/null 2>&1").c_str());
}

std::string shellQuoted(const std::string& text) {
    return "'" + text + "'";
}

}  // namespace

std::string postgresBinFolder() {
    std::error_code ec;
    std::string best;
    for (const auto& entry : std::filesystem::directory_iterator("/usr/lib/postgresql", ec)) {
        std::filesystem::path bin = entry.path() / "bin";
        if (std::filesystem::exists(bin / "initdb") && bin.string() > best)
            best = bin.string();
    }
    return best;
}

PostgresServer* PostgresServer::shared(std::string& whyNot) {
    static std::unique_ptr<PostgresServer> server;
    static std::string reason;
    static bool tried = false;
    if (!tried) {
        tried = true;
        std::string bin = postgresBinFolder();
        if (bin.empty()) {
            reason = "PostgreSQL is not installed (no /usr/lib/postgresql/*/bin/initdb)";
        } else if (getuid() == 0 && getpwnam("postgres") == nullptr) {
            reason = "running as root and there is no postgres user to run the server";
        } else {
            char folder[] = "/tmp/fc-pg-XXXXXX";
            if (mkdtemp(folder) == nullptr) {
                reason = "no temporary folder for the cluster";
            } else {
                server.reset(new PostgresServer(bin, folder));
                if (!server->start(reason))
                    server.reset();
            }
        }
    }
    whyNot = reason;
    return server.get();
}

PostgresServer::PostgresServer(std::string bin, std::string folder)
    : bin_(std::move(bin)), folder_(std::move(folder)) {}

bool PostgresServer::start(std::string& whyNot) {
    if (getuid() == 0) {
        passwd* user = getpwnam("postgres");
        if (chown(folder_.c_str(), user->pw_uid, user->pw_gid) != 0) {
            whyNot = "cannot give the cluster's folder to the postgres user";
            return false;
        }
    }
    std::string data = folder_ + "/data";
    if (runAsServerUser(bin_ + "/initdb -D " + shellQuoted(data) + " -A trust -U postgres -N") !=
        0) {
        whyNot = "initdb failed in " + folder_;
        return false;
    }
    // Only a Unix socket in the cluster's own folder: nothing else on the
    // machine can meet it, whatever the port.
    std::string options = "-c listen_addresses='' -k " + folder_ + " -p " + std::to_string(port_) +
                          " -c fsync=off -c max_connections=60";
    running_ = runAsServerUser(bin_ + "/pg_ctl -D " + shellQuoted(data) + " -o \"" + options +
                               "\" -l " + shellQuoted(folder_ + "/server.log") + " -w start") == 0;
    if (!running_)
        whyNot = "the server did not start; see " + folder_ + "/server.log";
    return running_;
}

PostgresServer::~PostgresServer() {
    if (running_)
        runAsServerUser(bin_ + "/pg_ctl -D " + shellQuoted(folder_ + "/data") +
                        " -m immediate -w stop");
    std::error_code ec;
    std::filesystem::remove_all(folder_, ec);
}

std::string PostgresServer::iniKeys(const std::string& database) const {
    return "Driver=PostgreSQL ANSI\nServername=" + folder_ + "\nPort=" + std::to_string(port_) +
           "\nDatabase=" + database + "\nUsername=postgres\n";
}

std::string PostgresServer::connectionString(const std::string& database) const {
    return "DRIVER={PostgreSQL ANSI};Servername=" + folder_ + ";Port=" + std::to_string(port_) +
           ";Database=" + database + ";Username=postgres;";
}

}  // namespace fc::test
