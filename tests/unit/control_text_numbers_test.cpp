// Numbers read from text as the run time's conversions read them.
#include <gtest/gtest.h>

#include "control/text_numbers.h"
#include "platform/runtime_error.h"

namespace fc {
namespace {

int errorOf(const std::string& text) {
    try {
        enteroDeTexto(text);
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

TEST(TextNumbers, BlanksAndLineEndsAroundANumberAreAllowed) {
    EXPECT_EQ(enteroDeTexto(" 12 "), 12);
    EXPECT_EQ(enteroDeTexto("5\r"), 5);
    EXPECT_EQ(largoDeTexto("\t3000\r\n"), 3000);
}

TEST(TextNumbers, HalvesRoundToEven) {
    EXPECT_EQ(enteroDeTexto("2.5"), 2);
    EXPECT_EQ(enteroDeTexto("3.5"), 4);
    EXPECT_EQ(enteroDeTexto("-1.5"), -2);
}

TEST(TextNumbers, ATextThatIsNotANumberIsATypeMismatch) {
    EXPECT_EQ(errorOf(""), err::kTypeMismatch);
    EXPECT_EQ(errorOf("\r"), err::kTypeMismatch);
    EXPECT_EQ(errorOf("2a"), err::kTypeMismatch);
    EXPECT_EQ(errorOf("0x10"), err::kTypeMismatch);
    EXPECT_EQ(errorOf("inf"), err::kTypeMismatch);
}

TEST(TextNumbers, AValueOutsideAnIntegerIsAnOverflow) {
    EXPECT_EQ(enteroDeTexto("32767"), 32767);
    EXPECT_EQ(errorOf("32768"), err::kOverflow);
    EXPECT_EQ(errorOf("-32769"), err::kOverflow);
}

TEST(TextNumbers, IsNumericTakesPlainDecimalsOnly) {
    EXPECT_TRUE(esNumerico("3000"));
    EXPECT_TRUE(esNumerico(" -1.5e2 "));
    EXPECT_FALSE(esNumerico(""));
    EXPECT_FALSE(esNumerico("30x0"));
    EXPECT_FALSE(esNumerico("nan"));
}

}  // namespace
}  // namespace fc
