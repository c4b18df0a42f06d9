// One Qt widget per control of a screen model, and the copying of a control's
// properties onto its widget.
//
// Label -> QLabel, TextBox -> QLineEdit, CommandButton -> QPushButton,
// OptionButton -> QRadioButton, CheckBox -> QCheckBox, Frame -> QGroupBox,
// PictureBox -> PictureLabel, ProgressBar -> QProgressBar,
// ComboBox and DriveList -> QComboBox, ListView -> QTreeWidget,
// DirList and FileList -> QListWidget.
#pragma once

class QWidget;

namespace fc {

class Control;

// A widget for `control`, showing nothing yet; syncWidget fills it.
QWidget* makeWidget(const Control& control, QWidget* parent);

// Copies every property of `control` onto its widget (visible, enabled,
// caption or text, value, list items and index, back colour, progress
// range and value), changing only what differs. The widget's signals are
// blocked meanwhile: a change made by the program is not an operator's.
void syncWidget(const Control& control, QWidget* widget);

}  // namespace fc
