// Step 0 of the main screen's window: the kinds of device in a column, and
// beside it the frame of the chosen kind with a card for each model: its
// picture over its name. A click anywhere on a card is a click on the
// picture.
#include <QCoreApplication>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QVBoxLayout>

#include "control/catalogue.h"
#include "gui/firmcast_look.h"

namespace fc {

namespace {

const char* frameOf(ModelGroup group) {
    switch (group) {
        case ModelGroup::Scales:
            return "frBalanzas";
        case ModelGroup::Labellers:
            return "frEtiquetadoras";
        case ModelGroup::Visors:
            return "frVisores";
    }
    return "";
}

// Turns a click on a card's free space or name into one on its picture,
// where the window hands it to the screen.
class CardClicks : public QObject {
  public:
    CardClicks(QWidget* picture, QObject* parent) : QObject(parent), picture_(picture) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::MouseButtonRelease || clickingPicture())
            return false;
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton)
            return false;
        // A release on the picture itself reaches the card too: the picture
        // has had it already.
        if (watched == picture_->parentWidget() &&
            picture_->geometry().contains(mouse->position().toPoint()))
            return false;
        clickPicture(picture_);
        return true;
    }

  private:
    QWidget* picture_;
};

QWidget* card(QWidget* picture, const QString& name) {
    auto* frame = new QFrame;
    frame->setObjectName("modelCard");
    frame->setCursor(Qt::PointingHandCursor);
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(8, 8, 8, 6);
    column->setSpacing(4);
    picture->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    picture->setMinimumSize(208, 156);
    picture->setToolTip(name);
    column->addWidget(picture, 1);
    auto* label = new QLabel(name);
    label->setObjectName("modelName");
    label->setAlignment(Qt::AlignCenter);
    column->addWidget(label);
    auto* clicks = new CardClicks(picture, frame);
    frame->installEventFilter(clicks);
    label->installEventFilter(clicks);
    return frame;
}

// The cards of a kind of device, two to a row, in the order of their codes.
void arrangeCards(const Widgets& widgets, ModelGroup group) {
    auto* grid = new QGridLayout(widgetNamed(widgets, frameOf(group)));
    grid->setContentsMargins(12, 16, 12, 12);
    grid->setSpacing(14);
    int placed = 0;
    for (int code = 0; code < kCatalogueSize; ++code) {
        const CatalogueEntry& entry = catalogueEntry(code);
        if (entry.group != group)
            continue;
        QWidget* picture = widgetNamed(widgets, entry.picture);
        grid->addWidget(card(picture, QString::fromUtf8(entry.device)), placed / 2, placed % 2);
        ++placed;
    }
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    if (placed == 1)
        grid->addWidget(new QWidget, 0, 1);  // a lone card keeps the size of the others
}

QWidget* buildKinds(const Widgets& widgets) {
    QWidget* kinds = widgetNamed(widgets, "frOption");
    kinds->setFixedWidth(230);
    auto* column = new QVBoxLayout(kinds);
    column->setContentsMargins(12, 18, 12, 12);
    column->setSpacing(12);
    for (const char* name : {"optBalanzas", "optEtiquetadoras", "optVisores"})
        column->addWidget(widgetNamed(widgets, name));
    column->addStretch();
    // The boot-ROM load of a G scale, apart from the kinds at the foot.
    QWidget* bootRom = widgetNamed(widgets, "cmdCargaRomG");
    bootRom->setMinimumHeight(48);
    bootRom->setToolTip(
        QStringLiteral("Loads a G410 or G420 scale through its MSC1210 boot ROM, with the "
                       "recording range chosen next, instead of starting the G scales' tool"));
    column->addWidget(bootRom);
    return kinds;
}

bool clicking = false;

}  // namespace

void clickPicture(QWidget* picture) {
    const QPointF centre = QRectF(picture->rect()).center();
    const QPointF global = picture->mapToGlobal(centre);
    QMouseEvent press(QEvent::MouseButtonPress, centre, global, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, centre, global, Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    clicking = true;
    QCoreApplication::sendEvent(picture, &press);
    QCoreApplication::sendEvent(picture, &release);
    clicking = false;
}

bool clickingPicture() {
    return clicking;
}

QWidget* buildModelStep(const Widgets& widgets) {
    QWidget* seleccion = widgetNamed(widgets, "Seleccion");
    auto* row = new QHBoxLayout(seleccion);
    row->setContentsMargins(12, 18, 12, 12);
    row->setSpacing(14);
    row->addWidget(buildKinds(widgets));
    auto* groups = new QVBoxLayout;
    for (ModelGroup group : {ModelGroup::Scales, ModelGroup::Labellers, ModelGroup::Visors}) {
        arrangeCards(widgets, group);
        groups->addWidget(widgetNamed(widgets, frameOf(group)));
    }
    groups->addStretch();
    row->addLayout(groups, 1);
    return seleccion;
}

}  // namespace fc
