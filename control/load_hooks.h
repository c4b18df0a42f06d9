// The engines that a program wires into the main driver, because they are
// programs of their own or live in subsystems that not every program links:
// the MAC database, the scale record form on it, and the starting of another
// program; and the notices a record of the loads listens to. Nothing else
// goes through here; the driver calls the rest of the system directly. An
// engine a program left empty makes the driver do the least that keeps its
// road as it is, and say so where a person would notice.
#pragma once

#include <functional>
#include <string>

#include "platform/vb_types.h"

namespace fc {

class Firmcast;

struct LoadHooks {
    // The next MAC address as twelve hex digits, or empty when none is left.
    std::function<std::string(Firmcast&)> DameMACAddress;
    // The scale record form, shown modally.
    std::function<void(Firmcast&)> frmDatosBalanza;
    // Starts the Serie_G tool with the command line given; returns its process number.
    std::function<long(const std::string& commandLine)> startProgram;
    // Told when an Ethernet scale's turn begins and when it has ended (its
    // result noted), with its index in the scale list: for a record of every
    // device loaded. Nothing of the load depends on them.
    std::function<void(Firmcast&, int scale)> scaleTurnStarted;
    std::function<void(Firmcast&, int scale)> scaleTurnEnded;
    // Told when a load over RS-232 begins (the port and the file chosen) and
    // when it has ended, with whether it said "The scale is ready". A load
    // the fatal trap ends is told as not ready before the trap's box.
    std::function<void(Firmcast&)> serialLoadStarted;
    std::function<void(Firmcast&, bool ready)> serialLoadEnded;
};

}  // namespace fc
