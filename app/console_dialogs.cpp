#include "app/console_dialogs.h"

#include "platform/controls.h"
#include "platform/screen.h"

namespace fc {

int ConsoleDialogs::msgBox(const std::string& text, int style, const std::string&) {
    out_ << "msgbox: " << text << "\n";
    return (style & 0x0F) == mb::kYesNo ? mb::kYes : mb::kOk;
}

void ConsoleDialogs::showModal(Screen& screen) {
    screen.load();
    out_ << screen.caption() << ":";
    for (const Control* control : screen.controls())
        if (control->kind() == Control::Kind::Label)
            out_ << " " << control->caption();
    out_ << "\n";
    screen.unload();
}

}  // namespace fc
