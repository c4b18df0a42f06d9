// The MAC steps of the main screen on a MAC database: the next address from
// its counter, and the scale record form that writes the serial number into
// the address's register row. A program with a MAC database wires them; one
// without leaves the hooks empty, and a scale that asks for an address then
// hears that none is left.
#pragma once

namespace fc {

class Firmcast;
struct MacModule;

void wireMacSteps(Firmcast& form, MacModule& m);

}  // namespace fc
