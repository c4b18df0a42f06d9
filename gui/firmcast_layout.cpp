#include "gui/firmcast_layout.h"

#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QScreen>
#include <QScrollArea>
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

// The page of the steps scrolls when the screen is smaller than it (a line
// PC's 1024 x 600 panel): the heading and the row of buttons stay in view.
QScrollArea* scrolling(QLayout* page) {
    auto* content = new QWidget;
    content->setObjectName("stepPage");
    content->setLayout(page);
    auto* area = new QScrollArea;
    area->setObjectName("stepScroll");
    area->setWidget(content);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);  // the tab goes from control to control
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    return area;
}

// The window's first size: its own, or the screen's room where that is less.
void fitToScreen(QWidget* window) {
    QSize size(1040, 720);
    if (QScreen* screen = QGuiApplication::primaryScreen())
        size = size.boundedTo(screen->availableGeometry().size());
    window->resize(size);
}

void arrangeFirmcast(const Widgets& widgets, QWidget* window) {
    window->setObjectName("FirmcastWindow");
    window->setStyleSheet(firmcastStyleSheet());
    auto* root = new QHBoxLayout(window);
    root->setContentsMargins(0, 0, 0, 0);
    root->setSpacing(0);
    root->addWidget(buildStepColumn(widgets, window));

    auto* main = new QVBoxLayout;
    main->setContentsMargins(22, 16, 22, 14);
    main->setSpacing(12);
    main->addWidget(buildStepHeading(window));
    auto* page = new QHBoxLayout;
    page->setContentsMargins(0, 0, 0, 0);
    page->setSpacing(18);
    page->addWidget(buildChosenModel(widgets), 0, Qt::AlignTop);
    auto* steps = new QVBoxLayout;
    steps->setSpacing(10);
    steps->addWidget(buildModelStep(widgets));
    addLaterSteps(widgets, steps);
    steps->addStretch();
    page->addLayout(steps, 1);
    main->addWidget(scrolling(page), 1);
    main->addWidget(separator());
    main->addLayout(buildButtonRow(widgets));
    root->addLayout(main, 1);

    followSteps(widgets, window);
    setUpKeyboard(widgets, window);
    window->setMinimumSize(800, 560);
    fitToScreen(window);
}

}  // namespace

void registerFirmcastLayout() {
    registerScreenLayout("Firmcast", arrangeFirmcast);
}

}  // namespace fc
