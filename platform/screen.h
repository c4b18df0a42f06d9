// A screen model: a named set of controls and timers, a caption, a mouse
// pointer, and the load/unload life of a window. Screens of the system derive
// from it and wire their controls' events to their handlers.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace fc {

class Control;
class WindowTimer;

class Screen {
  public:
    explicit Screen(std::string name);
    virtual ~Screen() = default;
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    const std::string& name() const { return name_; }

    const std::string& caption() const { return caption_; }
    void setCaption(const std::string& caption);

    // Mouse pointer: 0 default, 1 arrow, 11 hourglass, 13 arrow and hourglass.
    int mousePointer() const { return mousePointer_; }
    void setMousePointer(int pointer);

    bool loaded() const { return loaded_; }
    // Whether the window's Close item (the title bar's cross, Alt+F4) may
    // close it; a screen that must be left by its own button turns it off.
    bool closable() const { return closable_; }
    void setClosable(bool closable) { closable_ = closable; }
    // Marks the window as shown; a renderer shows it.
    void load();
    // Closes the window: runs onUnload first (Form_Unload).
    void unload();
    // Hides the window without unloading it: a modal show of it ends, and
    // the screen keeps its state for the next show.
    void hide();
    std::function<void()> onUnload;

    const std::vector<Control*>& controls() const { return controls_; }
    Control* find(const std::string& name) const;
    const std::vector<WindowTimer*>& timers() const { return timers_; }

    Control* focused() const { return focused_; }
    void setFocused(Control* control);

    // Observers of the screen's own properties (caption, pointer, loaded, focus).
    void addObserver(std::function<void(Screen&)> observer);

    // Called by controls and timers as they are built.
    void enrol(Control& control) { controls_.push_back(&control); }
    void enrol(WindowTimer& timer) { timers_.push_back(&timer); }

  protected:
    void changed();

  private:
    std::string name_;
    std::string caption_;
    int mousePointer_ = 0;
    bool loaded_ = false;
    bool closable_ = true;
    std::vector<Control*> controls_;
    std::vector<WindowTimer*> timers_;
    Control* focused_ = nullptr;
    std::vector<std::function<void(Screen&)>> observers_;
};

}  // namespace fc
