#include <gtest/gtest.h>

#include <linux/capability.h>

#include "bed_fixture.h"
#include "platform/linux/icmp_echo.h"
#include "without_capability.h"

namespace fc::netbed {
namespace {

using IcmpEcho = BedTest;

const Ipv4 kUnusedAddress{10, 77, 0, 200};
// A documentation address: the loader's namespace has no route to it.
const Ipv4 kUnroutedAddress{192, 0, 2, 1};

// How an echo in a child went, as one exit status.
constexpr int kAnswered = 10;
constexpr int kNotAnswered = 20;

int echoOutcome(const Ipv4& address, int timeoutMs = kAnsweredTimeoutMs) {
    bool answered = false;
    NetResult result = sendIcmpEcho(address, timeoutMs, answered);
    if (result != NetResult::Done)
        return static_cast<int>(result);
    return answered ? kAnswered : kNotAnswered;
}

TEST_F(IcmpEcho, ScaleAnswersThroughARawSocket) {
    PingGroupRange closed(PingGroupRange::kClosed);
    bool answered = false;

    EXPECT_EQ(sendIcmpEcho(bed.scales[0].ip, kAnsweredTimeoutMs, answered), NetResult::Done);

    EXPECT_TRUE(answered);
}

TEST_F(IcmpEcho, EveryScaleAnswers) {
    for (const BedScale& scale : bed.scales) EXPECT_TRUE(echo(scale.ip)) << text(scale.ip);
}

TEST_F(IcmpEcho, UnusedAddressIsNotAnsweredWithinTheTimeOut) {
    bool answered = true;

    EXPECT_EQ(sendIcmpEcho(kUnusedAddress, 500, answered), NetResult::Done);

    EXPECT_FALSE(answered);
}

TEST_F(IcmpEcho, UnreachableAddressIsDoneWithoutAnAnswer) {
    bool answered = true;

    EXPECT_EQ(sendIcmpEcho(kUnroutedAddress, 500, answered), NetResult::Done);

    EXPECT_FALSE(answered);
}

TEST_F(IcmpEcho, WithoutNetRawAndAClosedGroupRangeIsNotPermitted) {
    PingGroupRange closed(PingGroupRange::kClosed);

    int outcome = runWithoutCapability(CAP_NET_RAW, [&] { return echoOutcome(bed.scales[0].ip); });

    EXPECT_EQ(outcome, static_cast<int>(NetResult::NotPermitted));
}

TEST_F(IcmpEcho, WithoutNetRawAnOpenGroupRangeIsEnough) {
    PingGroupRange open(PingGroupRange::kOpen);

    int outcome = runWithoutCapability(CAP_NET_RAW, [&] { return echoOutcome(bed.scales[0].ip); });

    EXPECT_EQ(outcome, kAnswered);
}

TEST_F(IcmpEcho, WithoutNetRawAnUnusedAddressIsNotAnswered) {
    PingGroupRange open(PingGroupRange::kOpen);

    int outcome =
        runWithoutCapability(CAP_NET_RAW, [&] { return echoOutcome(kUnusedAddress, 500); });

    EXPECT_EQ(outcome, kNotAnswered);
}

}  // namespace
}  // namespace fc::netbed
