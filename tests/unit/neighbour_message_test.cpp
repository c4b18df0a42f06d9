#include <gtest/gtest.h>

#include <linux/neighbour.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

#include <cstring>
#include <vector>

#include "platform/linux/neighbour_message.h"

namespace fc {
namespace {

using Bytes = std::vector<std::uint8_t>;

template <typename T>
T partAt(const Bytes& bytes, std::size_t at) {
    T part;
    std::memcpy(&part, bytes.data() + at, sizeof part);
    return part;
}

template <typename T>
void append(Bytes& bytes, const T& part) {
    const auto* first = reinterpret_cast<const std::uint8_t*>(&part);
    bytes.insert(bytes.end(), first, first + sizeof part);
}

// One neighbour message as the kernel dumps it, built up attribute by attribute.
class EntryMessage {
  public:
    EntryMessage(std::uint16_t state, int interfaceIndex, std::uint8_t family = AF_INET) {
        nlmsghdr header{};
        header.nlmsg_type = RTM_NEWNEIGH;
        append(bytes_, header);
        ndmsg body{};
        body.ndm_family = family;
        body.ndm_ifindex = interfaceIndex;
        body.ndm_state = state;
        append(bytes_, body);
    }

    EntryMessage& attribute(std::uint16_t type, const Bytes& payload) {
        rtattr attribute{};
        attribute.rta_len = static_cast<unsigned short>(RTA_LENGTH(payload.size()));
        attribute.rta_type = type;
        append(bytes_, attribute);
        bytes_.insert(bytes_.end(), payload.begin(), payload.end());
        bytes_.resize(NLMSG_ALIGN(bytes_.size()));
        return *this;
    }

    EntryMessage& type(std::uint16_t messageType) {
        std::memcpy(bytes_.data() + offsetof(nlmsghdr, nlmsg_type), &messageType,
                    sizeof messageType);
        return *this;
    }

    Bytes bytes() const {
        Bytes out = bytes_;
        auto length = static_cast<std::uint32_t>(out.size());
        std::memcpy(out.data(), &length, sizeof length);
        return out;
    }

