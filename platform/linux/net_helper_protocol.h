// What the loader asks of the network helper, the one small program that
// holds CAP_NET_ADMIN and CAP_NET_RAW, and what it answers: one line of text
// each way over a pipe.
//
//   delete <interface index> <a.b.c.d>   remove that row of the address table
//   echo <a.b.c.d> <milliseconds>        send one echo request and wait for it
//
// answered by one of "done", "answered", "silent", "not-permitted", "failed",
// or "refused: <why>" for a request the helper will not carry out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/network.h"

namespace fc {

// A request line is never longer than this, its newline excluded.
constexpr std::size_t kHelperLineLimit = 64;
// The longest echo wait the helper takes on.
constexpr int kHelperEchoLimitMs = 60'000;

struct HelperRequest {
    enum class Kind { DeleteNeighbour, Echo };
    Kind kind = Kind::Echo;
    std::uint32_t interfaceIndex = 0;  // DeleteNeighbour
    Ipv4 address{};
    int timeoutMs = 0;  // Echo
};

// The line (with its newline) that asks for `request`.
std::string helperRequestLine(const HelperRequest& request);

// Reads a request line (without its newline). On a line that is not a
// request the helper carries out, empty, with `why` saying what is wrong.
std::optional<HelperRequest> readHelperRequest(const std::string& line, std::string& why);

// The helper's answers.
namespace helper_answer {
constexpr const char* kDone = "done";
constexpr const char* kAnswered = "answered";
constexpr const char* kSilent = "silent";
constexpr const char* kNotPermitted = "not-permitted";
constexpr const char* kFailed = "failed";
constexpr const char* kRefused = "refused: ";
}  // namespace helper_answer

// The answer line (without its newline) to a delete's result, and to an
// echo's, where Done is "answered" or "silent".
std::string deleteAnswer(NetResult result);
std::string echoAnswer(NetResult result, bool answered);

// Reads an answer line: the operation's result and, for an echo, whether it
// was answered. A refusal, or a line that is no answer, reads as Failed.
NetResult readHelperAnswer(const std::string& line, bool& answered);

}  // namespace fc
