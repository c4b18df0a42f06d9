// Message boxes and modal screens.
#pragma once

#include <string>

namespace fc {

class Screen;

// Styles and answers of a message box, with the classic numeric values.
namespace mb {
constexpr int kOkOnly = 0;
constexpr int kOkCancel = 1;
constexpr int kYesNo = 4;
constexpr int kCritical = 16;
constexpr int kQuestion = 32;
constexpr int kExclamation = 48;
constexpr int kInformation = 64;

constexpr int kOk = 1;
constexpr int kCancel = 2;
constexpr int kYes = 6;
constexpr int kNo = 7;
}  // namespace mb

// The title every box without one of its own shows: the application's title.
constexpr const char* kAppTitle = "Firmcast";

class Dialogs {
  public:
    virtual ~Dialogs() = default;

    // Shows a box and returns the button pressed. An empty title is the
    // application's title.
    virtual int msgBox(const std::string& text, int style = mb::kOkOnly,
                       const std::string& title = "") = 0;

    // Shows `screen` and pumps events until it unloads.
    virtual void showModal(Screen& screen) = 0;
};

}  // namespace fc
