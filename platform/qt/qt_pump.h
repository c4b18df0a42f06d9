// The pump of the GUI program: Qt's pending events first, then the program's
// own timers, lines and sockets, blocking at most 1 ms when nothing is due.
#pragma once

#include "platform/linux/real_pump.h"

namespace fc {

class QtPump : public RealPump {
  public:
    // Needs a QApplication. A handler that raised an error or ended the
    // program while Qt was dispatching deferred it (Pump::defer); it is thrown
    // here, once Qt's processing has returned, in the wait that is running.
    void doEvents() override;
    // The same without waiting: the window repaints during long work.
    void doPendingEvents() override;

  private:
    void processQtEvents();
};

}  // namespace fc
