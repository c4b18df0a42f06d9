// The keyboard on the main screen's window, as on a Windows wizard: Tab goes
// through the controls of the step in reading order; Enter presses the
// focused button, opens the focused folder, chooses the focused model, and
// anywhere else presses the default button (Next, or Again once a pass has
// ended); Space chooses the focused model as a click would.
#include <QAbstractButton>
#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>

#include "control/catalogue.h"
#include "gui/firmcast_look.h"
#include "platform/qt/picture_label.h"

namespace fc {

namespace {

const char* const kTabOrder[] = {"optBalanzas",  "optEtiquetadoras",
                                 "optVisores",   "Picture4",
                                 "Picture3",     "Picture2",
                                 "Picture6",     "Picture5",
                                 "Picture8",     "Picture7",
                                 "Picture9",     "Picture12",
                                 "cmdCargaRomG", "optrs232",
                                 "Option1",      "Option2",
                                 "Option3",      "Option4",
                                 "optEthernet",  "cmdDisplayGrafico",
                                 "Drive1",       "Dir1",
                                 "File1",        "cmbvelocidades",
                                 "Text1",        "cmbbalanza",
                                 "txtDirTCP",    "lstBalanzas",
                                 "chkADSL",      "cmdSave",
                                 "Option5",      "Option7",
                                 "Option6",      "Option9",
                                 "Option8",      "Option10",
                                 "Option11",     "optProduccion",
                                 "cmdAgain",     "Command1",
                                 "Command2",     "cmdAtras",
                                 "cmdAdelante",  "FIN"};

// Shown (up to the window, shown or not yet) and enabled.
bool reachable(QWidget* widget) {
    return widget->isVisibleTo(widget->window()) && widget->isEnabled();
}

// A picture on another colour than white: the model the screen highlights.
bool highlighted(QWidget* widget) {
    auto* picture = qobject_cast<PictureLabel*>(widget);
    return picture != nullptr && picture->colour() != QColor(Qt::white);
}

bool isPicture(QWidget* widget) {
    return widget->objectName().startsWith("Picture");
}

// Shows which card has the focus: its frame takes the focus colour.
void markCard(QWidget* picture, bool focused) {
    QWidget* card = picture->parentWidget();
    if (card == nullptr || card->objectName() != "modelCard")
        return;
    card->setProperty("focused", focused);
    card->style()->unpolish(card);
    card->style()->polish(card);
}

class KeyboardRules : public QObject {
  public:
    KeyboardRules(const Widgets& widgets, QObject* parent) : QObject(parent), widgets_(widgets) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* widget = static_cast<QWidget*>(watched);
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
            if (isPicture(widget))
                markCard(widget, event->type() == QEvent::FocusIn);
            return false;
        }
        if (event->type() != QEvent::KeyPress)
            return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Space && isPicture(widget)) {
            clickPicture(widget);
            return true;
        }
        if (key != Qt::Key_Return && key != Qt::Key_Enter)
            return false;
        return enter(widget);
    }

  private:
    bool enter(QWidget* widget) {
        if (isPicture(widget)) {
            clickPicture(widget);
        } else if (auto* folders = qobject_cast<QListWidget*>(widget);
                   folders != nullptr && widget->objectName() == "Dir1") {
            if (QListWidgetItem* item = folders->currentItem())
                emit folders->itemDoubleClicked(item);
        } else {
            pressDefault();
        }
        return true;
    }

    void pressDefault() {
        for (const char* name : {"cmdAdelante", "cmdAgain"}) {
            auto* button = static_cast<QPushButton*>(widgetNamed(widgets_, name));
            if (reachable(button)) {
                button->click();
                return;
            }
        }
    }

    Widgets widgets_;
};

}  // namespace

void setUpKeyboard(const Widgets& widgets, QWidget* window) {
    auto* rules = new KeyboardRules(widgets, window);
    QWidget* previous = nullptr;
    for (const char* name : kTabOrder) {
        QWidget* widget = widgetNamed(widgets, name);
        if (isPicture(widget)) {
            widget->setFocusPolicy(Qt::StrongFocus);
            widget->setCursor(Qt::PointingHandCursor);
        }
        if (auto* button = qobject_cast<QPushButton*>(widget)) {
            // Enter on a focused button presses it, as on Windows.
            button->setAutoDefault(true);
        } else if (qobject_cast<QAbstractButton*>(widget) || isPicture(widget) ||
                   widget->objectName() == "Dir1" || widget->objectName() == "File1" ||
                   widget->objectName() == "Drive1" || widget->objectName() == "cmbvelocidades") {
            widget->installEventFilter(rules);
        }
        if (previous != nullptr)
            QWidget::setTabOrder(previous, widget);
        previous = widget;
    }
}

void focusStep(const Widgets& widgets, int step) {
    std::vector<const char*> candidates;
    switch (step) {
        case 0:
            // The model highlighted as the last one chosen comes first, so
            // that Enter chooses only what the operator sees chosen.
            for (int code = 0; code < kCatalogueSize; ++code) {
                if (highlighted(widgetNamed(widgets, catalogueEntry(code).picture)))
                    candidates.push_back(catalogueEntry(code).picture);
            }
            for (int code = 0; code < kCatalogueSize; ++code)
                candidates.push_back(catalogueEntry(code).picture);
            break;
        case 1:
            candidates = {"optrs232", "optEthernet"};
            break;
        case 2:
            candidates = {"File1", "Dir1"};
            break;
        default:
            candidates = {"cmdAdelante", "cmdAgain", "FIN"};
            break;
    }
    for (const char* name : candidates) {
        QWidget* widget = widgetNamed(widgets, name);
        auto* option = qobject_cast<QAbstractButton*>(widget);
        if (step == 1 && option != nullptr && !option->isChecked())
            continue;
        if (reachable(widget)) {
            widget->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

}  // namespace fc
