#include "platform/qt/screen_window.h"

#include <QCloseEvent>
#include <QGroupBox>

#include "platform/controls.h"
#include "platform/pump.h"
#include "platform/qt/control_widgets.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/screen_layout.h"
#include "platform/screen.h"

namespace fc {

namespace {

// Mouse pointers: 11 hourglass, 13 arrow and hourglass, 1 arrow, 2 cross,
// 3 I-beam; 0 (and anything else) the default of each widget.
void applyPointer(QWidget* window, int pointer) {
    switch (pointer) {
        case 1:
            window->setCursor(Qt::ArrowCursor);
            break;
        case 2:
            window->setCursor(Qt::CrossCursor);
            break;
        case 3:
            window->setCursor(Qt::IBeamCursor);
            break;
        case 11:
            window->setCursor(Qt::WaitCursor);
            break;
        case 13:
            window->setCursor(Qt::BusyCursor);
            break;
        default:
            window->unsetCursor();
            break;
    }
}

}  // namespace

ScreenWindow::ScreenWindow(Screen& screen, Pump& pump, QWidget* parent)
    : QWidget(parent, Qt::Window),
      screen_(screen),
      pump_(pump),
      self_(std::make_shared<ScreenWindow*>(this)) {
    build();
    arrange();
    // No cross in the title bar for a screen that only its own button closes.
    if (!screen.closable())
        setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    followScreen();
    applyScreen();
}

ScreenWindow::~ScreenWindow() {
    self_.reset();
    // QWidget deletes the control widgets only after this part of the window
    // is gone; whatever they signal while dying must not reach it.
    for (auto& [object, control] : watched_) {
        object->removeEventFilter(this);
        QObject::disconnect(object, nullptr, this, nullptr);
    }
}

QWidget* ScreenWindow::widgetFor(const std::string& name) const {
    auto it = byName_.find(name);
    return it == byName_.end() ? nullptr : it->second;
}

void ScreenWindow::build() {
    // Controls are created after their frames, so a frame's widget exists
    // before the widgets it holds.
    for (Control* control : screen_.controls()) {
        QWidget* parent = this;
        if (control->container() != nullptr)
            parent = byControl_.at(control->container());
        QWidget* widget = makeWidget(*control, parent);
        byName_[control->name()] = widget;
        byControl_[control] = widget;
        syncWidget(*control, widget);
        follow(*control, widget);
        connectInput(*control, widget);
    }
}

void ScreenWindow::arrange() {
    if (const ScreenLayout* layout = findScreenLayout(screen_.name())) {
        (*layout)(byName_, this);
    } else {
        arrangeGenerically(screen_, byName_, this);
    }
}

void ScreenWindow::follow(Control& control, QWidget* widget) {
    std::weak_ptr<ScreenWindow*> alive = self_;
    control.addObserver([alive, widget](Control& changed) {
        auto window = alive.lock();
        if (!window)
            return;
        ++(*window)->applying_;
        syncWidget(changed, widget);
        --(*window)->applying_;
    });
}

void ScreenWindow::apply(Control& control) {
    ++applying_;
    syncWidget(control, byControl_.at(&control));
    --applying_;
}

void ScreenWindow::followScreen() {
    std::weak_ptr<ScreenWindow*> alive = self_;
    screen_.addObserver([alive](Screen&) {
        if (auto window = alive.lock())
            (*window)->applyScreen();
    });
}

void ScreenWindow::applyScreen() {
    ++applying_;
    setWindowTitle(toQString(screen_.caption()));
    applyPointer(this, screen_.mousePointer());
    if (Control* focused = screen_.focused()) {
        auto it = byControl_.find(focused);
        if (it != byControl_.end() && !it->second->hasFocus())
            it->second->setFocus(Qt::OtherFocusReason);
    }
    if (screen_.loaded() != isVisible())
        setVisible(screen_.loaded());
    --applying_;
}

bool ScreenWindow::forward(const std::function<void()>& call) {
    if (applying_ > 0)
        return false;
    try {
        call();
        return true;
    } catch (...) {
        pump_.defer(std::current_exception());
        return false;
    }
}

void ScreenWindow::closeEvent(QCloseEvent* event) {
    // The model decides: the window hides when the screen has unloaded.
    event->ignore();
    if (screen_.closable())
        forward([this] { screen_.unload(); });
}

}  // namespace fc
