#include "platform/qt/control_widgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTreeWidget>

#include "platform/controls.h"
#include "platform/qt/list_sync.h"
#include "platform/qt/picture_label.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/vb_colour.h"

namespace fc {

namespace {

using Kind = Control::Kind;

// Marks a widget whose back colour the program has set: from then on it
// follows the model. Until then it keeps the style's own colour, since every
// control starts out white in the model.
constexpr const char* kColourFollowed = "fcColourFollowed";

QWidget* makeListView(QWidget* parent) {
    auto* tree = new QTreeWidget(parent);
    tree->setRootIsDecorated(false);
    tree->setSelectionBehavior(QAbstractItemView::SelectRows);
    tree->setSelectionMode(QAbstractItemView::SingleSelection);
    tree->setAllColumnsShowFocus(true);
    tree->setItemsExpandable(false);
    return tree;
}

void syncColour(const Control& control, QWidget* widget) {
    const bool followed = widget->property(kColourFollowed).toBool();
    if (!followed && control.backColor() == kColourWhite)
        return;
    widget->setProperty(kColourFollowed, true);
    QPalette palette = widget->palette();
    if (isSystemColour(control.backColor())) {
        palette = QPalette();
    } else {
        palette.setColor(widget->backgroundRole(), toQColor(control.backColor()));
    }
    widget->setPalette(palette);
    widget->setAutoFillBackground(true);
}

void syncLineEdit(const Control& control, QLineEdit* edit) {
    const QString text = toQString(control.caption());
    // Setting an equal text would still move the cursor to the end.
    if (edit->text() != text)
        edit->setText(text);
    // A selection the program made is shown; the operator's own stays as it is.
    const auto& box = static_cast<const TextBox&>(control);
    if (box.selLength() > 0 && edit->selectedText().size() != box.selLength())
        edit->setSelection(box.selStart(), box.selLength());
}

void syncProgress(const ProgressBar& bar, QProgressBar* widget) {
    widget->setRange(bar.min(), bar.max());
    widget->setValue(bar.value());
}

void syncPicture(const PictureBox& box, PictureLabel* label) {
    label->setPicture(toQString(box.picture()));
    label->setPreferredSize(QSize(box.width(), box.height()));
    if (!isSystemColour(box.backColor()))
        label->setColour(toQColor(box.backColor()));
}

void syncByKind(const Control& control, QWidget* widget) {
    switch (control.kind()) {
        case Kind::Label:
            static_cast<QLabel*>(widget)->setText(toQString(control.caption()));
            break;
        case Kind::TextBox:
            syncLineEdit(control, static_cast<QLineEdit*>(widget));
            break;
        case Kind::CommandButton:
            static_cast<QPushButton*>(widget)->setText(toQString(control.caption()));
            break;
        case Kind::OptionButton: {
            auto* radio = static_cast<QRadioButton*>(widget);
            radio->setText(toQString(control.caption()));
            radio->setChecked(static_cast<const OptionButton&>(control).value());
            break;
        }
        case Kind::CheckBox: {
            auto* box = static_cast<QCheckBox*>(widget);
            box->setText(toQString(control.caption()));
            const int value = static_cast<const CheckBox&>(control).value();
            box->setCheckState(value == 1   ? Qt::Checked
                               : value == 2 ? Qt::PartiallyChecked
                                            : Qt::Unchecked);
            break;
        }
        case Kind::Frame:
            static_cast<QGroupBox*>(widget)->setTitle(toQString(control.caption()));
            break;
        case Kind::PictureBox:
            syncPicture(static_cast<const PictureBox&>(control),
                        static_cast<PictureLabel*>(widget));
            break;
        case Kind::ProgressBar:
            syncProgress(static_cast<const ProgressBar&>(control),
                         static_cast<QProgressBar*>(widget));
            break;
        case Kind::ComboBox:
        case Kind::DriveList:
            syncCombo(static_cast<const ComboBox&>(control), static_cast<QComboBox*>(widget));
            break;
        case Kind::DirList:
        case Kind::FileList:
            syncList(static_cast<const ComboBox&>(control), static_cast<QListWidget*>(widget));
            break;
        case Kind::ListView:
            syncListView(static_cast<const ListView&>(control), static_cast<QTreeWidget*>(widget));
            break;
    }
}

}  // namespace

QWidget* makeWidget(const Control& control, QWidget* parent) {
    QWidget* widget = nullptr;
    switch (control.kind()) {
        case Kind::Label: {
            auto* label = new QLabel(parent);
            label->setTextFormat(Qt::PlainText);
            widget = label;
            break;
        }
        case Kind::TextBox:
            widget = new QLineEdit(parent);
            break;
        case Kind::CommandButton:
            widget = new QPushButton(parent);
            break;
        case Kind::OptionButton: {
            auto* radio = new QRadioButton(parent);
            // The model keeps each group exclusive; the widgets only show it.
            radio->setAutoExclusive(false);
            widget = radio;
            break;
        }
        case Kind::CheckBox:
            widget = new QCheckBox(parent);
            break;
        case Kind::Frame:
            widget = new QGroupBox(parent);
            break;
        case Kind::PictureBox:
            widget = new PictureLabel(parent);
            break;
        case Kind::ProgressBar: {
            auto* bar = new QProgressBar(parent);
            bar->setTextVisible(false);
            widget = bar;
            break;
        }
        case Kind::ComboBox:
        case Kind::DriveList:
            widget = new QComboBox(parent);
            break;
        case Kind::DirList:
        case Kind::FileList:
            widget = new QListWidget(parent);
            break;
        case Kind::ListView:
            widget = makeListView(parent);
            break;
    }
    widget->setObjectName(toQString(control.name()));
    return widget;
}

void syncWidget(const Control& control, QWidget* widget) {
    const QSignalBlocker blocker(widget);
    widget->setVisible(control.visible());
    widget->setEnabled(control.enabled());
    // A picture box paints its own colour under its image.
    if (control.kind() != Kind::PictureBox)
        syncColour(control, widget);
    syncByKind(control, widget);
}

}  // namespace fc
