#include <gtest/gtest.h>

#include "common/string_table.h"
#include "tests/unit/common_fixture.h"

namespace fc {
namespace {

using commontest::CommonRig;

TEST(TextoRecurso, FiftyThreeToFiftySevenAfterTheBase3000AreTheParities) {
    CommonRig rig;
    rig.c.base_recursos = 3000;
    EXPECT_EQ(TextoRecurso(rig.c, 53), "Even");
    EXPECT_EQ(TextoRecurso(rig.c, 54), "Odd");
    EXPECT_EQ(TextoRecurso(rig.c, 55), "None");
    EXPECT_EQ(TextoRecurso(rig.c, 56), "Mark");
    EXPECT_EQ(TextoRecurso(rig.c, 57), "Space");
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(TextoRecurso, AMissingEntryGoesToTheStandardHandlerAndGivesAnEmptyText) {
    CommonRig rig;
    rig.c.base_recursos = 3000;
    EXPECT_EQ(TextoRecurso(rig.c, 58), "");
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "326 - Resource with identifier '3058' not found");
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "TextoRecurso");
}

TEST(TextoRecurso, BeforeTheBaseIsSetTheNumbersAreNotThere) {
    CommonRig rig;
    EXPECT_EQ(TextoRecurso(rig.c, 53), "");
    EXPECT_EQ(rig.dialogs.boxes().size(), 1u);
}

TEST(TextoRecurso, ANumberPastAnIntegerOverflows) {
    CommonRig rig;
    rig.c.base_recursos = 32000;
    EXPECT_EQ(TextoRecurso(rig.c, 1000), "");
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "6 - Overflow");
}

}  // namespace
}  // namespace fc
