// The display screen's hand-made window, on Qt's offscreen platform, over
// the screen model loaded on the virtual clock: where its parts stand, the
// buttons' row, and the parameters that follow the way.
#include <gtest/gtest.h>

#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "gui/display_layout.h"
#include "gui_application.h"
#include "platform/qt/screen_layout.h"
#include "platform/qt/screen_window.h"
#include "support/display_rig.h"

namespace fc::test {
namespace {

struct DisplayLayoutRegistered {
    DisplayLayoutRegistered() { registerDisplayLayout(); }
    ~DisplayLayoutRegistered() { unregisterScreenLayout("frmCargaDisplayGrafico"); }
};

class DisplayWindowTest : public ::testing::Test, protected WithGuiApplication {
  protected:
    DisplayWindowTest() {
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    QRect place(const char* name) {
        QWidget* w = window.widgetFor(name);
        EXPECT_NE(w, nullptr) << name;
        return QRect(w->mapTo(&window, QPoint(0, 0)), w->size());
    }

    DisplayLayoutRegistered registered_;
    DisplayRig rig;
    ScreenWindow window{*rig.form, rig.pump};
};

TEST_F(DisplayWindowTest, TheFileIsOnTheLeftAndTheWayOnTheRight) {
    EXPECT_LT(place("frDirectorio").right(), place("Frame2").left());
    EXPECT_LT(place("Frame2").bottom(), place("frEthParameters").top());
    EXPECT_EQ(window.objectName(), "DisplayWindow");
}

TEST_F(DisplayWindowTest, BackLoadAndExitStandInARowAtTheBottomRight) {
    QRect back = place("cmdAtras"), load = place("cmdAdelante"), exit = place("FIN");
    EXPECT_LT(back.right(), load.left());
    EXPECT_LT(load.right(), exit.left());
    EXPECT_EQ(back.top(), exit.top());
    EXPECT_GT(back.top(), place("frDirectorio").bottom());
    EXPECT_FALSE(window.widgetFor("CmdStop")->isVisible());
    EXPECT_EQ(qobject_cast<QPushButton*>(window.widgetFor("cmdAdelante"))->text(), "Load");
}

TEST_F(DisplayWindowTest, ChoosingRs232ShowsTheSerialParametersInPlaceOfTheNetworks) {
    EXPECT_TRUE(window.widgetFor("frEthParameters")->isVisible());
    EXPECT_FALSE(window.widgetFor("frComParameters")->isVisible());
    QTest::mouseClick(window.widgetFor("optrs232"), Qt::LeftButton, {}, QPoint(4, 4));
    EXPECT_TRUE(rig.form->optrs232.value());
    EXPECT_FALSE(window.widgetFor("frEthParameters")->isVisible());
    EXPECT_TRUE(window.widgetFor("frComParameters")->isVisible());
    EXPECT_TRUE(qobject_cast<QRadioButton*>(window.widgetFor("Option1"))->isChecked());
}

}  // namespace
}  // namespace fc::test
