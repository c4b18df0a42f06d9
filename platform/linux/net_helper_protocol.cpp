#include "platform/linux/net_helper_protocol.h"

#include <cctype>
#include <vector>

#include "platform/ipv4_text.h"

namespace fc {

namespace {

std::string dotted(const Ipv4& address) {
    return std::to_string(address[0]) + "." + std::to_string(address[1]) + "." +
           std::to_string(address[2]) + "." + std::to_string(address[3]);
}

// The words of a line split at single blanks; a doubled, leading or trailing
// blank gives an empty word, which no request has.
std::vector<std::string> wordsOf(const std::string& line) {
    std::vector<std::string> words(1);
    for (char c : line) {
        if (c == ' ')
            words.emplace_back();
        else
            words.back().push_back(c);
    }
    return words;
}

// A decimal number of 1 to 10 digits within [low, high]; no sign, no blank.
std::optional<long long> boundedNumber(const std::string& text, long long low, long long high) {
    if (text.empty() || text.size() > 10)
        return std::nullopt;
    long long value = 0;
    for (char c : text) {
        if (!std::isdigit(static_cast<unsigned char>(c)))
            return std::nullopt;
        value = value * 10 + (c - '0');
    }
    if (value < low || value > high)
        return std::nullopt;
    return value;
}

std::optional<HelperRequest> refuse(std::string& why, const std::string& reason) {
    why = reason;
    return std::nullopt;
}

}  // namespace

std::string helperRequestLine(const HelperRequest& request) {
    if (request.kind == HelperRequest::Kind::DeleteNeighbour)
        return "delete " + std::to_string(request.interfaceIndex) + " " + dotted(request.address) +
               "\n";
    return "echo " + dotted(request.address) + " " + std::to_string(request.timeoutMs) + "\n";
}

std::optional<HelperRequest> readHelperRequest(const std::string& line, std::string& why) {
    if (line.size() > kHelperLineLimit)
        return refuse(
            why, "the request is longer than " + std::to_string(kHelperLineLimit) + " characters");
    for (char c : line) {
        if (!std::isprint(static_cast<unsigned char>(c)))
            return refuse(why, "the request holds a character that is not printable");
    }
    const std::vector<std::string> words = wordsOf(line);
    HelperRequest request;
    if (words[0] == "delete") {
        if (words.size() != 3)
            return refuse(why, "delete takes an interface index and an IPv4 address");
        auto index = boundedNumber(words[1], 1, 0x7FFFFFFF);
        if (!index)
            return refuse(why, "the interface index is not a number from 1 to 2147483647");
        request.kind = HelperRequest::Kind::DeleteNeighbour;
        request.interfaceIndex = static_cast<std::uint32_t>(*index);
    } else if (words[0] == "echo") {
        if (words.size() != 3)
            return refuse(why, "echo takes an IPv4 address and a wait in milliseconds");
        auto wait = boundedNumber(words[2], 1, kHelperEchoLimitMs);
        if (!wait)
            return refuse(why, "the wait is not a number of milliseconds from 1 to " +
                                   std::to_string(kHelperEchoLimitMs));
        request.kind = HelperRequest::Kind::Echo;
        request.timeoutMs = static_cast<int>(*wait);
    } else {
        return refuse(why, "only delete and echo are done here");
    }
    const std::string& addressText =
        request.kind == HelperRequest::Kind::Echo ? words[1] : words[2];
    std::optional<Ipv4> address = parseDottedIpv4(addressText);
    if (!address)
        return refuse(why, "\"" + addressText + "\" is not a dotted IPv4 address");
    request.address = *address;
    return request;
}

std::string deleteAnswer(NetResult result) {
    switch (result) {
        case NetResult::Done:
            return helper_answer::kDone;
        case NetResult::NotPermitted:
            return helper_answer::kNotPermitted;
        case NetResult::Failed:
            break;
    }
    return helper_answer::kFailed;
}

std::string echoAnswer(NetResult result, bool answered) {
    if (result == NetResult::Done)
        return answered ? helper_answer::kAnswered : helper_answer::kSilent;
    return deleteAnswer(result);
}

NetResult readHelperAnswer(const std::string& line, bool& answered) {
    answered = line == helper_answer::kAnswered;
    if (answered || line == helper_answer::kDone || line == helper_answer::kSilent)
        return NetResult::Done;
    if (line == helper_answer::kNotPermitted)
        return NetResult::NotPermitted;
    return NetResult::Failed;
}

}  // namespace fc
