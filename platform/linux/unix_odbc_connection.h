// One connection of the unixODBC driver manager.
#pragma once

#include <sql.h>

#include <string>
#include <vector>

#include "platform/odbc.h"

namespace fc {

class UnixOdbcConnection : public OdbcConnection {
  public:
    // Takes a connected handle.
    explicit UnixOdbcConnection(SQLHDBC dbc) : dbc_(dbc) {}
    ~UnixOdbcConnection() override;
    UnixOdbcConnection(const UnixOdbcConnection&) = delete;
    UnixOdbcConnection& operator=(const UnixOdbcConnection&) = delete;

    void begin() override;
    void commit() override;
    void rollback() override;
    long execute(const std::string& sql, const std::vector<OdbcParam>& params) override;
    std::vector<OdbcRow> query(const std::string& sql,
                               const std::vector<OdbcParam>& params) override;
    std::string quote(const std::string& name) override;
    std::string engineName() override;
    void close() override;

  private:
    SQLHDBC handle();
    void endTransaction(SQLSMALLINT how);
    std::string infoText(SQLUSMALLINT item);

    SQLHDBC dbc_ = SQL_NULL_HDBC;
};

}  // namespace fc
