#include "platform/qt/qt_pump.h"

#include <QCoreApplication>
#include <QEvent>

namespace fc {

void QtPump::doEvents() {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    // The program never runs Qt's own event loop, so deleteLater() would
    // otherwise never be carried out.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    throwDeferred();
    RealPump::doEvents();
}

}  // namespace fc
