#include <gtest/gtest.h>

#include "common/frm_aviso_errores.h"
#include "operator/operator_script.h"
#include "tests/unit/common_fixture.h"

namespace fc {
namespace {

using commontest::CommonRig;

TEST(frmAvisoErrores, IsCaptionedAtencionAndTellsTheOperatorTheMacIsNotValid) {
    CommonRig rig;
    frmAvisoErrores form(rig.c, ContactoServicio{"the Technical Service", "+34 900 000 000"});
    EXPECT_EQ(form.caption(), "Atención");
    EXPECT_EQ(form.lblAviso.caption(),
              "An error has ocurred in your application. Please contact the Technical Service on "
              "+34 900 000 000. Your scale's MAC address is not valid.");
    EXPECT_EQ(form.cmdCancelar.caption(), "Cancelar");
}

TEST(frmAvisoErrores, WithoutATelephoneTheTextNamesOnlyTheService) {
    EXPECT_EQ(frmAvisoErrores::textoAviso(ContactoServicio{"your dealer", ""}),
              "An error has ocurred in your application. Please contact your dealer. "
              "Your scale's MAC address is not valid.");
}

TEST(frmAvisoErrores, LoadPutsTheTopAt1400TwipsAndTheLeftFromTheScreenWidth) {
    CommonRig rig;
    frmAvisoErrores form(rig.c);
    form.screenWidthTwips = 20000;
    form.Form_Load();
    EXPECT_EQ(form.top(), 1400);
    EXPECT_EQ(form.left(), 20000 - (frmAvisoErrores::kWidth + 1000));
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

void showAndClick(const std::string& button) {
    CommonRig rig;
    frmAvisoErrores form(rig.c);
    OperatorScript script(rig.pump);
    script.at(500, "operator closes the notice", [&] { operatorClick(form, button); });
    form.Mostrar();
    EXPECT_FALSE(form.loaded());
    EXPECT_EQ(rig.pump.now(), 500);
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(frmAvisoErrores, IsModalUntilAceptarUnloadsIt) {
    showAndClick("cmdAceptar");
}

TEST(frmAvisoErrores, IsModalUntilCancelarUnloadsIt) {
    showAndClick("cmdCancelar");
}

}  // namespace
}  // namespace fc
