#include "firmware/text_slices.h"

#include <cstdint>
#include <cstdio>

#include "platform/runtime_error.h"

namespace fc {

namespace {
void requireNotNegative(Long value) {
    if (value < 0)
        throw RuntimeError(err::kInvalidProcedureCall);
}
}  // namespace

std::string Mid(const std::string& text, Long start, Long length) {
    requireNotNegative(length);
    if (start < 1)
        throw RuntimeError(err::kInvalidProcedureCall);
    const auto from = static_cast<std::size_t>(start - 1);
    if (from >= text.size())
        return {};
    return text.substr(from, static_cast<std::size_t>(length));
}

std::string Mid(const std::string& text, Long start) {
    if (start < 1)
        throw RuntimeError(err::kInvalidProcedureCall);
    const auto from = static_cast<std::size_t>(start - 1);
    return from >= text.size() ? std::string() : text.substr(from);
}

std::string Left(const std::string& text, Long length) {
    requireNotNegative(length);
    return text.substr(0, static_cast<std::size_t>(length));
}

std::string String(Long count, char c) {
    requireNotNegative(count);
    return std::string(static_cast<std::size_t>(count), c);
}

std::string Hex(Long value) {
    char digits[9];
    std::snprintf(digits, sizeof digits, "%X",
                  static_cast<unsigned>(static_cast<std::uint32_t>(value)));
    return digits;
}

}  // namespace fc
