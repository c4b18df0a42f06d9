// What the operator does in a screen window, handed to the model.
#include <QAbstractButton>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QTreeWidget>

#include "platform/controls.h"
#include "platform/qt/key_ascii.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/screen_window.h"

namespace fc {

namespace {

using Kind = Control::Kind;

// Puts a key that a KeyPress handler substituted into a line edit, as if it
// had been typed.
void typeInto(QLineEdit* edit, Integer key) {
    if (key == 8) {
        edit->backspace();
    } else if (key >= 32) {
        edit->insert(QString(QChar(static_cast<char16_t>(key))));
    }
}

}  // namespace

void ScreenWindow::connectInput(Control& control, QWidget* widget) {
    watched_[widget] = &control;
    widget->installEventFilter(this);
    switch (control.kind()) {
        case Kind::CommandButton:
        case Kind::OptionButton:
        case Kind::CheckBox:
            connectButton(control, widget);
            break;
        case Kind::TextBox:
            connectLineEdit(control, widget);
            break;
        case Kind::ComboBox:
        case Kind::DriveList:
            connectCombo(control, widget);
            break;
        case Kind::DirList:
        case Kind::FileList:
            connectList(control, widget);
            break;
        case Kind::ListView:
            connectListView(control, widget);
            break;
        default:
            break;
    }
}

void ScreenWindow::connectButton(Control& control, QWidget* widget) {
    auto* button = static_cast<QAbstractButton*>(widget);
    connect(button, &QAbstractButton::clicked, this, [this, &control] {
        forward([&control] {
            control.setFocus();
            if (control.kind() == Kind::OptionButton) {
                auto& option = static_cast<OptionButton&>(control);
                // Clicking the selected option clicks it again.
                option.value() ? option.click() : option.setValue(true);
            } else if (control.kind() == Kind::CheckBox) {
                auto& box = static_cast<CheckBox&>(control);
                box.setValue(box.value() == 1 ? 0 : 1);  // raises Click
            } else {
                control.click();
            }
        });
        // Qt toggled the widget on its own; the model has the last word.
        apply(control);
    });
}

void ScreenWindow::connectLineEdit(Control& control, QWidget* widget) {
    auto* edit = static_cast<QLineEdit*>(widget);
    // textEdited comes from the operator only (typing, pasting, a substituted
    // key), never from the window copying the model's text.
    connect(edit, &QLineEdit::textEdited, this, [this, &control](const QString& text) {
        forward([&control, &text] { static_cast<TextBox&>(control).setText(fromQString(text)); });
        apply(control);
    });
}

void ScreenWindow::operatorChose(Control& control, int index) {
    auto& list = static_cast<ComboBox&>(control);
    forward([&list, index] {
        if (index < 0 || index >= list.listCount())
            return;
        list.setFocus();
        if (list.kind() == Kind::DriveList) {
            // A drive list's choice is its drive; it raises Change, no Click.
            static_cast<DriveList&>(list).setDrive(list.list(index));
        } else if (list.listIndex() == index) {
            list.click();  // choosing the selected entry again still clicks
        } else {
            list.setListIndex(index);  // raises Click
        }
    });
    apply(control);
}

void ScreenWindow::connectCombo(Control& control, QWidget* widget) {
    auto* combo = static_cast<QComboBox*>(widget);
    connect(combo, &QComboBox::activated, this,
            [this, &control](int index) { operatorChose(control, index); });
}

void ScreenWindow::connectList(Control& control, QWidget* widget) {
    auto* list = static_cast<QListWidget*>(widget);
    list->viewport()->installEventFilter(this);
    watched_[list->viewport()] = &control;
    // The mouse and the arrow keys move the current row: that selects, and
    // the selection raises Click.
    connect(list, &QListWidget::currentRowChanged, this, [this, &control](int row) {
        if (row >= 0)
            operatorChose(control, row);
    });
    connect(list, &QListWidget::itemClicked, this, [this, &control, list](QListWidgetItem* item) {
        const int row = list->row(item);
        auto& model = static_cast<ComboBox&>(control);
        auto pressed = indexAtPress_.find(&control);
        if (pressed == indexAtPress_.end() || pressed->second != row)
            return;
        if (model.listIndex() == row)
            forward([&model] { model.click(); });
    });
    connect(list, &QListWidget::itemDoubleClicked, this,
            [this, &control] { forward([&control] { control.dblClick(); }); });
}

void ScreenWindow::connectListView(Control& control, QWidget* widget) {
    auto* tree = static_cast<QTreeWidget*>(widget);
    auto& view = static_cast<ListView&>(control);
    connect(tree, &QTreeWidget::currentItemChanged, this,
            [this, &view, tree](QTreeWidgetItem* item) {
                if (item != nullptr)
                    forward([&] { view.setSelectedRow(tree->indexOfTopLevelItem(item)); });
            });
    connect(tree, &QTreeWidget::itemClicked, this, [this, &view, tree](QTreeWidgetItem* item) {
        forward([&] {
            view.setFocus();
            view.setSelectedRow(tree->indexOfTopLevelItem(item));
            view.click();
        });
        apply(view);
    });
    connect(tree, &QTreeWidget::itemDoubleClicked, this,
            [this, &view] { forward([&view] { view.dblClick(); }); });
}

bool ScreenWindow::eventFilter(QObject* watched, QEvent* event) {
    auto it = watched_.find(watched);
    if (it == watched_.end())
        return QWidget::eventFilter(watched, event);
    Control& control = *it->second;
    switch (event->type()) {
        case QEvent::KeyPress:
            return filterKey(control, watched, static_cast<QKeyEvent*>(event));
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
            return filterMouse(control, watched, event);
        case QEvent::FocusIn:
            filterFocus(control, event);
            return false;
        default:
            return false;
    }
}

bool ScreenWindow::filterKey(Control& control, QObject* watched, QKeyEvent* event) {
    const std::optional<Integer> typed = keyAsciiOf(*event);
    if (!typed || !control.onKeyPress)
        return false;
    Integer key = *typed;
    // A handler may change the key, or set it to 0 to swallow it.
    if (!forward([&control, &key] { control.onKeyPress(key); }))
        return true;
    if (key == *typed)
        return false;
    // The handler put another key in its place: a line edit takes that one;
    // other widgets have no text to put it in, and drop the original.
    if (key != 0) {
        if (auto* edit = qobject_cast<QLineEdit*>(watched))
            typeInto(edit, key);
    }
    return true;
}

bool ScreenWindow::filterMouse(Control& control, QObject* watched, QEvent* event) {
    if (static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton)
        return false;
    const bool isList = control.kind() == Kind::DirList || control.kind() == Kind::FileList;
    if (isList) {
        // A double click's second press is no fresh choice.
        const int index = static_cast<ComboBox&>(control).listIndex();
        if (event->type() == QEvent::MouseButtonPress)
            indexAtPress_[&control] = index;
        if (event->type() == QEvent::MouseButtonDblClick)
            indexAtPress_[&control] = -2;
        return false;
    }
    // Labels and pictures have no click signal of their own.
    if (control.kind() != Kind::Label && control.kind() != Kind::PictureBox)
        return false;
    auto* widget = static_cast<QWidget*>(watched);
    if (event->type() == QEvent::MouseButtonRelease &&
        widget->rect().contains(static_cast<QMouseEvent*>(event)->position().toPoint())) {
        forward([&control] { control.click(); });
    } else if (event->type() == QEvent::MouseButtonDblClick) {
        forward([&control] { control.dblClick(); });
    }
    return false;
}

void ScreenWindow::filterFocus(Control& control, QEvent* event) {
    // Only the operator's moves of the focus: the window's own setFocus (from
    // the model) and a window coming to the front are no news to the model.
    switch (static_cast<QFocusEvent*>(event)->reason()) {
        case Qt::MouseFocusReason:
        case Qt::TabFocusReason:
        case Qt::BacktabFocusReason:
        case Qt::ShortcutFocusReason:
            forward([&control] { control.setFocus(); });
            break;
        default:
            break;
    }
}

}  // namespace fc
