// The column that names the five steps of the wizard, and the heading over
// the page that says what to do on the step on screen. Which step that is
// shows in which of the screen's frames are shown: the guide follows them,
// the system never talks to it.
#include <QEvent>
#include <QLabel>
#include <QScrollArea>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

#include "gui/firmcast_look.h"

namespace fc {

namespace {

struct StepText {
    const char* name;
    const char* title;
    const char* hint;
};

const StepText kSteps[5] = {
    {"Model", "Choose the device",
     "Pick the kind of device on the left, then click the picture of the model."},
    {"Connection", "Choose the connection",
     "Choose RS-232 and the serial port the device is on, or Ethernet, then press Next."},
    {"Firmware file", "Choose the firmware file",
     "Pick the drive, open the folder and select the firmware file, then press Next."},
    {"Scale list", "Scales on Ethernet",
     "Check the scales and their addresses, then press Next to load them all."},
    {"Load", "Loading the firmware", "The firmware is going to the device; follow it below."},
};
const StepText kPassEnded = {"Load", "The load has ended",
                             "Press Again to go on with the next device."};

// Re-reads the frames whenever one of them is shown or hidden.
class StepFollower : public QObject {
  public:
    StepFollower(const Widgets& widgets, QWidget* window)
        : QObject(window), widgets_(widgets), window_(window) {
        for (const char* name : kWatched) widgetNamed(widgets, name)->installEventFilter(this);
        update();
    }

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
            update();
        return false;
    }

  private:
    static constexpr const char* kWatched[] = {
        "Seleccion",      "frPuerto", "frDirectorio", "frBalanzasEth",    "frInfoComunicacion",
        "lblInformacion", "BarraEth", "cmdAgain",     "PictureVisualizar"};

    bool shown(const char* name) const { return !widgetNamed(widgets_, name)->isHidden(); }

    int step() const {
        if (shown("frInfoComunicacion") || shown("lblInformacion") || shown("BarraEth"))
            return 4;
        if (shown("frBalanzasEth"))
            return 3;
        if (shown("frDirectorio"))
            return 2;
        if (shown("frPuerto"))
            return 1;
        return 0;
    }

    void update() {
        const int now = step();
        const StepText& text = now == 4 && shown("cmdAgain") ? kPassEnded : kSteps[now];
        window_->findChild<QLabel*>("stepTitle")->setText(text.title);
        window_->findChild<QLabel*>("stepHint")->setText(text.hint);
        for (int n = 0; n < 5; ++n) {
            auto* label = window_->findChild<QLabel*>(QString("stepName%1").arg(n));
            label->setProperty("state", n < now ? "done" : n == now ? "current" : "todo");
            label->style()->unpolish(label);
            label->style()->polish(label);
        }
        window_->findChild<QWidget*>("chosenModel")->setVisible(shown("PictureVisualizar"));
        if (now != last_)
            focusStep(widgets_, now);
        if (now >= 3 && shown("frBalanzasEth"))
            showScaleList();
        last_ = now;
    }

    // On the scale list and through the Ethernet load, the list with its
    // results, the message being sent and the bar stay in view, below the
    // file the load is made of.
    void showScaleList() {
        QTimer::singleShot(0, window_, [this] {
            auto* area = window_->findChild<QScrollArea*>("stepScroll");
            if (area == nullptr)
                return;
            for (const char* name : {"BarraEth", "lblInformacion"}) {
                if (shown(name)) {
                    area->ensureWidgetVisible(widgetNamed(widgets_, name), 0, 8);
                    break;
                }
            }
            area->ensureWidgetVisible(widgetNamed(widgets_, "frBalanzasEth"), 0, 8);
        });
    }

    Widgets widgets_;
    QWidget* window_;
    int last_ = -1;
};

}  // namespace

QWidget* buildStepColumn(const Widgets& widgets, QWidget* window) {
    auto* column = new QFrame(window);
    column->setObjectName("stepColumn");
    column->setFixedWidth(196);
    auto* list = new QVBoxLayout(column);
    list->setContentsMargins(20, 24, 16, 20);
    list->setSpacing(6);
    auto* product = new QLabel("Firmware\nLoader");
    product->setObjectName("productName");
    list->addWidget(product);
    list->addSpacing(26);
    for (int n = 0; n < 5; ++n) {
        auto* label = new QLabel(QString("%1   %2").arg(n + 1).arg(kSteps[n].name));
        label->setObjectName(QString("stepName%1").arg(n));
        label->setProperty("state", "todo");
        list->addWidget(label);
    }
    list->addStretch();
    QWidget* level = widgetNamed(widgets, "lblNivel");
    static_cast<QLabel*>(level)->setWordWrap(true);
    list->addWidget(level);
    list->addSpacing(6);
    auto* maker = new QLabel("Firmcast 1.22");
    maker->setObjectName("productVersion");
    list->addWidget(maker);
    return column;
}

QWidget* buildStepHeading(QWidget* window) {
    auto* heading = new QWidget(window);
    auto* column = new QVBoxLayout(heading);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(3);
    auto* title = new QLabel;
    title->setObjectName("stepTitle");
    auto* hint = new QLabel;
    hint->setObjectName("stepHint");
    hint->setWordWrap(true);
    column->addWidget(title);
    column->addWidget(hint);
    return heading;
}

void followSteps(const Widgets& widgets, QWidget* window) {
    new StepFollower(widgets, window);
}

}  // namespace fc
