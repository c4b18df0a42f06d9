#include "platform/socket_errors.h"

namespace fc::sck {

std::string description(int number) {
    switch (number) {
        case kAddressInUse:
            return "Address in use";
        case kNetworkUnreachable:
            return "The network cannot be reached from this host at this time";
        case kConnectAborted:
            return "Connection is aborted due to timeout or other failure";
        case kConnectionReset:
            return "The connection is reset by remote side";
        case kTimedOut:
            return "Attempt to connect timed out without establishing a connection";
        case kConnectionRefused:
            return "Connection is forcefully rejected";
        case kHostNotFound:
            return "Authoritative answer: Host not found";
        case kBadState:
            return "Wrong protocol or connection state for the requested transaction or request";
        case kInvalidArg:
            return "Invalid argument";
        case kInvalidOp:
            return "Invalid operation at current state";
        default:
            return "Socket error " + std::to_string(number);
    }
}

}  // namespace fc::sck
