#include "gui_application.h"

#include <QApplication>

namespace fc::test {

QApplication& guiApplication() {
    if (auto* app = qobject_cast<QApplication*>(QCoreApplication::instance()))
        return *app;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "firmcast_gui_tests";
    static char* argv[] = {name, nullptr};
    // Kept to the end of the process: widgets of static objects may outlive main.
    static auto* app = new QApplication(argc, argv);
    return *app;
}

}  // namespace fc::test

// Under LeakSanitizer: fontconfig keeps a few allocations of its own cache to
// the end of the process. They are not ours to free.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\n";
}
