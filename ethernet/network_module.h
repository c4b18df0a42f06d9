// What the network procedures of the Ethernet loader reach the world through:
// the common module (for the log), the machine's network, and the calling
// screen's close timer. The program builds one per screen that loads over
// Ethernet.
#pragma once

#include "platform/network.h"

namespace fc {

struct CommonModule;
class WindowTimer;

struct NetworkModule {
    CommonModule& c;
    Network& network;
    // The screen's `TimerClose`, whose handler stops it when it fires.
    WindowTimer& TimerClose;

    // How long one echo waits for its reply, in milliseconds.
    int tiempoEco = 1000;

    // A missing capability is written to the log once, not at every clearing
    // or echo: the operations go on failing silently after that.
    bool avisadoSinBorrado = false;
    bool avisadoSinEco = false;
};

}  // namespace fc
