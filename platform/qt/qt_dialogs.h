// Message boxes as QMessageBox, modal screens as application-modal windows.
#pragma once

#include "platform/dialogs.h"

namespace fc {

class Pump;

class QtDialogs : public Dialogs {
  public:
    explicit QtDialogs(Pump& pump);

    // Waits in the box's own loop for the operator's answer: meanwhile the
    // program's timers and lines do not run, as with the recording dialogs.
    int msgBox(const std::string& text, int style = mb::kOkOnly,
               const std::string& title = "") override;

    // Loads the screen into an application-modal window and pumps events
    // until the screen unloads; the window goes with it.
    void showModal(Screen& screen) override;

  private:
    Pump& pump_;
};

}  // namespace fc
