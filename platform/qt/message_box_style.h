// How a message box style number (buttons + icon + default button, as the
// classic MsgBox takes it) looks in a QMessageBox, and which number each
// button answers.
#pragma once

#include <QMessageBox>

namespace fc {

struct MessageBoxLook {
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons = QMessageBox::Ok;
    QMessageBox::StandardButton defaultButton = QMessageBox::Ok;
    // What Esc and the window's close button answer; NoButton when the style
    // has no such answer (Qt then picks the box's own).
    QMessageBox::StandardButton escapeButton = QMessageBox::Ok;
};

MessageBoxLook messageBoxLook(int style);

// 1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No; 0 for anything else.
int messageBoxAnswer(QMessageBox::StandardButton button);

}  // namespace fc
