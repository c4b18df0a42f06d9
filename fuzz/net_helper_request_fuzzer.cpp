// Feeds arbitrary lines to the network helper's request reader, the only
// input of the one program that holds network capabilities. A request it
// accepts must be short and printable, and must read back the same from the
// line the loader would write for it; an answer line of any kind reads as
// some result.
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/linux/net_helper_protocol.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string line(reinterpret_cast<const char*>(data), size);
    std::string why;
    std::optional<fc::HelperRequest> request = fc::readHelperRequest(line, why);
    bool answered = false;
    fc::readHelperAnswer(line, answered);
    if (!request) {
        if (why.empty())
            __builtin_trap();
        return 0;
    }
    if (line.size() > fc::kHelperLineLimit)
        __builtin_trap();
    for (char c : line) {
        if (!std::isprint(static_cast<unsigned char>(c)))
            __builtin_trap();
    }
    std::string written = fc::helperRequestLine(*request);
    std::optional<fc::HelperRequest> again =
        fc::readHelperRequest(written.substr(0, written.size() - 1), why);
    if (!again || again->kind != request->kind || again->address != request->address ||
        again->interfaceIndex != request->interfaceIndex || again->timeoutMs != request->timeoutMs)
        __builtin_trap();
    return 0;
}
