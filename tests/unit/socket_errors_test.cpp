#include <gtest/gtest.h>

#include "platform/socket_errors.h"

namespace fc {
namespace {

TEST(SocketErrors, EachKnownNumberHasTheControlsText) {
    EXPECT_EQ(sck::description(10048), "Address in use");
    EXPECT_EQ(sck::description(10051), "The network cannot be reached from this host at this time");
    EXPECT_EQ(sck::description(10053), "Connection is aborted due to timeout or other failure");
    EXPECT_EQ(sck::description(10054), "The connection is reset by remote side");
    EXPECT_EQ(sck::description(10060),
              "Attempt to connect timed out without establishing a connection");
    EXPECT_EQ(sck::description(10061), "Connection is forcefully rejected");
    EXPECT_EQ(sck::description(11001), "Authoritative answer: Host not found");
    EXPECT_EQ(sck::description(40006),
              "Wrong protocol or connection state for the requested transaction or request");
    EXPECT_EQ(sck::description(40018), "Invalid argument");
    EXPECT_EQ(sck::description(40020), "Invalid operation at current state");
}

TEST(SocketErrors, TheNamedConstantsAreTheControlsNumbers) {
    EXPECT_EQ(sck::kAddressInUse, 10048);
    EXPECT_EQ(sck::kNetworkUnreachable, 10051);
    EXPECT_EQ(sck::kConnectAborted, 10053);
    EXPECT_EQ(sck::kConnectionReset, 10054);
    EXPECT_EQ(sck::kTimedOut, 10060);
    EXPECT_EQ(sck::kConnectionRefused, 10061);
    EXPECT_EQ(sck::kHostNotFound, 11001);
    EXPECT_EQ(sck::kBadState, 40006);
    EXPECT_EQ(sck::kInvalidArg, 40018);
    EXPECT_EQ(sck::kInvalidOp, 40020);
}

TEST(SocketErrors, AnyOtherNumberIsNamedByItsValue) {
    EXPECT_EQ(sck::description(10049), "Socket error 10049");
    EXPECT_EQ(sck::description(0), "Socket error 0");
    EXPECT_EQ(sck::description(-1), "Socket error -1");
    EXPECT_EQ(sck::description(40002), "Socket error 40002");
}

}  // namespace
}  // namespace fc
