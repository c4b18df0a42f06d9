// Run-time errors, numbered as the classic BASIC run time numbers them, and
// the one way the program ends.
#pragma once

#include <stdexcept>
#include <string>

namespace fc {

// Error numbers the system raises or traps by number.
namespace err {
constexpr int kInvalidProcedureCall = 5;
constexpr int kOverflow = 6;
constexpr int kSubscriptOutOfRange = 9;
constexpr int kTypeMismatch = 13;
constexpr int kBadFileNameOrNumber = 52;
constexpr int kFileNotFound = 53;
constexpr int kBadFileMode = 54;
constexpr int kFileAlreadyOpen = 55;
constexpr int kInputPastEndOfFile = 62;
constexpr int kBadRecordNumber = 63;
constexpr int kDeviceUnavailable = 68;
constexpr int kPermissionDenied = 70;
constexpr int kPathFileAccessError = 75;
constexpr int kPathNotFound = 76;
constexpr int kObjectNotSet = 91;
constexpr int kInvalidPropertyValue = 380;
constexpr int kPortAlreadyOpen = 8005;
constexpr int kInvalidPortNumber = 8002;
constexpr int kPortNotOpen = 8018;
constexpr int kCommStateFailed = 8015;
constexpr int kOdbcFailure = 40002;
}  // namespace err

// The standard description of an error number ("Overflow", "File not found").
std::string standardDescription(int number);

class RuntimeError : public std::runtime_error {
  public:
    RuntimeError(int number, std::string description, std::string source = "Firmcast");
    // An error with its standard description.
    explicit RuntimeError(int number);

    int number() const { return number_; }
    const std::string& description() const { return description_; }
    const std::string& source() const { return source_; }

  private:
    int number_;
    std::string description_;
    std::string source_;
};

// Thrown to end the program, after the clean-ups of whoever decided to end it;
// caught only in main (or by a test harness). Deliberately not derived from
// std::exception so that no generic handler swallows it.
struct ProgramEnd {
    int exitStatus = 0;
};

}  // namespace fc
