// Dialogs without a display: every box is kept, in order, and answered by
// script. Used by the tests and by the headless program.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/dialogs.h"

namespace fc {

class Pump;

struct ShownBox {
    std::string text;
    int style = 0;
    std::string title;  // as passed: empty means the application's title
    long long atMs = 0;
};

class RecordingDialogs : public Dialogs {
  public:
    explicit RecordingDialogs(Pump& pump);

    int msgBox(const std::string& text, int style, const std::string& title) override;
    void showModal(Screen& screen) override;

    // Answers for the next boxes, in order; a box with no scripted answer gets
    // OK (or Yes for a Yes/No box).
    void scriptAnswer(int answer) { answers_.push_back(answer); }

    // Called for each box as it is shown (the headless program prints them).
    std::function<void(const ShownBox&)> onShown;

    const std::vector<ShownBox>& boxes() const { return boxes_; }
    // The modal screen shown now (the innermost), or null.
    const Screen* modalScreen() const { return modal_.empty() ? nullptr : modal_.back(); }
    Screen* modalScreen() { return modal_.empty() ? nullptr : modal_.back(); }
    std::vector<std::string> texts() const;
    void clear() { boxes_.clear(); }

  private:
    Pump& pump_;
    std::vector<ShownBox> boxes_;
    std::deque<int> answers_;
    std::vector<Screen*> modal_;
};

}  // namespace fc
