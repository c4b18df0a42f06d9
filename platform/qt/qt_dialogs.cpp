#include "platform/qt/qt_dialogs.h"

#include <QApplication>
#include <QMessageBox>

#include "platform/pump.h"
#include "platform/qt/message_box_style.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/screen_window.h"
#include "platform/screen.h"

namespace fc {

QtDialogs::QtDialogs(Pump& pump) : pump_(pump) {}

int QtDialogs::msgBox(const std::string& text, int style, const std::string& title) {
    const MessageBoxLook look = messageBoxLook(style);
    QMessageBox box(look.icon, toQString(title.empty() ? std::string(kAppTitle) : title),
                    toQString(text), look.buttons, QApplication::activeWindow());
    box.setWindowModality(Qt::ApplicationModal);
    box.setDefaultButton(look.defaultButton);
    if (look.escapeButton != QMessageBox::NoButton)
        box.setEscapeButton(look.escapeButton);
    box.exec();
    return messageBoxAnswer(box.standardButton(box.clickedButton()));
}

void QtDialogs::showModal(Screen& screen) {
    ScreenWindow window(screen, pump_);
    window.setWindowModality(Qt::ApplicationModal);
    screen.load();
    window.show();
    while (screen.loaded()) pump_.doEvents();
}

}  // namespace fc
