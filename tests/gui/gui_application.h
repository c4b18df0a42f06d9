// The one QApplication of the GUI tests, on the offscreen platform unless the
// environment names another.
#pragma once

class QApplication;

namespace fc::test {

QApplication& guiApplication();

// Base of the GUI test fixtures: the application exists before any widget of
// the fixture is built.
struct WithGuiApplication {
    WithGuiApplication() { guiApplication(); }
};

}  // namespace fc::test
