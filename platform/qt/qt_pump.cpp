#include "platform/qt/qt_pump.h"

#include <QCoreApplication>
#include <QEvent>

namespace fc {

void QtPump::processQtEvents() {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    // The program never runs Qt's own event loop, so deleteLater() would
    // otherwise never be carried out.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    throwDeferred();
}

void QtPump::doEvents() {
    processQtEvents();
    RealPump::doEvents();
}

void QtPump::doPendingEvents() {
    processQtEvents();
    RealPump::doPendingEvents();
}

}  // namespace fc
