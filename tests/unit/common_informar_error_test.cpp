#include <gtest/gtest.h>

#include "common/informar_error.h"
#include "common/standard_handler.h"
#include "platform/dialogs.h"
#include "tests/unit/common_fixture.h"

namespace fc {
namespace {

using commontest::CommonRig;
using commontest::entry;
using commontest::readAll;

TEST(InformarError, AnOrdinaryNumberShowsNumberDashDescriptionAndLogsUnderTheName) {
    CommonRig rig;
    RuntimeError e(err::kFileNotFound);
    InformarError(rig.c, "CargaInfoIni", e);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "53 - File not found");
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "CargaInfoIni");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, mb::kExclamation);
    EXPECT_EQ(readAll(rig.logFile()),
              entry("21/03/2005  10:42  CargaInfoIni", "53 - File not found"));
}

TEST(InformarError, TheNumberAndDescriptionPassedAreTheOnesShownAndLogged) {
    CommonRig rig;
    InformarError(rig.c, "X", 75, "Told by the caller", RuntimeError(err::kOverflow));
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "75 - Told by the caller");
    EXPECT_EQ(readAll(rig.logFile()), entry("21/03/2005  10:42  X", "75 - Told by the caller"));
}

TEST(InformarError, With32001ShowsNoNumberAndLogsTheErrorObjectsSourceWithNumberZero) {
    CommonRig rig;
    RuntimeError raised(32001, "The scale did not answer", "modEthernet");
    InformarError(rig.c, "EnviaMensajes", 32001, "The scale did not answer", raised);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "The scale did not answer");
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "EnviaMensajes");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, mb::kExclamation);
    EXPECT_EQ(readAll(rig.logFile()),
              entry("21/03/2005  10:42  modEthernet", "The scale did not answer"));
}

TEST(InformarError, With32000TheBoxShowsTheTextPassedAndTheLogTheErrorObjects) {
    CommonRig rig;
    RuntimeError raised(32000, "Object's own description", "Firmcast");
    InformarError(rig.c, "Proc", 32000, "Text for the operator", raised);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "Text for the operator");
    EXPECT_EQ(readAll(rig.logFile()),
              entry("21/03/2005  10:42  Firmcast", "Object's own description"));
}

TEST(StandardHandler, ShowsNumberDashDescriptionTitledWithTheProcedureAndLogsIt) {
    CommonRig rig;
    standardHandler(rig.c, "CerrarKorvaCOM", RuntimeError(err::kFileNotFound));
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "53 - File not found");
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "CerrarKorvaCOM");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, mb::kExclamation);
    EXPECT_EQ(readAll(rig.logFile()),
              entry("21/03/2005  10:42  CerrarKorvaCOM", "53 - File not found"));
}

TEST(StandardHandler, LeavesTheProcedureAtTheError) {
    CommonRig rig;
    bool after = false;
    bool ranToEnd = withStandardHandler(rig.c, "Parar", [&] {
        throw RuntimeError(err::kPermissionDenied);
        after = true;
    });
    EXPECT_FALSE(ranToEnd);
    EXPECT_FALSE(after);
    EXPECT_EQ(rig.dialogs.boxes()[0].title, "Parar");
    EXPECT_TRUE(withStandardHandler(rig.c, "Parar", [] {}));
}

TEST(StandardHandler, LetsTheEndOfTheProgramThrough) {
    CommonRig rig;
    EXPECT_THROW(withStandardHandler(rig.c, "FIN", [] { throw ProgramEnd{0}; }), ProgramEnd);
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

}  // namespace
}  // namespace fc
