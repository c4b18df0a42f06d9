// The engines that a program wires into the main driver, because they are
// programs of their own or live in subsystems that not every program links:
// the MAC database, the display driver's event, the scale record form, the
// Ethernet loader and the starting of another program. Nothing else goes
// through here; the driver calls the rest of the system directly. An engine a
// program left empty makes the driver do the least that keeps its road as it
// is, and say so where a person would notice.
#pragma once

#include <functional>
#include <string>

#include "platform/vb_types.h"

namespace fc {

class Firmcast;
class Network;

struct LoadHooks {
    // The next MAC address as twelve hex digits, or empty when none is left.
    std::function<std::string(Firmcast&)> DameMACAddress;
    // The pause after the erase that the display driver may cut short.
    std::function<void(Firmcast&, int ms)> EsperaEventoRecursos;
    // The scale record form, shown modally.
    std::function<void(Firmcast&)> frmDatosBalanza;
    // The Ethernet load, from the end of the step 3 wait to the wait for "Again".
    std::function<void(Firmcast&)> ethernetPath;
    // Starts the Serie_G tool with the command line given; returns its process number.
    std::function<long(const std::string& commandLine)> startProgram;
    // The network the visor's screen reaches a visor through over UDP; without
    // one, a load over Ethernet on that screen ends in its error box.
    Network* network = nullptr;
};

}  // namespace fc
