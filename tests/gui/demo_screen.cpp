#include "demo_screen.h"

namespace fc::test {

namespace {

void fill(ComboBox& list, std::initializer_list<const char*> entries) {
    for (const char* entry : entries) list.addItem(entry);
}

}  // namespace

DemoScreen::DemoScreen(std::string name) : Screen(std::move(name)) {
    setCaption("Firmcast demo");
    lblTitle.setCaption("Select Communication Way");
    cmdGo.setCaption("Next >");
    frWay.setCaption("Way");
    optSerial.setCaption("RS-232");
    optEthernet.setCaption("Ethernet");
    chkAdsl.setCaption("ADSL");
    lblPort.setCaption("Port 3000");
    picModel.setPicture("demo-scale");
    picModel.setSize(160, 120);
    picModel.setBackColor(kColourHighlight);
    Barra.setValue(40);
    fill(cmbSpeed, {"115200", "57600", "38400", "19200"});
    cmbSpeed.setListIndex(1);
    lstScales.setColumns({"Scale", "IP Address"});
    lstScales.addRow({"1", "192.168.0.10"});
    lstScales.addRow({"2", "192.168.0.11"});
    frFiles.setCaption("Firmware file");
    fill(Drive1, {"c:", "t:"});
    Drive1.setListIndex(0);
    fill(Dir1, {"firmware", "old", "tests"});
    fill(File1, {"serie_w.hex", "serie_n.hex", "tr8200.hex"});
}

}  // namespace fc::test
