// The load engines and services that the main driver calls but that live in
// other subsystems: the Ethernet sender, the MAC database, the scale record,
// the tools and screens it hands over to. A program wires the real ones;
// until a subsystem is there its hook does the least that keeps the driver's
// road as it is, and says so where a person would notice.
#pragma once

#include <functional>
#include <string>

#include "platform/vb_types.h"

namespace fc {

class Firmcast;

struct LoadHooks {
    // The boot ROM loader of the Serie_G scale does the whole load.
    std::function<Flag(Firmcast&)> carga_F;
    // The next MAC address as twelve hex digits, or empty when none is left.
    std::function<std::string(Firmcast&)> DameMACAddress;
    // The pause after the erase that the display driver may cut short.
    std::function<void(Firmcast&, int ms)> EsperaEventoRecursos;
    // The scale record form, shown modally.
    std::function<void(Firmcast&)> frmDatosBalanza;
    // Fills the scale list from config.ini on entry to step 3.
    std::function<void(Firmcast&)> CargaInfoIni;
    // The Ethernet load, from the end of the step 3 wait to the wait for "Again".
    std::function<void(Firmcast&)> ethernetPath;
    // Starts the Serie_G tool with the command line given; returns its process number.
    std::function<long(const std::string& commandLine)> startProgram;
    // The visor screen and the graphic display screen, shown modally.
    std::function<void(Firmcast&)> frmCargaMV510;
    std::function<void(Firmcast&)> frmCargaDisplayGrafico;
    // Saves the scale list (the Save Config button).
    std::function<void(Firmcast&)> GuardaInfoIni;
};

}  // namespace fc
