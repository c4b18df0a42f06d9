#include "gui/display_layout.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QWidget>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>

#include "gui/firmcast_look.h"
#include "platform/qt/screen_layout.h"

namespace fc {

namespace {

using Widgets = std::map<std::string, QWidget*>;

QWidget* at(const Widgets& widgets, const char* name) {
    return widgets.at(name);
}

// A frame's controls in a column, top to bottom.
void column(const Widgets& widgets, const char* frame, std::initializer_list<const char*> names) {
    auto* box = new QVBoxLayout(at(widgets, frame));
    for (const char* name : names) box->addWidget(at(widgets, name));
}

// A frame's controls as label and field pairs, one pair a row.
void pairs(const Widgets& widgets, const char* frame,
           std::initializer_list<std::pair<const char*, const char*>> rows) {
    auto* grid = new QGridLayout(at(widgets, frame));
    int row = 0;
    for (const auto& [label, field] : rows) {
        grid->addWidget(at(widgets, label), row, 0);
        grid->addWidget(at(widgets, field), row, 1);
        ++row;
    }
}

void arrangeFrames(const Widgets& widgets) {
    column(widgets, "frDirectorio", {"Drive1", "Dir1", "File1"});
    column(widgets, "Frame1", {"Option1", "Option2", "Option3", "Option4"});
    auto* way = new QGridLayout(at(widgets, "Frame2"));
    way->addWidget(at(widgets, "optEthernet"), 0, 0);
    way->addWidget(at(widgets, "optrs232"), 0, 1);
    way->addWidget(at(widgets, "Frame1"), 1, 0, 1, 2);
    way->addWidget(at(widgets, "lblDirLogica"), 2, 0);
    way->addWidget(at(widgets, "cmbDirLogica"), 2, 1);
    pairs(widgets, "frEthParameters",
          {{"lblIPAddr", "txtDirTCP"}, {"lblPort", "TxtPort"}, {"lblPortRX", "TxtPortRX"}});
    pairs(widgets, "frComParameters",
          {{"Label5", "cmbvelocidades"}, {"lblBits", "nbits"}, {"lblParidad", "cboParidad"}});
    column(widgets, "frInfoComunicacion", {"Label2", "Texto", "Barra", "Banco_actual"});
}

void arrangeDisplay(const Widgets& widgets, QWidget* window) {
    window->setObjectName("DisplayWindow");
    window->setStyleSheet(firmcastStyleSheet());
    arrangeFrames(widgets);
    auto* root = new QVBoxLayout(window);
    root->setContentsMargins(22, 16, 22, 14);
    root->setSpacing(12);
    auto* top = new QHBoxLayout;
    top->setSpacing(18);
    top->addWidget(at(widgets, "frDirectorio"), 1);
    auto* right = new QVBoxLayout;
    for (const char* frame : {"Frame2", "frEthParameters", "frComParameters"})
        right->addWidget(at(widgets, frame));
    right->addStretch();
    top->addLayout(right, 1);
    root->addLayout(top, 1);
    root->addWidget(at(widgets, "frInfoComunicacion"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (const char* name : {"cmdAtras", "cmdAdelante", "CmdStop", "FIN"}) {
        at(widgets, name)->setMinimumSize(110, 34);
        buttons->addWidget(at(widgets, name));
    }
    root->addLayout(buttons);
    window->setMinimumSize(760, 520);
    window->resize(860, 600);
}

}  // namespace

void registerDisplayLayout() {
    registerScreenLayout("frmCargaDisplayGrafico", arrangeDisplay);
}

}  // namespace fc
