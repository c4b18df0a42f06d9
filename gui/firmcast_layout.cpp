#include "gui/firmcast_layout.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QWidget>

#include "gui/firmcast_look.h"
#include "platform/qt/screen_layout.h"

namespace fc {

QWidget* widgetNamed(const Widgets& widgets, const std::string& name) {
    return widgets.at(name);
}

namespace {

// The chosen model, on the left of steps 1 to 4, framed like its card; the
// frame comes and goes with the picture (followSteps).
QWidget* buildChosenModel(const Widgets& widgets) {
    auto* frame = new QFrame;
    frame->setObjectName("chosenModel");
    frame->setFixedSize(228, 174);
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(6, 6, 6, 6);
    QWidget* picture = widgetNamed(widgets, "PictureVisualizar");
    picture->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    column->addWidget(picture);
    return frame;
}

QFrame* separator() {
    auto* line = new QFrame;
    line->setObjectName("separator");
    line->setFrameShape(QFrame::HLine);
    return line;
}

void arrangeFirmcast(const Widgets& widgets, QWidget* window) {
    window->setObjectName("FirmcastWindow");
    window->setStyleSheet(firmcastStyleSheet());
    auto* root = new QHBoxLayout(window);
    root->setContentsMargins(0, 0, 0, 0);
    root->setSpacing(0);
    root->addWidget(buildStepColumn(window));

    auto* main = new QVBoxLayout;
    main->setContentsMargins(22, 16, 22, 14);
    main->setSpacing(12);
    main->addWidget(buildStepHeading(window));
    auto* page = new QHBoxLayout;
    page->setSpacing(18);
    page->addWidget(buildChosenModel(widgets), 0, Qt::AlignTop);
    auto* steps = new QVBoxLayout;
    steps->setSpacing(10);
    steps->addWidget(buildModelStep(widgets));
    addLaterSteps(widgets, steps);
    steps->addStretch();
    page->addLayout(steps, 1);
    main->addLayout(page, 1);
    main->addWidget(separator());
    main->addLayout(buildButtonRow(widgets));
    root->addLayout(main, 1);

    followSteps(widgets, window);
    setUpKeyboard(widgets, window);
    window->setMinimumSize(960, 680);
    window->resize(1040, 720);
}

}  // namespace

void registerFirmcastLayout() {
    registerScreenLayout("Firmcast", arrangeFirmcast);
}

}  // namespace fc
