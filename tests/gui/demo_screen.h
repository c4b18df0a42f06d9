// A screen with a few controls of every kind, for the GUI tests and the demo
// program. It wires no handlers: each test wires the ones it watches.
#pragma once

#include <string>

#include "platform/controls.h"
#include "platform/screen.h"

namespace fc::test {

class DemoScreen : public Screen {
  public:
    explicit DemoScreen(std::string name = "DemoScreen");

    Label lblTitle{*this, "lblTitle"};
    TextBox txtName{*this, "txtName"};
    CommandButton cmdGo{*this, "cmdGo"};
    Frame frWay{*this, "frWay"};
    OptionButton optSerial{*this, "optSerial", &frWay};
    OptionButton optEthernet{*this, "optEthernet", &frWay};
    CheckBox chkAdsl{*this, "chkAdsl", &frWay};
    Label lblPort{*this, "lblPort", &frWay};
    PictureBox picModel{*this, "picModel"};
    ProgressBar Barra{*this, "Barra"};
    ComboBox cmbSpeed{*this, "cmbSpeed"};
    ListView lstScales{*this, "lstScales"};
    Frame frFiles{*this, "frFiles"};
    DriveList Drive1{*this, "Drive1", &frFiles};
    DirList Dir1{*this, "Dir1", &frFiles};
    FileList File1{*this, "File1", &frFiles};
};

}  // namespace fc::test
