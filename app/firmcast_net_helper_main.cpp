// firmcast-net-helper: the one program of Firmcast that holds network
// capabilities, CAP_NET_ADMIN to delete rows of the address table and
// CAP_NET_RAW for an echo on a raw socket. The loader starts it with a pipe
// on its standard input and output and asks, a line at a time, for the two
// things it may do (see platform/linux/net_helper_protocol.h); anything else
// is refused with its reason. It links no toolkit and no database, keeps no
// environment and no other open file, and ends when the loader closes the
// pipe.
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string>

#include "platform/linux/icmp_echo.h"
#include "platform/linux/neighbour_table.h"
#include "platform/linux/net_helper_protocol.h"

namespace {

using namespace fc;

// Reads request lines from standard input, each at most kHelperLineLimit
// characters kept: the rest of a longer line is read and dropped, so that
// no request can make the helper hold more than that.
class LineReader {
  public:
    // False at the end of the input.
    bool next(std::string& line, bool& tooLong) {
        line.clear();
        tooLong = false;
        for (;;) {
            if (at_ == filled_ && !fill())
                return !line.empty() || tooLong;
            char c = buffer_[at_++];
            if (c == '\n')
                return true;
            if (line.size() < kHelperLineLimit)
                line.push_back(c);
            else
                tooLong = true;
        }
    }

  private:
    bool fill() {
        ssize_t got;
        do {
            got = ::read(STDIN_FILENO, buffer_, sizeof buffer_);
        } while (got < 0 && errno == EINTR);
        at_ = 0;
        filled_ = got > 0 ? static_cast<std::size_t>(got) : 0;
        return got > 0;
    }

    char buffer_[512];
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
};

bool writeLine(const std::string& text) {
    std::string line = text + "\n";
    std::size_t sent = 0;
    while (sent < line.size()) {
        ssize_t n = ::write(STDOUT_FILENO, line.data() + sent, line.size() - sent);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        sent += static_cast<std::size_t>(n);
    }
    return true;
}

std::string carryOut(const HelperRequest& request) {
    if (request.kind == HelperRequest::Kind::DeleteNeighbour) {
        NeighbourRow row;
        row.interfaceIndex = request.interfaceIndex;
        row.ip = request.address;
        return deleteAnswer(deleteNeighbourEntry(row));
    }
    bool answered = false;
    NetResult result = sendIcmpEcho(request.address, request.timeoutMs, answered);
    return echoAnswer(result, answered);
}

std::string answerTo(const std::string& line, bool tooLong) {
    std::string why;
    if (tooLong)
        return std::string(helper_answer::kRefused) + "the request is longer than " +
               std::to_string(kHelperLineLimit) + " characters";
    std::optional<HelperRequest> request = readHelperRequest(line, why);
    if (!request)
        return helper_answer::kRefused + why;
    return carryOut(*request);
}

}  // namespace

int main() {
    // Nothing of the caller's environment or open files reaches the work.
    clearenv();
    close_range(STDERR_FILENO + 1, ~0U, 0);
    LineReader requests;
    std::string line;
    bool tooLong = false;
    while (requests.next(line, tooLong)) {
        if (!writeLine(answerTo(line, tooLong)))
            return 1;
    }
    return 0;
}
