// The bottom row of the main screen's window. As in a Windows wizard, Back
// and Next stand at the right with Exit after them; what ends a pass
// (Production Way and Again) stands at the left.
#include <QHBoxLayout>
#include <QPushButton>

#include "gui/firmcast_look.h"

namespace fc {

QLayout* buildButtonRow(const Widgets& widgets) {
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(widgetNamed(widgets, "optProduccion"));
    row->addSpacing(8);
    row->addWidget(widgetNamed(widgets, "cmdAgain"));
    row->addStretch();
    for (const char* name : {"Command1", "Command2", "cmdAtras", "cmdAdelante"})
        row->addWidget(widgetNamed(widgets, name));
    row->addSpacing(14);
    row->addWidget(widgetNamed(widgets, "FIN"));
    for (const char* name : {"cmdAgain", "Command1", "Command2", "cmdAtras", "cmdAdelante", "FIN"})
        widgetNamed(widgets, name)->setMinimumSize(104, 32);
    return row;
}

}  // namespace fc
