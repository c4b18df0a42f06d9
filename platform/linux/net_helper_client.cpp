#include "platform/linux/net_helper_client.h"

#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <utility>

#include "platform/linux/net_helper_protocol.h"

namespace fc {

namespace {

using Clock = std::chrono::steady_clock;

// How long a delete may take the helper; an echo gets its own wait on top.
constexpr int kPatienceMs = 2000;

bool sendAll(int fd, const std::string& text) {
    std::size_t sent = 0;
    while (sent < text.size()) {
        ssize_t n = ::send(fd, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        sent += static_cast<std::size_t>(n);
    }
    return true;
}

}  // namespace

NetHelperClient::NetHelperClient(std::string program) : program_(std::move(program)) {}

NetHelperClient::~NetHelperClient() {
    stop(false);
}

NetResult NetHelperClient::deleteNeighbour(const NeighbourRow& row) {
    HelperRequest request;
    request.kind = HelperRequest::Kind::DeleteNeighbour;
    request.interfaceIndex = row.interfaceIndex;
    request.address = row.ip;
    std::string answer;
    if (!ask(helperRequestLine(request), kPatienceMs, answer))
        return unavailable_ ? NetResult::NotPermitted : NetResult::Failed;
    bool answered = false;
    return readHelperAnswer(answer, answered);
}

NetResult NetHelperClient::echo(const Ipv4& address, int timeoutMs, bool& answered) {
    answered = false;
    HelperRequest request;
    request.kind = HelperRequest::Kind::Echo;
    request.address = address;
    request.timeoutMs = timeoutMs;
    std::string answer;
    if (!ask(helperRequestLine(request), timeoutMs + kPatienceMs, answer))
        return unavailable_ ? NetResult::NotPermitted : NetResult::Failed;
    return readHelperAnswer(answer, answered);
}

bool NetHelperClient::ask(const std::string& request, int patienceMs, std::string& answer) {
    if (pid_ <= 0 && !start())
        return false;
    if (sendAll(fd_, request) && readLine(patienceMs, answer))
        return true;
    // A helper that died at once never started its work: it is not there
    // for this program (missing, not executable, refused by the system).
    bool neverAnswered = !answeredOnce_;
    stop(true);
    if (neverAnswered)
        unavailable_ = true;
    return false;
}

bool NetHelperClient::start() {
    if (unavailable_)
        return false;
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return false;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    char* argv[] = {program_.data(), nullptr};
    char* noEnvironment[] = {nullptr};
    pid_t pid = -1;
    int error = posix_spawn(&pid, program_.c_str(), &actions, nullptr, argv, noEnvironment);
    posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    if (error != 0) {
        ::close(ends[0]);
        unavailable_ = true;
        return false;
    }
    pid_ = pid;
    fd_ = ends[0];
    pending_.clear();
    answeredOnce_ = false;
    return true;
}

void NetHelperClient::stop(bool kill) {
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
    if (pid_ > 0) {
        if (kill)
            ::kill(pid_, SIGKILL);
        while (::waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    pid_ = -1;
}

bool NetHelperClient::readLine(int patienceMs, std::string& line) {
    const Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(patienceMs);
    for (;;) {
        std::size_t newline = pending_.find('\n');
        if (newline != std::string::npos) {
            line = pending_.substr(0, newline);
            pending_.erase(0, newline + 1);
            answeredOnce_ = true;
            return true;
        }
        auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0)
            return false;
        pollfd wait{fd_, POLLIN, 0};
        int ready = ::poll(&wait, 1, static_cast<int>(left.count()));
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0)
            return false;
        char buffer[256];
        ssize_t got = ::recv(fd_, buffer, sizeof buffer, 0);
        if (got <= 0)
            return false;
        pending_.append(buffer, static_cast<std::size_t>(got));
    }
}

std::string netHelperBesideProgram() {
    std::error_code ec;
    std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", ec);
    return (self.parent_path() / "firmcast-net-helper").string();
}

}  // namespace fc
