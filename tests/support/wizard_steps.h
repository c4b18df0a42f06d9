// The operator's moves through the wizard that many scenarios share: the
// group and picture of a model, a way, and a scale that takes every load.
#pragma once

#include <string>
#include <vector>

#include "sim/numbered_scale.h"
#include "support/scenario_rig.h"

namespace fc::test {

// As the operator: shows the model's group and clicks its picture.
void pickModel(ScenarioRig& rig, int code);

// A simulated scale of the numbered dialect, plugged into COM `port` of the
// rig, that takes every load whole: it answers the handshake, erases its
// flash on the first line and takes every record, so that the driver's road
// around a load can be watched. What it heard tells how far each load went.
// It must be made before the program opens the port.
class AcceptingScale {
  public:
    explicit AcceptingScale(ScenarioRig& rig, int port = 1,
                            const NumberedScale::Config& config = {});

    NumberedScale device;

    // The handshakes it heard: each is the connect step of a load.
    int connects() const;
    // The end-of-file records it heard: each is a load that went to its end.
    int loads() const;
    // The steps of the loads in the order it heard them: "connect" (the
    // handshake, frame 0), "first line" (frame 1, on which it erases), and
    // "loop" once for the records that follow in the same load.
    std::vector<std::string> steps() const;
};

// Script: on step 0 pick the model; on step 1 choose RS-232 and the port and
// press Next. Stops nothing.
void scriptModelAndPort(ScenarioRig& rig, int code, int port);

}  // namespace fc::test
