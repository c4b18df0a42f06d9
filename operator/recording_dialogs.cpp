#include "operator/recording_dialogs.h"

#include "platform/pump.h"
#include "platform/screen.h"

namespace fc {

RecordingDialogs::RecordingDialogs(Pump& pump) : pump_(pump) {}

int RecordingDialogs::msgBox(const std::string& text, int style, const std::string& title) {
    ShownBox box{text, style, title, pump_.now()};
    boxes_.push_back(box);
    if (onShown)
        onShown(box);
    if (!answers_.empty()) {
        int answer = answers_.front();
        answers_.pop_front();
        return answer;
    }
    return (style & 0x0F) == mb::kYesNo ? mb::kYes : mb::kOk;
}

void RecordingDialogs::showModal(Screen& screen) {
    screen.load();
    modal_.push_back(&screen);
    struct Shown {
        std::vector<Screen*>& modal;
        ~Shown() { modal.pop_back(); }
    } shown{modal_};
    while (screen.loaded()) pump_.doEventsForOperator();
}

std::vector<std::string> RecordingDialogs::texts() const {
    std::vector<std::string> out;
    for (const ShownBox& box : boxes_) out.push_back(box.text);
    return out;
}

}  // namespace fc
