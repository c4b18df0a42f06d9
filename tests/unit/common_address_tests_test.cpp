#include <gtest/gtest.h>

#include "common/address_tests.h"
#include "platform/controls.h"
#include "platform/screen.h"
#include "tests/unit/common_fixture.h"

namespace fc {
namespace {

using commontest::CommonRig;

bool ip(const std::string& text) {
    Screen screen("test");
    TextBox caja(screen, "txtDirTCP");
    caja.setText(text);
    return EsDireccionIP(caja);
}

TEST(EsDireccionIP, AnOrdinaryAddressIsTrue) {
    EXPECT_TRUE(ip("192.168.1.10"));
}
TEST(EsDireccionIP, ThreeFieldsAreFalse) {
    EXPECT_FALSE(ip("192.168.1"));
}
TEST(EsDireccionIP, AFirstFieldOfFourCharactersIsFalse) {
    EXPECT_FALSE(ip("1234.1.1.1"));
}
TEST(EsDireccionIP, TheFourthFieldHasNoLengthLimit) {
    EXPECT_TRUE(ip("1.1.1.1234"));
}
TEST(EsDireccionIP, DigitsAndRangesAreNotTested) {
    EXPECT_TRUE(ip("999.abc.1.22222"));
}
TEST(EsDireccionIP, AnEmptyFieldBetweenDotsPasses) {
    EXPECT_TRUE(ip("1..3.4"));
}
TEST(EsDireccionIP, ABlankFourthFieldIsFalse) {
    EXPECT_FALSE(ip("1.2.3."));
    EXPECT_FALSE(ip("1.2.3.  "));
}
TEST(EsDireccionIP, AFourthDotIsFalse) {
    EXPECT_FALSE(ip("1.2.3.4.5"));
}
TEST(EsDireccionIP, ABlankTextIsFalse) {
    EXPECT_FALSE(ip(""));
    EXPECT_FALSE(ip("   "));
}

TEST(DireccionRepetida, TheSameTextAtAnotherIndexIsRepeated) {
    CommonRig rig;
    std::vector<std::string> lista{"10.0.0.1", "10.0.0.2", "10.0.0.2"};
    EXPECT_TRUE(DireccionRepetida(rig.c, lista, "10.0.0.2", "1"));
    EXPECT_TRUE(DireccionRepetida(rig.c, lista, "10.0.0.1", "2"));
}

TEST(DireccionRepetida, TheEntryAtItsOwnIndexIsNotRepeated) {
    CommonRig rig;
    std::vector<std::string> lista{"10.0.0.1", "10.0.0.2"};
    EXPECT_FALSE(DireccionRepetida(rig.c, lista, "10.0.0.1", "0"));
    EXPECT_FALSE(DireccionRepetida(rig.c, lista, "10.0.0.9", "0"));
}

TEST(DireccionRepetida, TheComparisonIsOfExactText) {
    CommonRig rig;
    std::vector<std::string> lista{"10.0.0.1", ""};
    EXPECT_FALSE(DireccionRepetida(rig.c, lista, "10.0.0.01", "1"));
    EXPECT_FALSE(DireccionRepetida(rig.c, lista, "10.0.0.1 ", "1"));
}

TEST(DireccionRepetida, AnIndexWithBlanksAroundIsStillANumber) {
    CommonRig rig;
    std::vector<std::string> lista{"10.0.0.1"};
    EXPECT_FALSE(DireccionRepetida(rig.c, lista, "10.0.0.1", " 0 "));
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(DireccionRepetida, AnIndexThatIsNotANumberGoesToTheStandardHandler) {
    CommonRig rig;
    std::vector<std::string> lista{"10.0.0.1"};
    EXPECT_FALSE(DireccionRepetida(rig.c, lista, "10.0.0.1", "one"));
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "13 - Type mismatch");
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "DireccionRepetida");
}

}  // namespace
}  // namespace fc
