#include "operator/operator_script.h"

#include "platform/controls.h"
#include "platform/pump.h"
#include "platform/screen.h"

namespace fc {

OperatorScript::OperatorScript(Pump& pump) : pump_(pump) {
    pump_.add(*this);
}

OperatorScript::~OperatorScript() {
    if (stop_)
        pump_.setOperatorWatch(nullptr);
    pump_.remove(*this);
}

void OperatorScript::endWhenStuck(std::function<void(const std::string&)> stop) {
    stop_ = std::move(stop);
    pump_.setOperatorWatch([this] { watchOperatorTurn(); });
}

bool OperatorScript::canGoOn() const {
    if (acting_ || steps_.empty())
        return false;
    const Step& step = steps_.front();
    return step.trigger != Step::Trigger::When || step.condition();
}

void OperatorScript::watchOperatorTurn() {
    if (!canGoOn())
        stop_(steps_.empty() ? std::string() : steps_.front().what);
}

OperatorScript& OperatorScript::at(long long ms, std::string what, std::function<void()> act) {
    steps_.push_back(Step{Step::Trigger::At, ms * 1000, nullptr, std::move(what), std::move(act)});
    return *this;
}

OperatorScript& OperatorScript::after(long long ms, std::string what, std::function<void()> act) {
    steps_.push_back(
        Step{Step::Trigger::After, ms * 1000, nullptr, std::move(what), std::move(act)});
    return *this;
}

OperatorScript& OperatorScript::when(std::function<bool()> condition, std::string what,
                                     std::function<void()> act) {
    steps_.push_back(
        Step{Step::Trigger::When, 0, std::move(condition), std::move(what), std::move(act)});
    return *this;
}

Micros OperatorScript::nextDue() const {
    if (steps_.empty())
        return kNever;
    const Step& step = steps_.front();
    switch (step.trigger) {
        case Step::Trigger::At:
            return step.time;
        case Step::Trigger::After:
            return lastRun_ + step.time;
        case Step::Trigger::When:
            return step.condition() ? kDueNow : kNever;
    }
    return kNever;
}

void OperatorScript::runDue(Micros now) {
    if (steps_.empty())
        return;
    Step step = std::move(steps_.front());
    steps_.pop_front();
    lastRun_ = now;
    done_.push_back(std::to_string(now / 1000) + " ms: " + step.what);
    struct Acting {
        bool& flag;
        explicit Acting(bool& f) : flag(f) { flag = true; }
        ~Acting() { flag = false; }
    } acting(acting_);
    step.act();
}

Control& reach(Screen& screen, const std::string& name) {
    Control* control = screen.find(name);
    if (control == nullptr)
        throw OperatorCannot(screen.name() + " has no control " + name);
    if (!screen.loaded())
        throw OperatorCannot(screen.name() + " is not on screen, so " + name +
                             " cannot be reached");
    if (!control->reachable()) {
        throw OperatorCannot(name + " on " + screen.name() +
                             " is hidden or disabled: an operator cannot reach it");
    }
    return *control;
}

void operatorClick(Screen& screen, const std::string& name) {
    Control& control = reach(screen, name);
    control.setFocus();
    switch (control.kind()) {
        case Control::Kind::OptionButton: {
            auto& option = static_cast<OptionButton&>(control);
            if (option.value()) {
                option.click();
            } else {
                option.setValue(true);  // raises Click
            }
            break;
        }
        case Control::Kind::CheckBox: {
            auto& box = static_cast<CheckBox&>(control);
            box.setValue(box.value() == 1 ? 0 : 1);  // raises Click
            break;
        }
        default:
            control.click();
    }
}

void operatorDblClick(Screen& screen, const std::string& name) {
    Control& control = reach(screen, name);
    control.setFocus();
    control.dblClick();
}

void operatorType(Screen& screen, const std::string& name, const std::string& text) {
    Control& control = reach(screen, name);
    control.setFocus();
    for (unsigned char c : text) {
        Integer key = c;
        if (control.onKeyPress)
            control.onKeyPress(key);
        if (key == 0)
            continue;  // the handler swallowed it
        std::string typed = control.caption() + static_cast<char>(key);
        if (control.kind() == Control::Kind::TextBox) {
            static_cast<TextBox&>(control).setText(typed);
        } else if (control.kind() == Control::Kind::ComboBox) {
            static_cast<ComboBox&>(control).setText(typed);
        } else {
            throw OperatorCannot(name + " does not take typing");
        }
    }
}

void operatorScan(Screen& screen, const std::string& name, const std::string& text) {
    Control& control = reach(screen, name);
    if (control.kind() != Control::Kind::TextBox)
        throw OperatorCannot(name + " does not take a barcode");
    control.setFocus();
    static_cast<TextBox&>(control).setText("");
    operatorType(screen, name, text);
    operatorKey(screen, name, 13);
}

void operatorKey(Screen& screen, const std::string& name, Integer keyAscii) {
    Control& control = reach(screen, name);
    control.setFocus();
    control.keyPress(keyAscii);
}

void operatorSelect(Screen& screen, const std::string& name, int index) {
    Control& control = reach(screen, name);
    control.setFocus();
    auto* list = dynamic_cast<ComboBox*>(&control);
    if (list == nullptr)
        throw OperatorCannot(name + " is not a list");
    if (index < 0 || index >= list->listCount())
        throw OperatorCannot(name + " has no entry " + std::to_string(index));
    if (list->listIndex() == index) {
        list->click();  // choosing the selected entry again still clicks
    } else {
        list->setListIndex(index);
    }
}

void operatorSelectText(Screen& screen, const std::string& name, const std::string& text) {
    Control& control = reach(screen, name);
    auto* list = dynamic_cast<ComboBox*>(&control);
    if (list == nullptr)
        throw OperatorCannot(name + " is not a list");
    for (int i = 0; i < list->listCount(); ++i) {
        if (list->list(i) == text)
            return operatorSelect(screen, name, i);
    }
    throw OperatorCannot(name + " has no entry \"" + text + "\"");
}

}  // namespace fc
