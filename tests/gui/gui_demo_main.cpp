// firmcast_gui_demo: the demo screen in a window, driven by the GUI pump,
// until the window is closed. For trying the rendering by hand and for the
// screenshot script's own test.
#include <QApplication>

#include "demo_screen.h"
#include "platform/qt/qt_pump.h"
#include "platform/qt/screen_window.h"
#include "platform/runtime_error.h"
#include "platform/window_timer.h"

namespace {

// Lets the demo move: the bar fills while the timer runs, Go starts it, and
// the name box takes upper case only.
void wireDemo(fc::test::DemoScreen& screen, fc::WindowTimer& timer) {
    timer.setInterval(100);
    timer.onTimer = [&screen] {
        screen.Barra.setValue((screen.Barra.value() + 2) % (screen.Barra.max() + 1));
    };
    screen.cmdGo.onClick = [&timer] { timer.setEnabled(!timer.enabled()); };
    screen.txtName.onKeyPress = [](fc::Integer& key) {
        if (key >= 'a' && key <= 'z')
            key = static_cast<fc::Integer>(key - 32);
    };
    screen.onUnload = [] { throw fc::ProgramEnd{0}; };
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    fc::QtPump pump;
    fc::test::DemoScreen screen;
    fc::WindowTimer timer(pump, "Tiempo1");
    wireDemo(screen, timer);
    fc::ScreenWindow window(screen, pump);
    screen.load();
    try {
        for (;;) pump.doEvents();
    } catch (const fc::ProgramEnd& end) {
        return end.exitStatus;
    }
}
