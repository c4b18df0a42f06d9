// Dialogs of a tool run from a terminal: a box is printed on the error
// stream as "msgbox: <text>" and answered OK; a modal screen prints its
// caption and its labels and is closed at once, as no one is there to
// press its buttons.
#pragma once

#include <ostream>

#include "platform/dialogs.h"

namespace fc {

class ConsoleDialogs : public Dialogs {
  public:
    explicit ConsoleDialogs(std::ostream& out) : out_(out) {}

    int msgBox(const std::string& text, int style, const std::string& title) override;
    void showModal(Screen& screen) override;

  private:
    std::ostream& out_;
};

}  // namespace fc