  private:
    Bytes bytes_;
};

const Bytes kScaleIp{10, 77, 0, 11};
const Bytes kScaleMac{0x02, 0x46, 0x43, 0x00, 0x00, 0x0b};

bool read(const Bytes& message, NeighbourRow& row) {
    return readNeighbourMessage(message.data(), message.size(), row);
}

TEST(NeighbourMessage, DumpRequestAsksForEveryIpv4Entry) {
    Bytes request = neighbourDumpRequest(41);

    ASSERT_EQ(request.size(), NLMSG_LENGTH(sizeof(ndmsg)));
    auto header = partAt<nlmsghdr>(request, 0);
    EXPECT_EQ(header.nlmsg_len, request.size());
    EXPECT_EQ(header.nlmsg_type, RTM_GETNEIGH);
    EXPECT_EQ(header.nlmsg_flags, NLM_F_REQUEST | NLM_F_DUMP);
    EXPECT_EQ(header.nlmsg_seq, 41u);
    auto body = partAt<ndmsg>(request, NLMSG_LENGTH(0));
    EXPECT_EQ(body.ndm_family, AF_INET);
    EXPECT_EQ(body.ndm_ifindex, 0);
}

TEST(NeighbourMessage, DeleteRequestNamesTheInterfaceAndTheAddress) {
    NeighbourRow row;
    row.interfaceIndex = 7;
    row.ip = {10, 77, 0, 12};

    Bytes request = neighbourDeleteRequest(row, 42);

    const std::size_t attributeAt = NLMSG_LENGTH(NLMSG_ALIGN(sizeof(ndmsg)));
    ASSERT_EQ(request.size(), attributeAt + RTA_LENGTH(4));
    auto header = partAt<nlmsghdr>(request, 0);
    EXPECT_EQ(header.nlmsg_len, request.size());
    EXPECT_EQ(header.nlmsg_type, RTM_DELNEIGH);
    EXPECT_EQ(header.nlmsg_flags, NLM_F_REQUEST | NLM_F_ACK);
    EXPECT_EQ(header.nlmsg_seq, 42u);
    auto body = partAt<ndmsg>(request, NLMSG_LENGTH(0));
    EXPECT_EQ(body.ndm_family, AF_INET);
    EXPECT_EQ(body.ndm_ifindex, 7);
    auto attribute = partAt<rtattr>(request, attributeAt);
    EXPECT_EQ(attribute.rta_type, NDA_DST);
    EXPECT_EQ(attribute.rta_len, RTA_LENGTH(4));
    EXPECT_EQ(Bytes(request.begin() + attributeAt + RTA_LENGTH(0), request.end()),
              (Bytes{10, 77, 0, 12}));
}

TEST(NeighbourMessage, ReachableEntryIsADynamicRow) {
    Bytes message = EntryMessage(NUD_REACHABLE, 3)
                        .attribute(NDA_DST, kScaleIp)
                        .attribute(NDA_LLADDR, kScaleMac)
                        .bytes();
    NeighbourRow row;

    ASSERT_TRUE(read(message, row));

    EXPECT_EQ(row.interfaceIndex, 3u);
    EXPECT_EQ(row.physicalLength, 6u);
    EXPECT_EQ(row.physical, (std::array<std::uint8_t, 8>{2, 0x46, 0x43, 0, 0, 0x0b, 0, 0}));
    EXPECT_EQ(row.ip, (Ipv4{10, 77, 0, 11}));
    EXPECT_EQ(row.type, kNeighbourDynamic);
}

TEST(NeighbourMessage, StaleAndDelayedEntriesAreDynamicRows) {
    for (std::uint16_t state : {NUD_STALE, NUD_DELAY, NUD_PROBE}) {
        Bytes message = EntryMessage(state, 2)
                            .attribute(NDA_DST, kScaleIp)
                            .attribute(NDA_LLADDR, kScaleMac)
                            .bytes();
        NeighbourRow row;
        ASSERT_TRUE(read(message, row)) << state;
        EXPECT_EQ(row.type, kNeighbourDynamic) << state;
    }
}

TEST(NeighbourMessage, PermanentEntryIsAStaticRow) {
    Bytes message = EntryMessage(NUD_PERMANENT, 2)
                        .attribute(NDA_LLADDR, kScaleMac)
                        .attribute(NDA_DST, kScaleIp)
                        .bytes();
    NeighbourRow row;

    ASSERT_TRUE(read(message, row));

    EXPECT_EQ(row.type, kNeighbourStatic);
    EXPECT_EQ(row.ip, (Ipv4{10, 77, 0, 11}));
}

TEST(NeighbourMessage, OtherAttributesArePassedOver) {
    Bytes message = EntryMessage(NUD_REACHABLE, 2)
                        .attribute(NDA_CACHEINFO, Bytes(sizeof(nda_cacheinfo), 0x55))
                        .attribute(NDA_DST, kScaleIp)
                        .attribute(NDA_PROBES, Bytes{1, 0, 0, 0})
                        .attribute(NDA_LLADDR, kScaleMac)
                        .bytes();
    NeighbourRow row;

    ASSERT_TRUE(read(message, row));

    EXPECT_EQ(row.ip, (Ipv4{10, 77, 0, 11}));
    EXPECT_EQ(row.physical[5], 0x0b);
}

TEST(NeighbourMessage, EntryStillResolvingHasNoRow) {
    Bytes message = EntryMessage(NUD_INCOMPLETE, 2).attribute(NDA_DST, kScaleIp).bytes();
    NeighbourRow row;

    EXPECT_FALSE(read(message, row));
}

TEST(NeighbourMessage, NoarpEntryHasNoRow) {
    Bytes message = EntryMessage(NUD_NOARP, 2)
                        .attribute(NDA_DST, Bytes{224, 0, 0, 251})
                        .attribute(NDA_LLADDR, Bytes{0x01, 0x00, 0x5e, 0x00, 0x00, 0xfb})
                        .bytes();
    NeighbourRow row;

    EXPECT_FALSE(read(message, row));
}

TEST(NeighbourMessage, HardwareAddressOfAnotherLengthHasNoRow) {
    Bytes message = EntryMessage(NUD_REACHABLE, 2)
                        .attribute(NDA_DST, kScaleIp)
                        .attribute(NDA_LLADDR, Bytes(20, 0x11))
                        .bytes();
    NeighbourRow row;

    EXPECT_FALSE(read(message, row));
}

TEST(NeighbourMessage, Ipv6EntryHasNoRow) {
    Bytes message = EntryMessage(NUD_REACHABLE, 2, AF_INET6)
                        .attribute(NDA_DST, Bytes(16, 0xfe))
                        .attribute(NDA_LLADDR, kScaleMac)
                        .bytes();
    NeighbourRow row;

    EXPECT_FALSE(read(message, row));
}

TEST(NeighbourMessage, MessageOfAnotherKindHasNoRow) {
    Bytes message = EntryMessage(NUD_REACHABLE, 2)
                        .attribute(NDA_DST, kScaleIp)
                        .attribute(NDA_LLADDR, kScaleMac)
                        .type(RTM_DELNEIGH)
                        .bytes();
    NeighbourRow row;

    EXPECT_FALSE(read(message, row));
}

TEST(NeighbourMessage, MessageCutShortHasNoRow) {
    Bytes message = EntryMessage(NUD_REACHABLE, 2)
                        .attribute(NDA_DST, kScaleIp)
                        .attribute(NDA_LLADDR, kScaleMac)
                        .bytes();
    NeighbourRow row;

    EXPECT_FALSE(readNeighbourMessage(message.data(), message.size() - 4, row));
    EXPECT_FALSE(readNeighbourMessage(message.data(), NLMSG_LENGTH(0), row));
}

TEST(NeighbourMessage, AttributeLongerThanTheMessageEndsTheReading) {
    Bytes message = EntryMessage(NUD_REACHABLE, 2)
                        .attribute(NDA_DST, kScaleIp)
                        .attribute(NDA_LLADDR, kScaleMac)
                        .bytes();
    // The destination claims to run past the end of the message.
    const std::size_t destinationAt = NLMSG_LENGTH(NLMSG_ALIGN(sizeof(ndmsg)));
    auto tooLong = static_cast<unsigned short>(message.size());
    std::memcpy(message.data() + destinationAt, &tooLong, sizeof tooLong);
    NeighbourRow row;

    EXPECT_FALSE(read(message, row));
}

}  // namespace
}  // namespace fc
