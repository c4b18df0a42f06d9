#include "platform/qt/message_box_style.h"

#include <vector>

namespace fc {

namespace {

using Button = QMessageBox::StandardButton;

// The buttons of each button group (style & 7), in the order they stand.
std::vector<Button> buttonsOf(int group) {
    switch (group) {
        case 1:
            return {QMessageBox::Ok, QMessageBox::Cancel};
        case 2:
            return {QMessageBox::Abort, QMessageBox::Retry, QMessageBox::Ignore};
        case 3:
            return {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel};
        case 4:
            return {QMessageBox::Yes, QMessageBox::No};
        case 5:
            return {QMessageBox::Retry, QMessageBox::Cancel};
        default:
            return {QMessageBox::Ok};
    }
}

QMessageBox::Icon iconOf(int iconBits) {
    switch (iconBits) {
        case 16:
            return QMessageBox::Critical;
        case 32:
            return QMessageBox::Question;
        case 48:
            return QMessageBox::Warning;
        case 64:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

Button escapeOf(const std::vector<Button>& buttons) {
    if (buttons.size() == 1)
        return buttons.front();
    for (Button b : buttons) {
        if (b == QMessageBox::Cancel)
            return b;
    }
    return QMessageBox::NoButton;
}

}  // namespace

MessageBoxLook messageBoxLook(int style) {
    std::vector<Button> buttons = buttonsOf(style & 0x7);
    MessageBoxLook look;
    look.icon = iconOf(style & 0x70);
    look.buttons = QMessageBox::NoButton;
    for (Button b : buttons) look.buttons |= b;
    // 0, 256, 512: the first, second or third button is the default.
    std::size_t defaultIndex = static_cast<std::size_t>((style >> 8) & 0x3);
    look.defaultButton = buttons[defaultIndex < buttons.size() ? defaultIndex : 0];
    look.escapeButton = escapeOf(buttons);
    return look;
}

int messageBoxAnswer(QMessageBox::StandardButton button) {
    switch (button) {
        case QMessageBox::Ok:
            return 1;
        case QMessageBox::Cancel:
            return 2;
        case QMessageBox::Abort:
            return 3;
        case QMessageBox::Retry:
            return 4;
        case QMessageBox::Ignore:
            return 5;
        case QMessageBox::Yes:
            return 6;
        case QMessageBox::No:
            return 7;
        default:
            return 0;
    }
}

}  // namespace fc
