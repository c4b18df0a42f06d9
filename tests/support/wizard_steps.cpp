#include "support/wizard_steps.h"

#include "operator/model_choice.h"

namespace fc::test {

void pickModel(ScenarioRig& rig, int code) {
    operatorPickModel(rig.form(), code);
}

AcceptingScale::AcceptingScale(ScenarioRig& rig, int port, const NumberedScale::Config& config)
    : device(config) {
    rig.serial.attach(port, device);
}

int AcceptingScale::connects() const {
    int count = 0;
    for (const NumberedScale::Frame& frame : device.frames()) {
        if (frame.number == 0)
            ++count;
    }
    return count;
}

int AcceptingScale::loads() const {
    int count = 0;
    for (const NumberedScale::Frame& frame : device.frames()) {
        // The record type is the pair of digits after the address.
        if (frame.number > 1 && frame.record.size() >= 9 && frame.record.compare(7, 2, "01") == 0)
            ++count;
    }
    return count;
}

std::vector<std::string> AcceptingScale::steps() const {
    std::vector<std::string> out;
    for (const NumberedScale::Frame& frame : device.frames()) {
        if (frame.number == 0) {
            out.push_back("connect");
        } else if (frame.number == 1) {
            out.push_back("first line");
        } else if (out.empty() || out.back() != "loop") {
            out.push_back("loop");
        }
    }
    return out;
}

void scriptModelAndPort(ScenarioRig& rig, int code, int port) {
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->Seleccion.reachable() && f->paso_asistente == 0; },
                    "pick the model", [&rig, code] { pickModel(rig, code); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "RS-232 on the port, Next",
                    [&rig, port] {
                        rig.click("optrs232");
                        rig.click("Option" + std::to_string(port));
                        rig.click("cmdAdelante");
                    });
}

}  // namespace fc::test
