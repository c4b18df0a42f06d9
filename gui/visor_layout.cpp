#include "gui/visor_layout.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QSizePolicy>
#include <QVBoxLayout>
#include <QWidget>
#include <initializer_list>
#include <map>
#include <string>

#include "platform/qt/screen_layout.h"

namespace fc {

namespace {

using Widgets = std::map<std::string, QWidget*>;

QWidget* named(const Widgets& widgets, const std::string& name) {
    auto it = widgets.find(name);
    return it == widgets.end() ? nullptr : it->second;
}

// Puts the named controls of a frame in a grid of `columns`, row by row.
void fillFrame(const Widgets& widgets, const std::string& frame,
               std::initializer_list<const char*> controls, int columns) {
    QWidget* box = named(widgets, frame);
    if (!box)
        return;
    auto* grid = new QGridLayout(box);
    int at = 0;
    for (const char* name : controls) {
        if (QWidget* w = named(widgets, name))
            grid->addWidget(w, at / columns, at % columns);
        ++at;
    }
}

QVBoxLayout* column(const Widgets& widgets, std::initializer_list<const char*> names) {
    auto* layout = new QVBoxLayout;
    for (const char* name : names) {
        if (QWidget* w = named(widgets, name))
            layout->addWidget(w);
    }
    layout->addStretch(1);
    return layout;
}

void arrangeVisor(const Widgets& widgets, QWidget* window) {
    fillFrame(widgets, "Frame2", {"optrs232", "optEthernet"}, 2);
    fillFrame(widgets, "Frame1", {"Option1", "Option2", "Option3", "Option4"}, 4);
    fillFrame(widgets, "frComParameters", {"cmbvelocidades", "lblBits", "lblParidad"}, 3);
    fillFrame(widgets, "frEthParameters", {"lblDirTCP", "txtDirTCP", "lblPort", "TxtPort"}, 2);
    fillFrame(widgets, "frDirectorio", {"Drive1", "Dir1", "File1"}, 1);
    fillFrame(widgets, "frInfoComunicacion", {"Label2", "Texto", "Barra", "Banco_actual"}, 1);
    if (auto* bar = qobject_cast<QProgressBar*>(named(widgets, "Barra")))
        bar->setMinimumWidth(480);
    // A record of 128 bytes is longer than any window: it is cut, not let
    // widen the window.
    if (QWidget* texto = named(widgets, "Texto"))
        texto->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

    auto* sides = new QHBoxLayout;
    sides->addLayout(column(widgets, {"Frame2", "Frame1", "frComParameters", "frEthParameters"}),
                     1);
    sides->addLayout(column(widgets, {"frDirectorio"}), 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (const char* name : {"cmdAdelante", "CmdStop", "cmdAtras", "FIN"}) {
        if (QWidget* w = named(widgets, name))
            buttons->addWidget(w);
    }

    auto* page = new QVBoxLayout(window);
    page->addLayout(sides);
    if (QWidget* info = named(widgets, "frInfoComunicacion"))
        page->addWidget(info);
    page->addLayout(buttons);
    window->resize(820, 600);
}

}  // namespace

void registerVisorLayout() {
    registerScreenLayout("frmCargaMV510", arrangeVisor);
}

}  // namespace fc
