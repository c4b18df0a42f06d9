// The operator's moves through the wizard that many scenarios share: the
// group and picture of a model, a way, a load that always succeeds.
#pragma once

#include <string>

#include "support/scenario_rig.h"

namespace fc::test {

// The group option button that shows the picture of a catalogue code.
std::string groupButtonOf(int code);

// As the operator: shows the model's group and clicks its picture.
void pickModel(ScenarioRig& rig, int code);

// Line protocols that connect, erase and load every file at once, so that
// the driver's road around them can be watched. Counts the loads.
void completeEveryLoad(ScenarioRig& rig, int* loads = nullptr);

// Script: on step 0 pick the model; on step 1 choose RS-232 and the port and
// press Next. Stops nothing.
void scriptModelAndPort(ScenarioRig& rig, int code, int port);

}  // namespace fc::test
