#include "platform/qt/screen_layout.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QVBoxLayout>
#include <QWidget>

#include "platform/controls.h"
#include "platform/screen.h"

namespace fc {

namespace {

std::map<std::string, ScreenLayout>& registry() {
    static std::map<std::string, ScreenLayout> layouts;
    return layouts;
}

QWidget* widgetOf(const Control* control, const std::map<std::string, QWidget*>& widgets) {
    auto it = widgets.find(control->name());
    return it == widgets.end() ? nullptr : it->second;
}

// The widgets of the controls directly inside `container` (nullptr: the
// screen itself), in the order the controls were created.
std::vector<QWidget*> widgetsIn(const Screen& screen, const Frame* container,
                                const std::map<std::string, QWidget*>& widgets) {
    std::vector<QWidget*> found;
    for (const Control* control : screen.controls()) {
        if (control->container() != container)
            continue;
        if (QWidget* w = widgetOf(control, widgets))
            found.push_back(w);
    }
    return found;
}

}  // namespace

void registerScreenLayout(const std::string& screenName, ScreenLayout layout) {
    registry()[screenName] = std::move(layout);
}

void unregisterScreenLayout(const std::string& screenName) {
    registry().erase(screenName);
}

const ScreenLayout* findScreenLayout(const std::string& screenName) {
    auto it = registry().find(screenName);
    return it == registry().end() ? nullptr : &it->second;
}

void arrangeGenerically(const Screen& screen, const std::map<std::string, QWidget*>& widgets,
                        QWidget* window, int columns) {
    auto* column = new QVBoxLayout(window);
    for (QWidget* w : widgetsIn(screen, nullptr, widgets)) column->addWidget(w);
    column->addStretch();
    for (const Control* control : screen.controls()) {
        if (control->kind() != Control::Kind::Frame)
            continue;
        QWidget* box = widgetOf(control, widgets);
        if (box == nullptr)
            continue;
        auto* grid = new QGridLayout(box);
        int cell = 0;
        for (QWidget* w : widgetsIn(screen, static_cast<const Frame*>(control), widgets)) {
            grid->addWidget(w, cell / columns, cell % columns);
            ++cell;
        }
    }
}

}  // namespace fc
