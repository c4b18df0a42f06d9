#include "platform/linux/neighbour_message.h"

#include <linux/neighbour.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

#include <cstring>

namespace fc {

namespace {

constexpr std::size_t kMacLength = 6;

// The request's parts are copied in one by one: a vector's bytes carry no
// promise of the alignment the kernel's structures want.
template <typename T>
void append(std::vector<std::uint8_t>& bytes, const T& part) {
    const auto* first = reinterpret_cast<const std::uint8_t*>(&part);
    bytes.insert(bytes.end(), first, first + sizeof part);
}

void appendHeader(std::vector<std::uint8_t>& bytes, std::uint16_t type, std::uint16_t flags,
                  std::uint32_t sequence) {
    nlmsghdr header{};
    header.nlmsg_type = type;
    header.nlmsg_flags = flags;
    header.nlmsg_seq = sequence;
    append(bytes, header);
}

// The header's length is known once the whole message is there.
void setLength(std::vector<std::uint8_t>& bytes) {
    auto length = static_cast<std::uint32_t>(bytes.size());
    std::memcpy(bytes.data() + offsetof(nlmsghdr, nlmsg_len), &length, sizeof length);
}

ndmsg ipv4Entry(std::uint32_t interfaceIndex) {
    ndmsg body{};
    body.ndm_family = AF_INET;
    body.ndm_ifindex = static_cast<int>(interfaceIndex);
    return body;
}

// Copies the attributes this table needs out of the message's attribute list.
struct EntryAttributes {
    bool hasDestination = false;
    bool hasMac = false;
    Ipv4 destination{};
    std::uint8_t mac[kMacLength]{};
};

EntryAttributes readAttributes(const std::uint8_t* at, std::size_t left) {
    EntryAttributes found;
    while (left >= sizeof(rtattr)) {
        rtattr attribute;
        std::memcpy(&attribute, at, sizeof attribute);
        if (attribute.rta_len < sizeof(rtattr) || attribute.rta_len > left)
            break;
        const std::uint8_t* payload = at + RTA_LENGTH(0);
        std::size_t payloadLength = attribute.rta_len - RTA_LENGTH(0);
        if (attribute.rta_type == NDA_DST && payloadLength == found.destination.size()) {
            std::memcpy(found.destination.data(), payload, payloadLength);
            found.hasDestination = true;
        } else if (attribute.rta_type == NDA_LLADDR && payloadLength == kMacLength) {
            std::memcpy(found.mac, payload, kMacLength);
            found.hasMac = true;
        }
        std::size_t step = RTA_ALIGN(attribute.rta_len);
        if (step >= left)
            break;
        at += step;
        left -= step;
    }
    return found;
}

}  // namespace

std::vector<std::uint8_t> neighbourDumpRequest(std::uint32_t sequence) {
    std::vector<std::uint8_t> bytes;
    appendHeader(bytes, RTM_GETNEIGH, NLM_F_REQUEST | NLM_F_DUMP, sequence);
    append(bytes, ipv4Entry(0));
    setLength(bytes);
    return bytes;
}

std::vector<std::uint8_t> neighbourDeleteRequest(const NeighbourRow& row, std::uint32_t sequence) {
    std::vector<std::uint8_t> bytes;
    appendHeader(bytes, RTM_DELNEIGH, NLM_F_REQUEST | NLM_F_ACK, sequence);
    append(bytes, ipv4Entry(row.interfaceIndex));
    rtattr destination{};
    destination.rta_len = static_cast<unsigned short>(RTA_LENGTH(row.ip.size()));
    destination.rta_type = NDA_DST;
    append(bytes, destination);
    append(bytes, row.ip);
    setLength(bytes);
    return bytes;
}

bool readNeighbourMessage(const std::uint8_t* message, std::size_t length, NeighbourRow& row) {
    nlmsghdr header;
    ndmsg body;
    constexpr std::size_t kBodyAt = NLMSG_LENGTH(0);
    constexpr std::size_t kAttributesAt = NLMSG_LENGTH(NLMSG_ALIGN(sizeof body));
    if (length < kAttributesAt)
        return false;
    std::memcpy(&header, message, sizeof header);
    if (header.nlmsg_type != RTM_NEWNEIGH || header.nlmsg_len < kAttributesAt ||
        header.nlmsg_len > length)
        return false;
    std::memcpy(&body, message + kBodyAt, sizeof body);
    if (body.ndm_family != AF_INET || (body.ndm_state & NUD_NOARP) != 0)
        return false;
    EntryAttributes found =
        readAttributes(message + kAttributesAt, header.nlmsg_len - kAttributesAt);
    if (!found.hasDestination || !found.hasMac)
        return false;
    row = NeighbourRow{};
    row.interfaceIndex = static_cast<std::uint32_t>(body.ndm_ifindex);
    row.physicalLength = kMacLength;
    std::memcpy(row.physical.data(), found.mac, kMacLength);
    row.ip = found.destination;
    row.type = (body.ndm_state & NUD_PERMANENT) != 0 ? kNeighbourStatic : kNeighbourDynamic;
    return true;
}

}  // namespace fc
