// The error numbers and descriptions of the socket controls, as the loader's
// handlers see them in an Error event or a run-time error.
#pragma once

#include <string>

namespace fc::sck {

constexpr int kAddressInUse = 10048;
constexpr int kNetworkUnreachable = 10051;
constexpr int kConnectAborted = 10053;
constexpr int kConnectionReset = 10054;
constexpr int kTimedOut = 10060;
constexpr int kConnectionRefused = 10061;
constexpr int kHostNotFound = 11001;
constexpr int kBadState = 40006;
constexpr int kInvalidOp = 40020;
constexpr int kInvalidArg = 40018;

// The control's description of one of the numbers above; a plain text for
// any other.
std::string description(int number);

}  // namespace fc::sck
