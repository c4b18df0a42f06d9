// ODBC through the unixODBC driver manager.
#pragma once

#include <sql.h>

#include <memory>
#include <string>

#include "platform/odbc.h"

namespace fc {

class UnixOdbcEnvironment : public OdbcEnvironment {
  public:
    UnixOdbcEnvironment();
    ~UnixOdbcEnvironment() override;
    UnixOdbcEnvironment(const UnixOdbcEnvironment&) = delete;
    UnixOdbcEnvironment& operator=(const UnixOdbcEnvironment&) = delete;

    std::unique_ptr<OdbcConnection> openConnection(const std::string& source) override;

  private:
    SQLHENV env_ = SQL_NULL_HENV;
};

}  // namespace fc
