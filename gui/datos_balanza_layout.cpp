#include "gui/datos_balanza_layout.h"

#include <QFont>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QWidget>

#include "platform/qt/screen_layout.h"

namespace fc {

namespace {

// The address and the serial are read from across the bench.
void enlarge(QWidget* widget, double factor) {
    QFont font = widget->font();
    font.setPointSizeF(font.pointSizeF() * factor);
    widget->setFont(font);
}

void arrange(const std::map<std::string, QWidget*>& w, QWidget* window) {
    QWidget* frame = w.at("Frame1");
    auto* grid = new QGridLayout(frame);
    grid->addWidget(w.at("Label2"), 0, 0);
    grid->addWidget(w.at("txtMAC"), 0, 1);
    grid->addWidget(w.at("Label1"), 1, 0);
    grid->addWidget(w.at("txtSerialNumber"), 1, 1);
    grid->addWidget(w.at("Label4"), 2, 0);
    grid->addWidget(w.at("Label5"), 2, 1);
    grid->setColumnStretch(1, 1);
    for (const char* name : {"txtMAC", "txtSerialNumber", "Label2", "Label1"})
        enlarge(w.at(name), 1.4);
    enlarge(w.at("Label4"), 1.2);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(w.at("cmdAceptar"));
    auto* page = new QVBoxLayout(window);
    page->addWidget(frame);
    page->addLayout(buttons);
    window->resize(520, 240);
}

}  // namespace

void registerDatosBalanzaLayout() {
    registerScreenLayout("frmDatosBalanza", arrange);
}

}  // namespace fc
