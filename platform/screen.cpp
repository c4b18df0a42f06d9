#include "platform/screen.h"

#include "platform/controls.h"

namespace fc {

Screen::Screen(std::string name) : name_(std::move(name)) {}

void Screen::setCaption(const std::string& caption) {
    if (caption_ == caption)
        return;
    caption_ = caption;
    changed();
}

void Screen::setMousePointer(int pointer) {
    if (mousePointer_ == pointer)
        return;
    mousePointer_ = pointer;
    changed();
}

void Screen::load() {
    if (loaded_)
        return;
    loaded_ = true;
    changed();
}

void Screen::unload() {
    if (!loaded_)
        return;
    // The unload handler may end the program by throwing; the window is
    // gone all the same.
    try {
        if (onUnload)
            onUnload();
    } catch (...) {
        loaded_ = false;
        changed();
        throw;
    }
    loaded_ = false;
    changed();
}

void Screen::hide() {
    if (!loaded_)
        return;
    loaded_ = false;
    changed();
}

Control* Screen::find(const std::string& name) const {
    for (Control* control : controls_) {
        if (control->name() == name)
            return control;
    }
    return nullptr;
}

void Screen::setFocused(Control* control) {
    if (focused_ == control)
        return;
    focused_ = control;
    changed();
}

void Screen::addObserver(std::function<void(Screen&)> observer) {
    observers_.push_back(std::move(observer));
}

void Screen::changed() {
    for (auto& observer : observers_) observer(*this);
}

}  // namespace fc
