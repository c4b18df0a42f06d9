// Steps 1 to 4 of the main screen's window, each a frame of the screen laid
// out inside, in their order on the page; the frames the system keeps hidden
// (the recording ranges) have their place too.
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "gui/firmcast_look.h"

namespace fc {

namespace {

QLabel* caption(const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName("fieldCaption");
    return label;
}

// The way: RS-232 with its four ports under it, or Ethernet.
QWidget* buildWay(const Widgets& widgets) {
    QWidget* frame = widgetNamed(widgets, "frPuerto");
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(16, 20, 16, 16);
    column->setSpacing(10);
    column->addWidget(widgetNamed(widgets, "Label6"));
    column->addWidget(widgetNamed(widgets, "optrs232"));
    QWidget* ports = widgetNamed(widgets, "Frame1");
    auto* portColumn = new QVBoxLayout(ports);
    portColumn->setContentsMargins(14, 16, 14, 12);
    auto* portRow = new QHBoxLayout;
    portRow->setSpacing(24);
    for (const char* name : {"Option1", "Option2", "Option3", "Option4"})
        portRow->addWidget(widgetNamed(widgets, name));
    portRow->addStretch();
    portColumn->addLayout(portRow);
    // The device each port stands for on this machine.
    QWidget* devices = widgetNamed(widgets, "lblPuertos");
    devices->setObjectName("lblPuertos");
    static_cast<QLabel*>(devices)->setWordWrap(true);
    portColumn->addWidget(devices);
    auto* indented = new QHBoxLayout;
    indented->addSpacing(24);
    indented->addWidget(ports, 1);
    column->addLayout(indented);
    column->addWidget(widgetNamed(widgets, "optEthernet"));
    return frame;
}

// The file: drive above folders on the left, files on the right, as in a
// Windows file dialog.
QWidget* buildFile(const Widgets& widgets) {
    QWidget* frame = widgetNamed(widgets, "frDirectorio");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(16, 20, 16, 14);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(6);
    grid->addWidget(caption("Drive"), 0, 0);
    grid->addWidget(widgetNamed(widgets, "Drive1"), 1, 0);
    grid->addWidget(caption("Folders"), 2, 0);
    grid->addWidget(widgetNamed(widgets, "Dir1"), 3, 0);
    grid->addWidget(caption("Firmware files"), 0, 1);
    grid->addWidget(widgetNamed(widgets, "File1"), 1, 1, 3, 1);
    auto* check = static_cast<QLabel*>(widgetNamed(widgets, "lblComprobacion"));
    check->setWordWrap(true);
    grid->addWidget(check, 4, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(3, 1);
    for (const char* list : {"Dir1", "File1"}) widgetNamed(widgets, list)->setMinimumHeight(150);
    return frame;
}

QWidget* buildLineParameters(const Widgets& widgets) {
    QWidget* frame = widgetNamed(widgets, "frComParameters");
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(16, 18, 16, 12);
    row->setSpacing(14);
    row->addWidget(widgetNamed(widgets, "Label5"));
    row->addWidget(widgetNamed(widgets, "cmbvelocidades"));
    row->addSpacing(20);
    row->addWidget(widgetNamed(widgets, "lblBits"));
    row->addSpacing(10);
    row->addWidget(widgetNamed(widgets, "lblParidad"));
    row->addStretch();
    return frame;
}

// The scales on Ethernet: how many and which, the address of each, the list.
QWidget* buildScaleList(const Widgets& widgets) {
    QWidget* frame = widgetNamed(widgets, "frBalanzasEth");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(16, 20, 16, 14);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    grid->addWidget(widgetNamed(widgets, "Label3"), 0, 0);
    grid->addWidget(widgetNamed(widgets, "Text1"), 0, 1);
    grid->addWidget(widgetNamed(widgets, "Label4"), 0, 2);
    grid->addWidget(widgetNamed(widgets, "cmbbalanza"), 0, 3);
    grid->addWidget(widgetNamed(widgets, "txtDirTCP"), 0, 4);
    grid->addWidget(widgetNamed(widgets, "lstBalanzas"), 1, 0, 1, 5);
    auto* under = new QHBoxLayout;
    under->addWidget(widgetNamed(widgets, "chkADSL"));
    under->addWidget(widgetNamed(widgets, "lblADSL"));
    under->addStretch();
    under->addWidget(widgetNamed(widgets, "cmdSave"));
    grid->addLayout(under, 2, 0, 1, 5);
    grid->setColumnStretch(4, 1);
    widgetNamed(widgets, "Text1")->setMaximumWidth(60);
    widgetNamed(widgets, "lstBalanzas")->setMinimumHeight(110);
    return frame;
}

// The load: the animation beside the line being sent, the bank or line
// number and the progress bar.
QWidget* buildLoad(const Widgets& widgets) {
    QWidget* frame = widgetNamed(widgets, "frInfoComunicacion");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(16, 20, 16, 16);
    grid->setHorizontalSpacing(18);
    grid->setVerticalSpacing(10);
    for (int n = 1; n <= 12; ++n) {
        QWidget* picture = widgetNamed(widgets, "Dibujo" + std::to_string(n));
        picture->setFixedSize(96, 96);
        grid->addWidget(picture, 0, 0, 3, 1, Qt::AlignTop);  // one place: one shows at a time
    }
    QWidget* texto = widgetNamed(widgets, "Texto");
    static_cast<QLabel*>(texto)->setWordWrap(true);
    texto->setMinimumHeight(40);
    grid->addWidget(texto, 0, 1, 1, 2);
    grid->addWidget(widgetNamed(widgets, "Label2"), 1, 1);
    grid->addWidget(widgetNamed(widgets, "Banco_actual"), 1, 2);
    grid->addWidget(widgetNamed(widgets, "Barra"), 2, 1, 1, 2);
    grid->setColumnStretch(2, 1);
    grid->setColumnMinimumWidth(0, 96);
    return frame;
}

QWidget* buildOptions(const Widgets& widgets, const char* frameName,
                      std::initializer_list<const char*> options) {
    QWidget* frame = widgetNamed(widgets, frameName);
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(16, 18, 16, 12);
    for (const char* name : options) column->addWidget(widgetNamed(widgets, name));
    return frame;
}

}  // namespace

void addLaterSteps(const Widgets& widgets, QLayout* page) {
    page->addWidget(buildWay(widgets));
    auto* display = new QHBoxLayout;
    widgetNamed(widgets, "cmdDisplayGrafico")->setMinimumSize(240, 32);
    display->addWidget(widgetNamed(widgets, "cmdDisplayGrafico"));
    display->addStretch();
    page->addItem(display);
    page->addWidget(buildFile(widgets));
    page->addWidget(buildLineParameters(widgets));
    static_cast<QLabel*>(widgetNamed(widgets, "lblModelo"))->setWordWrap(true);
    page->addWidget(widgetNamed(widgets, "lblModelo"));
    page->addWidget(buildScaleList(widgets));
    page->addWidget(buildLoad(widgets));
    page->addWidget(widgetNamed(widgets, "lblInformacion"));
    page->addWidget(widgetNamed(widgets, "BarraEth"));
    page->addWidget(buildOptions(widgets, "hacerf", {"Option5", "Option7"}));
    page->addWidget(
        buildOptions(widgets, "Frame4", {"Option6", "Option9", "Option8", "Option10", "Option11"}));
}

}  // namespace fc
