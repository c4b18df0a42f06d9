#include <gtest/gtest.h>

#include <functional>

#include "firmware/text_slices.h"
#include "platform/runtime_error.h"

namespace fc {
namespace {

int errorOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return -1;
}

TEST(TextSlices, MidCountsFromOneAndStopsAtTheEnd) {
    EXPECT_EQ(Mid(":10ABCD00", 2, 2), "10");
    EXPECT_EQ(Mid(":10ABCD00", 8, 5), "00");
    EXPECT_EQ(Mid(":10", 10, 4), "");
    EXPECT_EQ(Mid(":10ABCD00", 4), "ABCD00");
    EXPECT_EQ(Mid(":1", 5), "");
}

TEST(TextSlices, ANegativeLengthOrAStartBelowOneIsAnInvalidCall) {
    EXPECT_EQ(errorOf([] { Mid("abc", 1, -1); }), err::kInvalidProcedureCall);
    EXPECT_EQ(errorOf([] { Mid("abc", 0, 1); }), err::kInvalidProcedureCall);
    EXPECT_EQ(errorOf([] { Mid("abc", 0); }), err::kInvalidProcedureCall);
    EXPECT_EQ(errorOf([] { Left("abc", -2); }), err::kInvalidProcedureCall);
    EXPECT_EQ(errorOf([] { String(-1, 'F'); }), err::kInvalidProcedureCall);
}

TEST(TextSlices, LeftAndStringAndHex) {
    EXPECT_EQ(Left("abc", 2), "ab");
    EXPECT_EQ(Left("abc", 9), "abc");
    EXPECT_EQ(String(3, 'F'), "FFF");
    EXPECT_EQ(Hex(0), "0");
    EXPECT_EQ(Hex(0x4800), "4800");
    EXPECT_EQ(Hex(0x12345), "12345");
    EXPECT_EQ(Hex(-1), "FFFFFFFF");
}

}  // namespace
}  // namespace fc
