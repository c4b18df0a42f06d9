// The program's dialogs with an ear: every message box is told to `onBox`
// before it is shown, then shown as always. What keeps a record of a load
// learns from it the last thing the load said.
#pragma once

#include <functional>
#include <string>

#include "platform/dialogs.h"

namespace fc {

class NotedDialogs : public Dialogs {
  public:
    explicit NotedDialogs(Dialogs& shown) : shown_(shown) {}

    std::function<void(const std::string& text)> onBox;

    int msgBox(const std::string& text, int style = mb::kOkOnly,
               const std::string& title = "") override {
        if (onBox)
            onBox(text);
        return shown_.msgBox(text, style, title);
    }
    void showModal(Screen& screen) override { shown_.showModal(screen); }

  private:
    Dialogs& shown_;
};

}  // namespace fc
