// A throwaway PostgreSQL cluster for the tests: initdb into a folder of its
// own, a server listening only on a Unix socket in that folder, stopped and
// removed when the process ends. PostgreSQL refuses to run as root, so under
// root the server runs as the "postgres" user.
#pragma once

#include <string>

namespace fc::test {

class PostgresServer {
  public:
    // The one server of this process, started on first use; nullptr when the
    // machine has no PostgreSQL, with the reason in `whyNot`.
    static PostgresServer* shared(std::string& whyNot);

    ~PostgresServer();
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    const std::string& socketFolder() const { return folder_; }
    int port() const { return port_; }

    // An ODBC connection string through psqlODBC to `database`.
    std::string connectionString(const std::string& database) const;
    // The same as the keys of an odbc.ini section.
    std::string iniKeys(const std::string& database) const;

  private:
    PostgresServer(std::string bin, std::string folder);
    bool start(std::string& whyNot);

    std::string bin_;
    std::string folder_;
    int port_ = 5432;
    bool running_ = false;
};

// The folder of initdb and pg_ctl, empty when PostgreSQL is not installed.
std::string postgresBinFolder();

}  // namespace fc::test
