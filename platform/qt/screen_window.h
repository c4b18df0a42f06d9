// The window of a screen model. It builds one widget per control, keeps every
// widget in step with its control through the control's observers, and hands
// what the operator does to the model exactly as an operator would: a click
// to click(), a radio button to setValue(true), each typed key to KeyPress
// first, a choice in a list to setListIndex, closing the window to unload().
//
// It holds no logic of its own. Every call into the model made from a Qt
// signal or event is caught whole and deferred to the pump, so that run-time
// errors and the end of the program surface from the running doEvents() and
// never travel through Qt's event dispatch.
#pragma once

#include <QWidget>
#include <functional>
#include <map>
#include <memory>
#include <string>

class QKeyEvent;
class QMouseEvent;

namespace fc {

class Control;
class Pump;
class Screen;

class ScreenWindow : public QWidget {
    Q_OBJECT

  public:
    // Lays the widgets out by the layout registered for the screen's name, or
    // generically. The window shows while the screen is loaded.
    ScreenWindow(Screen& screen, Pump& pump, QWidget* parent = nullptr);
    ~ScreenWindow() override;

    Screen& screen() const { return screen_; }
    // The widget of the control named `name`, or nullptr.
    QWidget* widgetFor(const std::string& name) const;
    const std::map<std::string, QWidget*>& widgets() const { return byName_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void build();
    void arrange();
    void follow(Control& control, QWidget* widget);
    void followScreen();
    void applyScreen();
    void apply(Control& control);

    // Operator input, by kind of widget (screen_window_input.cpp).
    void connectInput(Control& control, QWidget* widget);
    void connectButton(Control& control, QWidget* widget);
    void connectCombo(Control& control, QWidget* widget);
    void connectList(Control& control, QWidget* widget);
    void connectListView(Control& control, QWidget* widget);
    void connectLineEdit(Control& control, QWidget* widget);
    void operatorChose(Control& control, int index);
    bool filterKey(Control& control, QObject* watched, QKeyEvent* event);
    bool filterMouse(Control& control, QObject* watched, QEvent* event);
    void filterFocus(Control& control, QEvent* event);

    // Runs `call` into the model on the operator's behalf. Whatever it throws
    // is deferred to the pump. Returns false when it threw, and does nothing
    // while the window is itself copying the model onto the widgets.
    bool forward(const std::function<void()>& call);

    Screen& screen_;
    Pump& pump_;
    std::map<std::string, QWidget*> byName_;
    std::map<const Control*, QWidget*> byControl_;
    std::map<QObject*, Control*> watched_;
    // The list index at the moment a list was pressed: the release clicks
    // only when the press did not change it (the change already clicked).
    std::map<const Control*, int> indexAtPress_;
    int applying_ = 0;
    // Observers registered on the models outlive this window; they hold a
    // weak reference to this and fall silent once it is gone.
    std::shared_ptr<ScreenWindow*> self_;
};

}  // namespace fc
