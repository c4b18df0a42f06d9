// Generic and hand-made layouts of screen windows.
#include <gtest/gtest.h>

#include <QGridLayout>
#include <QGroupBox>
#include <QVBoxLayout>

#include "demo_screen.h"
#include "gui_application.h"
#include "platform/qt/qt_pump.h"
#include "platform/qt/screen_layout.h"
#include "platform/qt/screen_window.h"

namespace fc::test {
namespace {

class ScreenLayoutTest : public ::testing::Test, protected WithGuiApplication {
  protected:
    QtPump pump;
};

TEST_F(ScreenLayoutTest, GenericLayoutStacksTopLevelControlsAndGridsFrames) {
    DemoScreen screen;
    ScreenWindow window(screen, pump);
    auto* column = qobject_cast<QVBoxLayout*>(window.layout());
    ASSERT_NE(column, nullptr);
    EXPECT_LT(column->indexOf(window.widgetFor("lblTitle")),
              column->indexOf(window.widgetFor("cmdGo")));
    EXPECT_LT(column->indexOf(window.widgetFor("cmdGo")),
              column->indexOf(window.widgetFor("frFiles")));
    EXPECT_EQ(column->indexOf(window.widgetFor("optSerial")), -1) << "inside its frame";

    QWidget* frame = window.widgetFor("frWay");
    EXPECT_EQ(window.widgetFor("optSerial")->parentWidget(), frame);
    auto* grid = qobject_cast<QGridLayout*>(frame->layout());
    ASSERT_NE(grid, nullptr);
    int row = -1, col = -1, rowSpan = 0, colSpan = 0;
    grid->getItemPosition(grid->indexOf(window.widgetFor("chkAdsl")), &row, &col, &rowSpan,
                          &colSpan);
    EXPECT_EQ(row, 0);
    EXPECT_EQ(col, 2);
    // The fourth control of the frame wraps to the next row.
    grid->getItemPosition(grid->indexOf(window.widgetFor("lblPort")), &row, &col, &rowSpan,
                          &colSpan);
    EXPECT_EQ(row, 1);
    EXPECT_EQ(col, 0);
}

TEST_F(ScreenLayoutTest, RegisteredLayoutIsUsedForItsScreen) {
    std::map<std::string, QWidget*> received;
    QWidget* receivedWindow = nullptr;
    registerScreenLayout("LayoutDemo",
                         [&](const std::map<std::string, QWidget*>& widgets, QWidget* w) {
                             received = widgets;
                             receivedWindow = w;
                             widgets.at("cmdGo")->setGeometry(300, 200, 90, 25);
                         });
    DemoScreen screen("LayoutDemo");
    ScreenWindow window(screen, pump);
    unregisterScreenLayout("LayoutDemo");

    EXPECT_EQ(receivedWindow, &window);
    EXPECT_EQ(received.size(), screen.controls().size());
    EXPECT_EQ(received.at("File1"), window.widgetFor("File1"));
    EXPECT_EQ(received.at("File1")->parentWidget(), window.widgetFor("frFiles"));
    EXPECT_EQ(window.widgetFor("cmdGo")->geometry(), QRect(300, 200, 90, 25));
    EXPECT_EQ(window.layout(), nullptr) << "no generic layout on top of the hand-made one";

    DemoScreen other;
    ScreenWindow otherWindow(other, pump);
    EXPECT_NE(otherWindow.layout(), nullptr);
}

}  // namespace
}  // namespace fc::test
