#include "support/wizard_steps.h"

#include "control/catalogue.h"

namespace fc::test {

std::string groupButtonOf(int code) {
    switch (catalogueEntry(code).group) {
        case ModelGroup::Scales:
            return "optBalanzas";
        case ModelGroup::Labellers:
            return "optEtiquetadoras";
        case ModelGroup::Visors:
            return "optVisores";
    }
    return "";
}

void pickModel(ScenarioRig& rig, int code) {
    rig.click(groupButtonOf(code));
    rig.click(catalogueEntry(code).picture);
}

void completeEveryLoad(ScenarioRig& rig, int* loads) {
    rig.hooks.numberedConnect = [](Firmcast&) { return kTrue; };
    rig.hooks.numberedFirstLine = [](Firmcast&) { return kTrue; };
    rig.hooks.numberedLoop = [loads](Firmcast&) {
        if (loads)
            ++*loads;
        return LoopOutcome::Success;
    };
    rig.hooks.testk1 = [](Firmcast&) { return kTrue; };
    rig.hooks.bankedFirstLine = [](Firmcast&) { return kTrue; };
    rig.hooks.bankedLoop = [loads](Firmcast&) {
        if (loads)
            ++*loads;
        return LoopOutcome::Success;
    };
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
