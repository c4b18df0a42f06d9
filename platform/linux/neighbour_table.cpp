#include "platform/linux/neighbour_table.h"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

#include "platform/linux/neighbour_message.h"

namespace fc {

namespace {

// A dump that the kernel marks as interrupted (the table changed under it) is
// asked for again, a few times at most.
constexpr int kDumpAttempts = 5;

std::uint32_t nextSequence() {
    static std::atomic<std::uint32_t> sequence{1};
    return sequence++;
}

class RouteSocket {
  public:
    RouteSocket() : fd_(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE)) {}
    ~RouteSocket() {
        if (fd_ >= 0)
            ::close(fd_);
    }
    RouteSocket(const RouteSocket&) = delete;
    RouteSocket& operator=(const RouteSocket&) = delete;

    bool open() const { return fd_ >= 0; }

    bool send(const std::vector<std::uint8_t>& request) const {
        sockaddr_nl kernel{};
        kernel.nl_family = AF_NETLINK;
        ssize_t sent = sendto(fd_, request.data(), request.size(), 0,
                              reinterpret_cast<const sockaddr*>(&kernel), sizeof kernel);
        return sent == static_cast<ssize_t>(request.size());
    }

    // One datagram of answers; 0 or less on failure.
    ssize_t receive(std::vector<std::uint8_t>& buffer) const {
        ssize_t got;
        do {
            got = recv(fd_, buffer.data(), buffer.size(), 0);
        } while (got < 0 && errno == EINTR);
        return got;
    }

  private:
    int fd_;
};

// Netlink's receive buffer: a dump comes in datagrams of at most a page or
// two of messages; this holds any of them whole.
std::vector<std::uint8_t> receiveBuffer() {
    return std::vector<std::uint8_t>(64 * 1024);
}

int errorOf(const nlmsghdr* header) {
    if (header->nlmsg_len < NLMSG_LENGTH(sizeof(nlmsgerr)))
        return EPROTO;
    int error;
    std::memcpy(&error, NLMSG_DATA(header), sizeof error);
    return -error;
}

enum class DumpOutcome { Complete, Interrupted, Failed };

// Reads the answers of one dump until its end.
DumpOutcome readDump(const RouteSocket& route, std::uint32_t sequence,
                     std::vector<NeighbourRow>& rows) {
    std::vector<std::uint8_t> buffer = receiveBuffer();
    bool interrupted = false;
    for (;;) {
        ssize_t got = route.receive(buffer);
        if (got <= 0)
            return DumpOutcome::Failed;
        auto left = static_cast<int>(got);
        for (auto* header = reinterpret_cast<nlmsghdr*>(buffer.data()); NLMSG_OK(header, left);
             header = NLMSG_NEXT(header, left)) {
            if (header->nlmsg_seq != sequence)
                continue;
            if ((header->nlmsg_flags & NLM_F_DUMP_INTR) != 0)
                interrupted = true;
            if (header->nlmsg_type == NLMSG_DONE)
                return interrupted ? DumpOutcome::Interrupted : DumpOutcome::Complete;
            if (header->nlmsg_type == NLMSG_ERROR)
                return DumpOutcome::Failed;
            NeighbourRow row;
            if (readNeighbourMessage(reinterpret_cast<const std::uint8_t*>(header),
                                     header->nlmsg_len, row))
                rows.push_back(row);
        }
    }
}

// The kernel's acknowledgement of one request: 0, or its error number.
int readAcknowledgement(const RouteSocket& route, std::uint32_t sequence) {
    std::vector<std::uint8_t> buffer = receiveBuffer();
    for (;;) {
        ssize_t got = route.receive(buffer);
        if (got < 0)
            return errno;
        if (got == 0)
            return EPROTO;
        auto left = static_cast<int>(got);
        for (auto* header = reinterpret_cast<nlmsghdr*>(buffer.data()); NLMSG_OK(header, left);
             header = NLMSG_NEXT(header, left)) {
            if (header->nlmsg_seq == sequence && header->nlmsg_type == NLMSG_ERROR)
                return errorOf(header);
        }
    }
}

}  // namespace

NetResult readNeighbourTable(std::vector<NeighbourRow>& rows) {
    RouteSocket route;
    if (!route.open())
        return NetResult::Failed;
    for (int attempt = 0; attempt < kDumpAttempts; ++attempt) {
        std::uint32_t sequence = nextSequence();
        if (!route.send(neighbourDumpRequest(sequence)))
            return NetResult::Failed;
        std::vector<NeighbourRow> read;
        DumpOutcome outcome = readDump(route, sequence, read);
        if (outcome == DumpOutcome::Failed)
            return NetResult::Failed;
        if (outcome == DumpOutcome::Complete || attempt + 1 == kDumpAttempts) {
            rows = std::move(read);
            return NetResult::Done;
        }
    }
    return NetResult::Failed;
}

NetResult deleteNeighbourEntry(const NeighbourRow& row) {
    RouteSocket route;
    if (!route.open())
        return NetResult::Failed;
    std::uint32_t sequence = nextSequence();
    if (!route.send(neighbourDeleteRequest(row, sequence)))
        return errno == EPERM ? NetResult::NotPermitted : NetResult::Failed;
    int error = readAcknowledgement(route, sequence);
    if (error == 0)
        return NetResult::Done;
    return error == EPERM ? NetResult::NotPermitted : NetResult::Failed;
}

}  // namespace fc
