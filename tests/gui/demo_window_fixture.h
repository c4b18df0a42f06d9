// A demo screen loaded into its window, on a GUI pump.
#pragma once

#include <gtest/gtest.h>

#include <QWidget>

#include "demo_screen.h"
#include "gui_application.h"
#include "platform/qt/qt_pump.h"
#include "platform/qt/screen_window.h"

namespace fc::test {

class DemoWindowTest : public ::testing::Test, protected WithGuiApplication {
  protected:
    DemoWindowTest() { screen.load(); }

    template <class W>
    W* widget(const std::string& name) {
        auto* w = qobject_cast<W*>(window.widgetFor(name));
        EXPECT_NE(w, nullptr) << name << " has no widget of the expected type";
        return w;
    }

    QtPump pump;
    DemoScreen screen;
    ScreenWindow window{screen, pump};
};

}  // namespace fc::test
